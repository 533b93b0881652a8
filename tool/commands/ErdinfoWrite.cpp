// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/ErdinfoValues.h"
#include "tool/files/Input.h"
#include "tool/files/OutputFile.h"

#include "erdinfo/ErdinfoLayout.h"

#include <QtCore/QFileInfo>

#include <limits>
#include <memory>
#include <optional>

namespace vn::tool {

namespace {

using Type = ErdinfoField::Type;
using ErdinfoLayout::kRecordSize;

/** The values that a field takes, and what an option for it is called by. */
struct Range
{
    const char *value;
    qint64 smallest;
    qint64 largest;
};

Range rangeOf(Type type)
{
    using Int = std::numeric_limits<qint32>;
    switch (type) {
    case Type::I32:
        return {"N", Int::min(), Int::max()};
    case Type::Time:
        return {"MICROSECONDS", 0, std::numeric_limits<qint64>::max()};
    default:
        return {"N", 0, std::numeric_limits<quint32>::max()};
    }
}

class ErdinfoWrite : public Command
{
public:
    ErdinfoWrite()
    {
        for (const ErdinfoField *const field : erdinfoValues())
            m_values.push_back({field, {}, {}});
    }

    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Writes the record to the beginning of FILE and reads it back. Values that are not "
            "given are 0 or empty. Bytes behind the record of an existing file are kept; after a "
            "failure the file is what it was.");
        arguments.describe(
            "The format counts a text in characters, but stores as many bytes of it as it has "
            "characters, four a character: only its first quarter is kept. A warning tells. Of a "
            "time whole milliseconds are kept.");
        arguments.file("FILE", "erdinfo file; it is made when it is missing", m_file);
        for (Value &value : m_values) {
            const QByteArray option = QByteArray("--") + value.field->name;
            const QByteArray what = value.field->what;
            if (value.field->type == Type::Text) {
                arguments.option(option, "TEXT",
                                 what + ", for " + QByteArray::number(value.field->size) + " bytes",
                                 value.text);
            } else {
                const Range range = rangeOf(value.field->type);
                arguments.option(option, range.value, what, value.number, range.smallest,
                                 range.largest);
            }
        }
        arguments.json();
        arguments.example("vantero-formats erdinfo write event.erdinfo --id1 7 --time1 1234567890",
                          "writes a record whose first time is 1234.567 seconds");
    }

    ExitCode run(Output &out) override
    {
        if (m_file == QLatin1String("-"))
            throw ToolError(ExitCode::BadInput,
                            QStringLiteral("a record is written to a file, not to standard "
                                           "output"));
        for (const Value &value : m_values)
            take(value);
        const QByteArray rest = isRegularFile() ? readInput(m_file).mid(kRecordSize) : QByteArray();
        const QByteArray content = m_record.toBytes() + rest;
        writeFileAtomically(m_file, content, out);
        if (isRegularFile() && readInput(m_file) != content)
            throw ToolError(ExitCode::OutputFailed,
                            QStringLiteral("does not hold what was written to it"))
                .at(m_file);

        if (out.json())
            out.setResult(Json::object({{"file", m_file},
                                        {"bytesKept", rest.size()},
                                        {"warnings", Json::array(m_warnings)}}));
        else
            for (const QString &warning : qAsConst(m_warnings))
                out.warn(m_file, warning);
        return ExitCode::Done;
    }

private:
    /** A value as it was given. */
    struct Value
    {
        const ErdinfoField *field;
        std::optional<qint64> number;
        std::optional<QString> text;
    };

    bool isRegularFile() const { return QFileInfo(m_file).isFile(); }

    /** Puts a value into the record; warns where the format does not keep all of it. */
    void take(const Value &value)
    {
        if (value.number)
            std::visit([&](auto member) { setNumber(member, *value.number); }, value.field->member);
        if (!value.text)
            return;
        const auto member = std::get<std::u32string ErdinfoRecord::*>(value.field->member);
        m_record.setText(member, value.text->toStdWString());
        const QString kept = ErdinfoRecord::toString(m_record.*member);
        if (kept != *value.text)
            m_warnings += QStringLiteral("the format keeps only \"%1\" of %2")
                              .arg(kept, QLatin1String(value.field->name));
    }

    template <typename Member>
    void setNumber(Member member, qint64 number)
    {
        if constexpr (std::is_same_v<Member, ErdinfoTime ErdinfoRecord::*>)
            m_record.*member = ErdinfoTime::fromMicroseconds(quint64(number));
        else if constexpr (std::is_same_v<Member, qint32 ErdinfoRecord::*>)
            m_record.*member = qint32(number);
        else if constexpr (std::is_same_v<Member, quint32 ErdinfoRecord::*>)
            m_record.*member = quint32(number);
    }

    QString m_file;
    std::vector<Value> m_values;
    ErdinfoRecord m_record;
    QStringList m_warnings;
};

} // namespace

std::unique_ptr<Command> makeErdinfoWrite()
{
    return std::make_unique<ErdinfoWrite>();
}

} // namespace vn::tool
