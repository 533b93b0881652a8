// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Closest.h"
#include "tool/cli/CommandTable.h"
#include "tool/cli/FileNameCodec.h"
#include "tool/cli/Interrupt.h"
#include "tool/files/Completion.h"

#include "base/Exceptions.h"

#include <QtCore/QList>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <new>

#include <fcntl.h>
#include <unistd.h>

using namespace vn;
using namespace vn::tool;

namespace {

/** What to say when all else fails, and where. */
struct LastWords
{
    int descriptor;
    QByteArray text;
};

/** For the handler of std::terminate, which takes no arguments and may have no memory left. */
const LastWords *s_lastWords = nullptr;

/** Reserves the three standard descriptors, so that no file opened later is taken for one of them.
 * Using them still fails, as it would have without. */
void reserveStandardDescriptors()
{
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(number, F_GETFD) < 0 && errno == EBADF)
            (void)::open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

/** The library ends the process where an exception leaves an operation that it does not belong to;
 * what remains is usually memory that ran out. */
[[noreturn]] void onTerminate()
{
    (void)!::write(s_lastWords->descriptor, s_lastWords->text.constData(),
                   std::size_t(s_lastWords->text.size()));
    ::_exit(int(ExitCode::BadInput));
}

/** Whether --json is among the options. */
bool wantsJson(const QList<QByteArray> &arguments)
{
    for (const QByteArray &argument : arguments) {
        if (argument == "--")
            return false;
        if (argument == "--json")
            return true;
    }
    return false;
}

/** Takes --color out of the options; it may stand anywhere among them. Returns a word that it does
 * not take, or null. */
QByteArray takeColor(QList<QByteArray> &words, ColorMode &mode)
{
    const QList<QByteArray> names = {"auto", "always", "never"}; // as ColorMode counts them
    const QByteArray option = "--color";
    QByteArray wrong;
    for (int i = 0; i < words.size() && words.at(i) != "--";) {
        const QByteArray word = words.at(i);
        if (word != option && !word.startsWith(option + '=')) {
            ++i;
            continue;
        }
        const QByteArray name = word == option ? "always" : word.mid(option.size() + 1);
        if (names.contains(name))
            mode = ColorMode(names.indexOf(name));
        else
            wrong = name;
        words.removeAt(i);
    }
    return wrong;
}

/** Prints a text that is a whole answer. */
void answer(Output &out, const char *member, const QString &text)
{
    if (out.json())
        out.setResult(Json::object({{member, text}}));
    else
        out.print(text);
}

/** The list of commands, or of those of one group. */
QString overview(const QByteArray &group)
{
    QString text = QStringLiteral("Usage: vantero-formats [--help | --version] %1 [arguments]\n"
                                  "       vantero-formats help [COMMAND]\n\n"
                                  "Reads, edits and writes the file formats of Vantero network "
                                  "security cameras.\n\nCommands:\n")
                       .arg(group.isEmpty() ? QStringLiteral("COMMAND")
                                            : QString::fromUtf8(group) + QLatin1String(" COMMAND"));
    constexpr int kColumn = 26;
    for (const CommandEntry &entry : commandTable())
        if (group.isEmpty() || group == entry.group)
            text += (QLatin1String("  ") + entry.fullName()).leftJustified(kColumn) +
                    wrapped(QString::fromUtf8(entry.summary), kColumn, kColumn) + QLatin1Char('\n');
    text += QLatin1String(
        "\n\"vantero-formats COMMAND --help\" tells more of each. A FILE may be \"-\", standard "
        "input;\n\"--\" ends the options. Passwords are read from files, never from arguments.\n"
        "\"--color=auto|always|never\" says when findings, diffs and verdicts have colors; "
        "\"auto\"\n"
        "is on a terminal, unless NO_COLOR is set.\n"
        "\nExit status:\n"
        "  0  done, or the answer is yes\n"
        "  1  the answer is no: not found, differs, unsafe, nothing there\n"
        "  2  wrong usage, or an input that cannot be read or is malformed\n"
        "  3  a result could not be written\n"
        "Ctrl-C ends work on several files behind the file at hand; the command says how many are "
        "done,\nleaves whole files only, and ends by the signal.\n");
    return text;
}

/** A line for each command: name, summary, arguments and options, parted by tabulators. As JSON all
 * that the help tells. */
void listCommands(Output &out)
{
    QString text;
    Json json = Json::array();
    for (const CommandEntry &entry : commandTable()) {
        const QString summary = QString::fromUtf8(entry.summary);
        Arguments arguments(entry.fullName(), summary);
        const std::unique_ptr<Command> command = entry.create();
        command->declare(arguments);
        text += entry.fullName() + QLatin1Char('\t') + summary + QLatin1Char('\t') +
                arguments.names().join(QLatin1Char(' ')) + QLatin1Char('\n');
        json.append(arguments.toJson());
    }
    if (out.json())
        out.setResult(Json::object({{"commands", std::move(json)}}));
    else
        out.print(text);
}

ExitCode runCommand(const CommandEntry &entry, const QList<QByteArray> &words, Output &out)
{
    const std::unique_ptr<Command> command = entry.create();
    Arguments arguments(entry.fullName(), QString::fromUtf8(entry.summary));
    command->declare(arguments);
    if (arguments.parse(words))
        return command->run(out);
    answer(out, "help", arguments.help());
    return ExitCode::Done;
}

ToolError usageError(const QString &message, const QString &command = QString())
{
    const QString about = command.isEmpty() ? QString() : command + QLatin1Char(' ');
    return ToolError(ExitCode::BadInput,
                     message + QStringLiteral(" (see vantero-formats %1--help)").arg(about));
}

/** Answers what is asked of the tool as a whole: --help, --version, the list of commands. */
bool answerGeneral(const QByteArray &word, Output &out)
{
    if (word == "--help" || word == "-h")
        answer(out, "help", overview(QByteArray()));
    else if (word == "--version" || word == "-V")
        answer(out, "version",
               out.json() ? QStringLiteral(VANTERO_VERSION)
                          : QStringLiteral("vantero-formats " VANTERO_VERSION "\n"));
    else if (word == "--list-commands") // for the manual and the completions
        listCommands(out);
    else
        return false;
    return true;
}

/** Prints the words that a shell may offer: the first word says which, the others are those of the
 * command line behind "--". */
void complete(const QList<QByteArray> &words, Output &out)
{
    QStringList line;
    for (const QByteArray &word : words.mid(2))
        line += fileNameFromArgument(word);
    for (const QString &word : completions(textFromArgument(words.value(0)), line))
        if (!word.contains(QLatin1Char('\n')))
            out.printLine(word);
}

/** Takes the next word; --json may stand before it and is left out, as it counts wherever it is. */
QByteArray takeWord(QList<QByteArray> &words)
{
    while (words.value(0) == "--json")
        words.removeFirst();
    return words.isEmpty() ? QByteArray() : words.takeFirst();
}

/** What the first words name: a command, or a group of them where there is no @p entry. */
struct Named
{
    QByteArray group;
    const CommandEntry *entry = nullptr;
};

/** The error of a word that is no command of @p group, or none at all. */
ToolError unknownCommand(const QByteArray &group, const QByteArray &word)
{
    QStringList words;
    for (const CommandEntry &entry : commandTable()) {
        if (group.isEmpty())
            words += QString::fromUtf8(*entry.group ? entry.group : entry.name);
        else if (group == entry.group)
            words += QString::fromUtf8(entry.name);
    }
    words.removeDuplicates();
    const QString name = group.isEmpty() ? QString() : QString::fromUtf8(group) + QLatin1Char(' ');
    const QString text = textFromArgument(word);
    const QString meant = closest(text, words);
    const QString hint =
        meant.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(name + meant);
    return usageError(QStringLiteral("unknown command \"%1\"%2").arg(name + text, hint),
                      QString::fromUtf8(group));
}

/** Takes the words that name a command or a group; the next one says of a group what is wanted and
 * is left where it is an option or nothing. */
Named takeName(QList<QByteArray> &words)
{
    const QByteArray first = takeWord(words);
    const auto &table = commandTable();
    const auto isOfGroup = [&first](const CommandEntry &entry) {
        return *entry.group && first == entry.group;
    };
    const bool isGroup = std::any_of(table.begin(), table.end(), isOfGroup);
    const QByteArray second = isGroup ? takeWord(words) : QByteArray();
    if (second.startsWith('-') || (isGroup && second.isNull())) {
        if (!second.isNull())
            words.prepend(second);
        return {first, nullptr};
    }
    for (const CommandEntry &entry : table)
        if (isGroup ? isOfGroup(entry) && second == entry.name
                    : !*entry.group && first == entry.name)
            return {isGroup ? first : QByteArray(), &entry};
    throw isGroup ? unknownCommand(first, second) : unknownCommand(QByteArray(), first);
}

ToolError unknownOption(const QByteArray &word, const QString &group)
{
    QStringList options = {QStringLiteral("--help"), QStringLiteral("--json"),
                           QStringLiteral("--color")};
    if (group.isEmpty())
        options += QStringLiteral("--version");
    const QString text = textFromArgument(word);
    return usageError(QStringLiteral("unknown option %1%2").arg(text, didYouMean(text, options)),
                      group);
}

/** The help on what @p words name, or on everything. */
QString helpOn(QList<QByteArray> words)
{
    if (words.isEmpty() || (words.size() == 1 && words.first() == "help"))
        return overview(QByteArray());
    for (const QByteArray &word : qAsConst(words))
        if (word.startsWith('-'))
            throw unknownOption(word, QString());
    const Named named = takeName(words);
    if (!words.isEmpty())
        throw usageError(QStringLiteral("help: unexpected argument \"%1\"")
                             .arg(textFromArgument(words.first())));
    if (!named.entry)
        return overview(named.group);
    Arguments arguments(named.entry->fullName(), QString::fromUtf8(named.entry->summary));
    const std::unique_ptr<Command> command = named.entry->create();
    command->declare(arguments);
    return arguments.help();
}

ExitCode dispatch(QList<QByteArray> words, Output &out)
{
    const QByteArray first = takeWord(words);
    if (first.isNull())
        throw usageError(QStringLiteral("a command is missing"));
    if (answerGeneral(first, out))
        return ExitCode::Done;
    if (first == "--complete") { // for the completions
        complete(words, out);
        return ExitCode::Done;
    }
    if (first == "help") {
        words.removeAll("--json");
        answer(out, "help", helpOn(words));
        return ExitCode::Done;
    }
    if (first.startsWith('-'))
        throw unknownOption(first, QString());
    words.prepend(first);
    const Named named = takeName(words);
    if (!named.entry) {
        const QString group = QString::fromUtf8(named.group);
        if (words.isEmpty())
            throw usageError(QStringLiteral("\"%1\" needs a command after it").arg(group), group);
        if (words.first() != "--help" && words.first() != "-h")
            throw unknownOption(words.first(), group);
        answer(out, "help", overview(named.group));
        return ExitCode::Done;
    }
    if (out.json() && !wantsJson(words)) // it stood before the name of the command
        words.prepend("--json");
    return runCommand(*named.entry, words, out);
}

ExitCode run(QList<QByteArray> words, bool json)
{
    ColorMode mode = ColorMode::Auto;
    const QByteArray wrongColor = takeColor(words, mode);
    Output out(json, json ? ColorMode::Never : mode);
    try {
        if (!wrongColor.isNull())
            throw usageError(QStringLiteral("--color takes auto, always or never, not \"%1\"")
                                 .arg(textFromArgument(wrongColor)));
        const ExitCode code = dispatch(words, out);
        out.finish();
        return code;
    } catch (const ToolError &e) {
        return out.fail(e);
    } catch (const ExceptionQt &e) {
        return out.fail(ToolError(ExitCode::BadInput, e.message()));
    } catch (const std::bad_alloc &) {
        return out.fail(ToolError(ExitCode::BadInput, QStringLiteral("out of memory")));
    } catch (const std::exception &e) {
        return out.fail(ToolError(ExitCode::BadInput,
                                  QLatin1String("internal error: ") + QString::fromUtf8(e.what())));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    reserveStandardDescriptors();
    installFileNameCodec();
    QList<QByteArray> words;
    for (int i = 1; i < argc; ++i)
        words += QByteArray(argv[i]);
    const bool json = wantsJson(words);
    const LastWords lastWords = {
        json ? STDOUT_FILENO : STDERR_FILENO,
        failureText(
            ToolError(ExitCode::BadInput, QStringLiteral("out of memory or an internal error")),
            json)};
    s_lastWords = &lastWords;
    std::set_terminate(onTerminate);
    const ExitCode code = run(words, json);
    Interrupt::obey(); // a signal that has ended the work
    return int(code);
}
