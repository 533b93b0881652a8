// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_ARGUMENTS_H
#define VN_TOOL_CLI_ARGUMENTS_H

#include "tool/cli/Json.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace vn::tool {

/** An entry of a configuration among the arguments: "SECTION/KEY" or "SECTION/KEY=VALUE". */
struct EntryArgument
{
    QString section; ///< up to the first "/"
    QString key;     ///< up to the first "="
    QString value;   ///< null where none is taken
};

/**
 * The arguments of one command: what there is, what it means, and where its values go.
 *
 * The declarations feed parsing, help and the list of commands. Targets must outlive parse().
 * File names keep every byte that the user gave; other texts are UTF-8 (or Latin-1), whatever the
 * locale. An option that is not given leaves its target as it is. After "--" everything is a
 * positional argument, so a value may begin with "-".
 * @code
 * arguments.file("FILE", "the configuration to show", m_file);
 * arguments.option("--section", "NAME", "only this section", m_section);
 * arguments.json();
 * @endcode
 */
class Arguments
{
public:
    /** An argument of a command called @p command ("config show") with that one-line summary. */
    Arguments(const QString &command, const QString &summary);
    ~Arguments();

    Arguments(const Arguments &) = delete; // holds the command's targets
    Arguments &operator=(const Arguments &) = delete;

    // ---- Declaring -----------------------------------------------------------------------------

    /** Adds a paragraph below the summary; it is wrapped, "\n" ends a line. */
    void describe(const char *paragraph);

    /** Adds an example to the help: the whole command line, then what it does. */
    void example(const char *commandLine, const char *meaning);

    /** Declares a required file name; @p what may end in a hint on "-". */
    void file(const char *name, const char *what, QString &target);

    /** Declares a list of at least one file name. */
    void files(const char *name, const char *what, QStringList &target);

    /** Declares a required text. */
    void text(const char *name, const char *what, QString &target);

    /** Declares a text that may be missing. */
    void text(const char *name, const char *what, std::optional<QString> &target);

    /** Declares a list of at least one text. */
    void texts(const char *name, const char *what, QStringList &target);

    /** A text that follows a file name; see fileThenTexts(). */
    struct Text
    {
        const char *name;
        const char *what;
        QString *target;
        const char *offers = "text"; ///< see offers()
    };

    /**
     * Declares one file name and @p texts behind it, of which the last may be a @p list. Where the
     * option @p several is given, everything is a file name instead, and no text is filled.
     */
    void fileThenTexts(const char *name, const char *what, QStringList &files,
                       std::vector<Text> texts, const char *several, QStringList *list = nullptr);

    /** Declares an option with "SECTION/KEY=VALUE" that may be given several times. */
    void assignments(const char *option, const char *what, QList<EntryArgument> &target);

    /** Declares an option with "SECTION/KEY" that may be given several times. */
    void entries(const char *option, const char *what, QList<EntryArgument> &target);

    /** Declares an option with a file name. */
    void fileOption(const char *option, const char *value, const char *what,
                    std::optional<QString> &target);

    /** Declares an option with a text. */
    void option(const char *option, const char *value, const char *what,
                std::optional<QString> &target);

    /** Declares an option that takes one of the words of @p values ("error|warning|note"), which
     * the help shows like that. */
    void choice(const char *option, const char *values, const char *what, QString &target);

    /** Declares an option with file names: several behind it, or the option again. */
    void fileList(const char *option, const char *value, const char *what, QStringList &target);

    /** Declares an option with a text that may be given several times. */
    void repeatedOption(const char *option, const char *value, const char *what,
                        QStringList &target);

    /** Declares an option with a whole number, decimal or with "0x", of that range. */
    void option(const char *option, const char *value, const char *what,
                std::optional<qint64> &target, qint64 smallest = std::numeric_limits<qint64>::min(),
                qint64 largest = std::numeric_limits<qint64>::max());

    /** Declares an option without a value. */
    void flag(const char *option, const char *what, bool &target);

    /** Declares --json; whether it was given is known to Output. */
    void json();

    /** Says that the text declared last is a "section", "key", "model" or what else completions()
     * knows, so that shells can offer those that there are. */
    void offers(const char *kind);

    /** Makes the option declared last required. */
    void require();

    /** Makes the positional argument declared last one that may be missing. */
    void optional();

    /** Makes @p option an error without @p other. */
    void needs(const char *option, const char *other);

    /** Makes the two options exclude each other. */
    void exclude(const char *option, const char *other);

    // ---- Using ---------------------------------------------------------------------------------

    /**
     * Fills the targets. Returns false when help was asked for (nothing is filled then).
     * @throws ToolError (bad input) on wrong usage
     */
    bool parse(const QList<QByteArray> &arguments);

    /** The help text. */
    QString help() const;

    /** The names of the positional arguments and options, in the order of the help. */
    QStringList names() const;

    /** The same with all that the help tells, for the manual and the completions. "--help" is not
     * among the options: every command has it. */
    Json toJson() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

/** @p text with its lines broken at blanks to fit the screen: @p indent blanks before each line but
 * the first, which has @p column characters before it already. */
QString wrapped(const QString &text, int indent, int column);

} // namespace vn::tool

#endif // VN_TOOL_CLI_ARGUMENTS_H
