// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/files/EditTarget.h"

#include "base/Exceptions.h"
#include "config/ConfigRedaction.h"

#include <memory>

namespace vn::tool {

namespace {

class ConfigRedact : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        arguments.describe(
            "Puts \"***\" in the place of secrets, in values and comments: the values of keys "
            "such as passwords, user names, tokens, community strings, keys and certificates, "
            "inside of values such as \"user=admin;password=secret\" and URLs, and what looks "
            "like a secret. Nothing else changes, and the same keys are read from the result.");
        arguments.describe(
            "A secret under a harmless name looks like any other value: read the result before "
            "you publish it. What looks like a secret but stays, as it is part of a key or the "
            "name of a section, is told on standard error.");
        arguments.files("FILE", "configuration, \"-\" for standard input", m_target.names());
        arguments.repeatedOption("--key", "NAME",
                                 "the values of this key are secrets, too; \"*\" stands for any "
                                 "characters",
                                 m_keys);
        arguments.offers("key");
        arguments.repeatedOption("--pattern", "REGEX",
                                 "what matches is a secret, too, or the first group of it",
                                 m_patterns);
        arguments.flag("--report",
                       "list on standard error what was replaced where: "
                       "\"FILE:LINE:COLUMN: reason: SECTION/KEY\"",
                       m_report);
        m_target.declare(arguments);
        arguments.example("vantero-formats config redact gate.cfg --output for-support.cfg",
                          "writes a copy that can be shown to others, once it has been read");
    }

    ExitCode run(Output &out) override
    {
        ConfigRedactionRules rules;
        rules.keys += m_keys;
        for (const QString &pattern : qAsConst(m_patterns))
            rules.patterns += QRegularExpression(pattern);
        try {
            (void)redactConfig(QString(), rules);
        } catch (const ParseException &e) {
            throw ToolError(ExitCode::BadInput, QLatin1String("--pattern: ") + e.message());
        }
        return m_target.run(out, [&](const ConfigTextFile &file) {
            const RedactedConfig redacted = redactConfig(file.text(), rules);
            EditTarget::Edited edited = {redacted.text, {}, {}};
            const auto note = [&](const ToolError &text, const ConfigRedaction &each) {
                edited.notes.append(text.at(file.name(), each.range.line, each.range.column));
            };
            for (const ConfigRedaction &each : redacted.replaced) {
                edited.edits.append({each.range, kMark});
                if (m_report)
                    note(ToolError(ExitCode::Done, inWords(each)), each);
            }
            for (const ConfigRedaction &each : redacted.left)
                note(ToolError::warning(QLatin1String("looks like a secret, but stays: ") +
                                        inWords(each)),
                     each);
            return edited;
        });
    }

private:
    static inline const QString kMark = QStringLiteral("***");

    static QString inWords(const ConfigRedaction &redaction)
    {
        static const char *const reasons[] = {"key", "section", "assignment",
                                              "URL", "shape",   "pattern"};
        QString text = QString::fromLatin1(reasons[int(redaction.reason)]);
        if (!redaction.section.isNull())
            text += QLatin1String(": ") + redaction.section;
        if (!redaction.key.isNull())
            text += QLatin1Char('/') + redaction.key;
        return escapedControls(text);
    }

    QStringList m_keys;
    QStringList m_patterns;
    bool m_report = false;
    EditTarget m_target;
};

} // namespace

std::unique_ptr<Command> makeConfigRedact()
{
    return std::make_unique<ConfigRedact>();
}

} // namespace vn::tool
