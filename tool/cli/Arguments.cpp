// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Arguments.h"

#include "tool/cli/Closest.h"
#include "tool/cli/FileNameCodec.h"
#include "tool/cli/ToolError.h"

#include <QtCore/QFileInfo>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace vn::tool {

namespace {

constexpr int kScreenWidth = 80;
constexpr int kHelpColumn = 26; // where the meaning of an argument begins

// CLI11 takes an argument in brackets for a list, and for "--option=" the next argument. This,
// which no argument can hold, goes behind those.
constexpr char kGuard = '\0';

bool needsGuard(const QByteArray &argument)
{
    const int value = argument.startsWith("--") ? argument.indexOf('=') + 1 : 0;
    return value == argument.size() || argument.at(value) == '[';
}

/** The name of an option that may have its value behind "=". */
QString optionName(const QByteArray &word)
{
    const int equals = word.indexOf('=');
    return textFromArgument(equals < 0 ? word : word.left(equals));
}

QByteArray fromStdString(const std::string &text)
{
    return QByteArray(text.data(), int(text.size()));
}

} // namespace

class Arguments::Private
{
public:
    using Values = std::vector<std::string>;

    struct Parameter
    {
        QString name;  // "FILE", "--section"
        QString value; // of an option: "NAME"; empty for a flag
        QString what;
        const char *takes; // "file", "text" or what is offered, "number", "choice", "nothing"
        bool positional;
        bool repeated;
        bool required;
        CLI::Option *option;
        std::function<void(const Values &)> store;
    };

    void add(const char *name, const char *value, const char *what, const char *takes,
             bool repeated, std::function<void(const Values &)> store)
    {
        const bool positional = name[0] != '-';
        // The values are taken as they came, not as CLI11 would convert them.
        CLI::Option *option =
            app.add_option(name, CLI::callback_t([](const Values &) { return true; }));
        option->type_size(1)->required(positional);
        if (repeated && positional)
            option->expected(1, -1);
        else
            option->expected(1);
        if (repeated)
            option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        option->allow_extra_args(repeated && positional);
        parameters.push_back({QString::fromUtf8(name), QString::fromUtf8(value),
                              QString::fromUtf8(what), takes, positional, repeated, positional,
                              option, std::move(store)});
    }

    /** A parameter that the help tells of; another one takes what is given for it. */
    void addShown(const char *name, const char *what, const char *takes, bool repeated)
    {
        parameters.push_back({QString::fromUtf8(name),
                              QString(),
                              QString::fromUtf8(what),
                              takes,
                              true,
                              repeated,
                              !repeated,
                              nullptr,
                              {}});
    }

    void addEntries(const char *option, const char *form, const char *what,
                    QList<EntryArgument> &target)
    {
        const QString name = QString::fromUtf8(option);
        const QString shape = QString::fromUtf8(form);
        const bool hasValue = shape.contains(QLatin1Char('='));
        add(option, form, what, hasValue ? "assignment" : "entry", true,
            [this, name, shape, hasValue, &target](const Values &values) {
                for (const std::string &each : values) {
                    const QString text = textFromArgument(fromStdString(each));
                    const int slash = text.indexOf(QLatin1Char('/'));
                    const int equals = hasValue ? text.indexOf(QLatin1Char('='), slash) : -1;
                    if (slash < 0 || (hasValue && equals < 0))
                        throw usageError(
                            QStringLiteral("%1 takes %2, not \"%3\"").arg(name, shape, text));
                    const int keyEnd = hasValue ? equals : text.size();
                    target.append({text.left(slash), text.mid(slash + 1, keyEnd - slash - 1),
                                   hasValue ? text.mid(equals + 1) : QString()});
                }
            });
    }

    void addFlag(const char *name, const char *what, std::function<void(const Values &)> store)
    {
        parameters.push_back({QString::fromUtf8(name), QString(), QString::fromUtf8(what),
                              "nothing", false, false, false,
                              app.add_flag(name)->disable_flag_override(), std::move(store)});
    }

    static Values withoutGuards(Values values)
    {
        for (std::string &value : values)
            if (!value.empty() && value.back() == kGuard)
                value.pop_back();
        return values;
    }

    ToolError usageError(const QString &message) const
    {
        return ToolError(
            ExitCode::BadInput,
            QStringLiteral("%1: %2 (see vantero-formats %1 --help)").arg(command, message));
    }

    /** The error of an option that CLI11 calls mismatched: given too often, without its value, or
     * with a value that it does not take. */
    ToolError mismatch(const QString &message) const
    {
        for (const Parameter &parameter : parameters) {
            const QString &name = parameter.name;
            if (message.startsWith(name.mid(2) + QLatin1Char(' ')))
                return usageError(QStringLiteral("%1 takes no value").arg(name));
            if (message.startsWith(name + QLatin1Char(':')))
                return usageError(parameter.option->count() > 1
                                      ? QStringLiteral("%1 is given more than once").arg(name)
                                      : QStringLiteral("%1 needs a value after it").arg(name));
        }
        return usageError(message);
    }

    /** Where "--" stands among the words that were given; behind all of them where it does not. */
    int endOfOptions() const
    {
        const int at = words.indexOf("--");
        return at < 0 ? words.size() : at;
    }

    /** The option that @p word is, whatever it is given; null where there is none. */
    const Parameter *optionOf(const QByteArray &word) const
    {
        const QString name = optionName(word);
        for (const Parameter &parameter : parameters)
            if (!parameter.positional && parameter.name == name)
                return &parameter;
        return nullptr;
    }

    /** The error of a word that stands where none is expected. */
    ToolError unexpected(const QByteArray &word) const
    {
        const bool isMisplaced = words.indexOf(word) > endOfOptions() && optionOf(word);
        return usageError(QStringLiteral("unexpected argument \"%1\"%2")
                              .arg(textFromArgument(word),
                                   isMisplaced ? QLatin1String("; options stand before \"--\"")
                                               : QLatin1String()));
    }

    /** The error of the first word that nothing takes; nothing where each is taken. */
    std::optional<ToolError> errorOfExtras() const
    {
        const Values extras = withoutGuards(app.remaining());
        if (extras.empty())
            return {};
        const QByteArray word = fromStdString(extras.front());
        if (words.indexOf(word) > endOfOptions() || !word.startsWith('-') || word == "-")
            return unexpected(word);
        QStringList names = {QStringLiteral("--help"), QStringLiteral("--color")};
        for (const Parameter &parameter : parameters)
            if (!parameter.positional)
                names += parameter.name;
        const QString name = optionName(word);
        QString hint = didYouMean(name, names);
        if (hint.isEmpty() && !word.startsWith("--"))
            hint = QStringLiteral("; an argument that begins with \"-\" stands behind \"--\"");
        return usageError(QStringLiteral("unknown option %1%2").arg(name, hint));
    }

    /** Refuses an option behind "--" that would be taken for a file and is none. */
    void refuseMisplacedOption(const std::string &value) const
    {
        const QByteArray word = fromStdString(value);
        if (endOfOptions() < words.size() && words.lastIndexOf(word) > endOfOptions() &&
            optionOf(word) && !QFileInfo::exists(fileNameFromArgument(word)))
            throw usageError(QStringLiteral("there is no file %1, and options stand before \"--\"")
                                 .arg(textFromArgument(word)));
    }

    QString command;
    QString summary;
    QList<QByteArray> words; // as they were given
    QStringList paragraphs;
    QList<QPair<QString, QString>> examples;
    QString several; // the option with which there may be several files
    CLI::App app;
    std::vector<Parameter> parameters;
};

Arguments::Arguments(const QString &command, const QString &summary)
    : d(std::make_unique<Private>())
{
    d->command = command;
    d->summary = summary;
}

Arguments::~Arguments() = default;

void Arguments::describe(const char *paragraph)
{
    d->paragraphs += QString::fromUtf8(paragraph);
}

void Arguments::example(const char *commandLine, const char *meaning)
{
    d->examples += qMakePair(QString::fromUtf8(commandLine), QString::fromUtf8(meaning));
}

void Arguments::file(const char *name, const char *what, QString &target)
{
    d->add(name, "", what, "file", false, [&target](const Private::Values &values) {
        target = fileNameFromArgument(fromStdString(values.front()));
    });
}

void Arguments::files(const char *name, const char *what, QStringList &target)
{
    d->add(name, "", what, "file", true, [this, &target](const Private::Values &values) {
        for (const std::string &value : values) {
            d->refuseMisplacedOption(value);
            target += fileNameFromArgument(fromStdString(value));
        }
    });
}

void Arguments::text(const char *name, const char *what, QString &target)
{
    d->add(name, "", what, "text", false, [&target](const Private::Values &values) {
        target = textFromArgument(fromStdString(values.front()));
    });
}

void Arguments::text(const char *name, const char *what, std::optional<QString> &target)
{
    d->add(name, "", what, "text", false, [&target](const Private::Values &values) {
        target = textFromArgument(fromStdString(values.front()));
    });
    optional();
}

void Arguments::texts(const char *name, const char *what, QStringList &target)
{
    d->add(name, "", what, "text", true, [&target](const Private::Values &values) {
        for (const std::string &value : values)
            target += textFromArgument(fromStdString(value));
    });
}

void Arguments::fileThenTexts(const char *name, const char *what, QStringList &files,
                              std::vector<Text> texts, const char *several, QStringList *list)
{
    d->several = QString::fromUtf8(several);
    const std::size_t single = list ? texts.size() - 1 : texts.size();
    d->add(name, "", what, "file", true,
           [this, &files, texts, single, several, list](const Private::Values &values) {
               const bool areFiles = d->app.get_option(several)->count() > 0;
               for (const std::string &value : values)
                   if (areFiles || files.isEmpty())
                       files += fileNameFromArgument(fromStdString(value));
               if (areFiles)
                   return;
               if (values.size() <= single)
                   throw d->usageError(QString::fromUtf8(texts[values.size() - 1].name) +
                                       QLatin1String(" is missing"));
               for (std::size_t i = 1; i < values.size(); ++i) {
                   const QString text = textFromArgument(fromStdString(values[i]));
                   if (i <= single)
                       *texts[i - 1].target = text;
                   else if (list)
                       *list += text;
                   else
                       throw d->unexpected(fromStdString(values[i]));
               }
           });
    d->parameters.back().repeated = false;
    for (std::size_t i = 0; i < texts.size(); ++i)
        d->addShown(texts[i].name, texts[i].what, texts[i].offers, i >= single);
}

void Arguments::assignments(const char *option, const char *what, QList<EntryArgument> &target)
{
    d->addEntries(option, "SECTION/KEY=VALUE", what, target);
}

void Arguments::entries(const char *option, const char *what, QList<EntryArgument> &target)
{
    d->addEntries(option, "SECTION/KEY", what, target);
}

void Arguments::fileOption(const char *option, const char *value, const char *what,
                           std::optional<QString> &target)
{
    const QString name = QString::fromUtf8(option);
    d->add(option, value, what, "file", false,
           [this, name, &target](const Private::Values &values) {
               if (values.front().empty())
                   throw d->usageError(QStringLiteral("%1 takes a name, not \"\"").arg(name));
               target = fileNameFromArgument(fromStdString(values.front()));
           });
}

void Arguments::option(const char *option, const char *value, const char *what,
                       std::optional<QString> &target)
{
    d->add(option, value, what, "text", false, [&target](const Private::Values &values) {
        target = textFromArgument(fromStdString(values.front()));
    });
}

void Arguments::choice(const char *option, const char *values, const char *what, QString &target)
{
    const QString name = QString::fromUtf8(option);
    const QStringList words = QString::fromUtf8(values).split(QLatin1Char('|'));
    d->add(
        option, values, what, "choice", false,
        [this, name, words, &target](const Private::Values &given) {
            const QString word = textFromArgument(fromStdString(given.front()));
            if (!words.contains(word))
                throw d->usageError(
                    QStringLiteral("%1 takes %2 or %3, not \"%4\"")
                        .arg(name,
                             QStringList(words.mid(0, words.size() - 1)).join(QStringLiteral(", ")),
                             words.last(), word));
            target = word;
        });
}

void Arguments::fileList(const char *option, const char *value, const char *what,
                         QStringList &target)
{
    d->add(option, value, what, "file", true, [&target](const Private::Values &values) {
        for (const std::string &each : values)
            target += fileNameFromArgument(fromStdString(each));
    });
    d->parameters.back().option->expected(1, -1)->allow_extra_args();
}

void Arguments::repeatedOption(const char *option, const char *value, const char *what,
                               QStringList &target)
{
    d->add(option, value, what, "text", true, [&target](const Private::Values &values) {
        for (const std::string &each : values)
            target += textFromArgument(fromStdString(each));
    });
}

void Arguments::option(const char *option, const char *value, const char *what,
                       std::optional<qint64> &target, qint64 smallest, qint64 largest)
{
    const QString name = QString::fromUtf8(option);
    d->add(option, value, what, "number", false,
           [this, name, smallest, largest, &target](const Private::Values &values) {
               const QByteArray text = fromStdString(values.front());
               const bool hexadecimal = text.startsWith("0x") || text.startsWith("-0x");
               bool ok = false;
               const qint64 number = text.toLongLong(&ok, hexadecimal ? 16 : 10);
               if (!ok || number < smallest || number > largest)
                   throw d->usageError(QStringLiteral("%1 takes a whole number from %2 to %3, not "
                                                      "\"%4\"")
                                           .arg(name)
                                           .arg(smallest)
                                           .arg(largest)
                                           .arg(textFromArgument(text)));
               target = number;
           });
}

void Arguments::flag(const char *option, const char *what, bool &target)
{
    d->addFlag(option, what, [&target](const Private::Values &) { target = true; });
}

void Arguments::json()
{
    d->addFlag("--json", "print the result as one JSON value", [](const Private::Values &) {});
}

void Arguments::offers(const char *kind)
{
    d->parameters.back().takes = kind;
}

void Arguments::require()
{
    d->parameters.back().required = true;
    d->parameters.back().option->required();
}

void Arguments::optional()
{
    d->parameters.back().required = false;
    d->parameters.back().option->required(false);
}

void Arguments::needs(const char *option, const char *other)
{
    d->app.get_option(option)->needs(d->app.get_option(other));
}

void Arguments::exclude(const char *option, const char *other)
{
    d->app.get_option(option)->excludes(d->app.get_option(other));
}

bool Arguments::parse(const QList<QByteArray> &arguments)
{
    d->words = arguments;
    d->app.set_help_flag("-h,--help");
    std::vector<std::string> reversed; // as CLI11 takes them
    for (auto it = arguments.crbegin(); it != arguments.crend(); ++it) {
        reversed.emplace_back(it->constData(), std::size_t(it->size()));
        if (needsGuard(*it))
            reversed.back() += kGuard;
    }
    try {
        d->app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp &) {
        return false;
    } catch (const CLI::ExtrasError &) {
        throw *d->errorOfExtras();
    } catch (const CLI::RequiredError &e) {
        if (const auto error = d->errorOfExtras()) // it may be what is missing, mistyped
            throw *error;
        // The message begins with the name of what is missing.
        throw d->usageError(QString::fromUtf8(e.what()).section(QLatin1Char(' '), 0, 0) +
                            QLatin1String(" is missing"));
    } catch (const CLI::ArgumentMismatch &e) {
        throw d->mismatch(QString::fromUtf8(e.what()));
    } catch (const CLI::ParseError &e) {
        throw d->usageError(textFromArgument(e.what()));
    }
    for (const Private::Parameter &parameter : d->parameters)
        if (parameter.option && parameter.option->count() > 0)
            parameter.store(Private::withoutGuards(parameter.option->results()));
    return true;
}

QString Arguments::help() const
{
    QString usage = QLatin1String("Usage: vantero-formats ") + d->command;
    QString positionals;
    QString options;
    for (const Private::Parameter &parameter : d->parameters) {
        QString head = parameter.name;
        if (!parameter.value.isEmpty())
            head += QLatin1Char(' ') + parameter.value;
        if (!parameter.positional && parameter.required)
            usage += QLatin1Char(' ') + head;
        if (parameter.positional && parameter.repeated)
            head += QLatin1String("...");

        QString line = QLatin1String("  ") + head;
        if (line.size() > kHelpColumn - 2)
            line += QLatin1Char('\n') + QString(kHelpColumn, QLatin1Char(' '));
        else
            line = line.leftJustified(kHelpColumn);
        line += wrapped(parameter.what, kHelpColumn, kHelpColumn) + QLatin1Char('\n');
        (parameter.positional ? positionals : options) += line;
    }
    options += QStringLiteral("  -h, --help").leftJustified(kHelpColumn) +
               QLatin1String("show this help\n");
    usage += QLatin1String(" [options]");
    for (const Private::Parameter &parameter : d->parameters)
        if (parameter.positional)
            usage += QString::fromLatin1(parameter.required ? " %1%2" : " [%1%2]")
                         .arg(parameter.name, QLatin1String(parameter.repeated ? "..." : ""));

    if (!d->several.isEmpty()) {
        const auto &parameters = d->parameters;
        const auto option = std::find_if(
            parameters.begin(), parameters.end(),
            [this](const Private::Parameter &each) { return each.name == d->several; });
        usage += QStringLiteral("\nvantero-formats %1 [options] %2... %3 %4")
                     .arg(d->command, parameters.front().name, d->several, option->value);
    }

    QString summary = d->summary;
    summary[0] = summary.at(0).toUpper();
    QString text = wrapped(usage, 7, 0) + QLatin1String("\n\n") + summary + QLatin1String(".\n");
    for (const QString &paragraph : qAsConst(d->paragraphs))
        text += QLatin1Char('\n') + wrapped(paragraph, 0, 0) + QLatin1Char('\n');
    if (!positionals.isEmpty())
        text += QLatin1String("\nArguments:\n") + positionals;
    text += QLatin1String("\nOptions:\n") + options;
    if (!d->examples.isEmpty())
        text += QLatin1String("\nExamples:\n");
    for (const auto &example : qAsConst(d->examples))
        text += QLatin1String("  ") + example.first + QLatin1String("\n      ") +
                wrapped(example.second, 6, 6) + QLatin1Char('\n');
    return text;
}

QStringList Arguments::names() const
{
    QStringList result;
    for (const bool positional : {true, false})
        for (const Private::Parameter &parameter : d->parameters)
            if (parameter.positional == positional)
                result += parameter.name;
    return result << QStringLiteral("--help");
}

Json Arguments::toJson() const
{
    Json positionals = Json::array();
    Json options = Json::array();
    for (const Private::Parameter &parameter : d->parameters) {
        Json json = Json::object({{"name", parameter.name}, {"meaning", parameter.what}});
        if (!parameter.positional)
            json.insert(QStringLiteral("value"), parameter.value);
        json.insert(QStringLiteral("takes"), parameter.takes);
        json.insert(QStringLiteral("required"), parameter.required);
        json.insert(QStringLiteral("repeated"), parameter.repeated);
        (parameter.positional ? positionals : options).append(std::move(json));
    }
    Json examples = Json::array();
    for (const auto &example : qAsConst(d->examples))
        examples.append(Json::object({{"command", example.first}, {"meaning", example.second}}));
    return Json::object({{"name", d->command},
                         {"several", d->several},
                         {"summary", d->summary},
                         {"description", Json::array(d->paragraphs)},
                         {"arguments", std::move(positionals)},
                         {"options", std::move(options)},
                         {"examples", std::move(examples)}});
}

QString wrapped(const QString &text, int indent, int column)
{
    QString result;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            result += QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
            column = indent;
        }
        bool first = true;
        for (const QString &word : lines.at(i).split(QLatin1Char(' '))) {
            if (!first && column + 1 + word.size() > kScreenWidth) {
                result += QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
                column = indent;
            } else if (!first) {
                result += QLatin1Char(' ');
                ++column;
            }
            result += word;
            column += word.size();
            first = false;
        }
    }
    return result;
}

} // namespace vn::tool
