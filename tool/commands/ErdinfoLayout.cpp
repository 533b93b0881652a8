// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"

#include "erdinfo/ErdinfoFields.h"

#include <memory>

namespace vn::tool {

namespace {

/** The names of ErdinfoField::Type and ErdinfoField::Role, in their order. */
constexpr const char *kTypes[] = {"magic", "u16", "u32", "i32", "time", "text", "reserved"};
constexpr const char *kRoles[] = {"constant", "value", "flags", "copy", "reserved"};

/** The name of the value that @p field holds once more. */
Json originalOf(const ErdinfoField &field)
{
    for (const ErdinfoField &each : kErdinfoFields)
        if (field.role == ErdinfoField::Role::Copy && each.role == ErdinfoField::Role::Value &&
            each.member == field.member)
            return each.name;
    return {};
}

class ShowErdinfoLayout : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "A line a field: offset, size (both in bytes), type, name and meaning. All integers "
            "are little-endian. A time is a u32 of seconds and a u32 of milliseconds, a text is "
            "UTF-32, what is reserved is 0.");
        arguments.json();
        arguments.example("vantero-formats erdinfo layout", "prints the table of fields");
    }

    ExitCode run(Output &out) override
    {
        Json fields = Json::array();
        for (const ErdinfoField &field : kErdinfoFields) {
            const bool isConstant = field.role == ErdinfoField::Role::Constant;
            if (out.json()) {
                fields.append(
                    Json::object({{"offset", field.offset},
                                  {"size", field.size},
                                  {"type", kTypes[int(field.type)]},
                                  {"name", field.name},
                                  {"role", kRoles[int(field.role)]},
                                  {"what", field.what},
                                  {"copyOf", originalOf(field)},
                                  {"constant", isConstant ? Json(field.constant) : Json()}}));
                continue;
            }
            const QString value =
                isConstant ? QStringLiteral(": 0x%1").arg(field.constant, 0, 16) : QString();
            out.printLine(QStringLiteral("%1  %2  %3  %4  %5")
                              .arg(field.offset, 3)
                              .arg(field.size, 3)
                              .arg(QLatin1String(kTypes[int(field.type)]), -8)
                              .arg(QLatin1String(field.name), -15)
                              .arg(QLatin1String(field.what) + value));
        }
        if (out.json())
            out.setResult(Json::object({{"fields", std::move(fields)}}));
        return ExitCode::Done;
    }
};

} // namespace

std::unique_ptr<Command> makeErdinfoLayout()
{
    return std::make_unique<ShowErdinfoLayout>();
}

} // namespace vn::tool
