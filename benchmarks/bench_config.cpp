// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Loading and printing configuration texts, against readers of similar formats. */

#include "ConfigText.h"
#include "Support.h"

#include "config/VanteroConfigFile.h"

#include <KConfig>
#include <KConfigGroup>

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#include <glib.h>
#include <ini.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

/** An ini file, in memory-backed storage where there is one. */
class IniFile
{
public:
    explicit IniFile(const QByteArray &text)
        : m_dir(QFile::exists(QStringLiteral("/dev/shm"))
                    ? QStringLiteral("/dev/shm/vantero-XXXXXX")
                    : QString())
        , m_path(m_dir.filePath(QStringLiteral("text.ini")))
    {
        QFile file(m_path);
        require(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "ini file");
    }

    const QString &path() const { return m_path; }

    /** The same file under a name that no reader has cached. */
    const QString &freshPath()
    {
        const QString next = m_dir.filePath(QStringLiteral("text%1.ini").arg(m_count++));
        require(QFile::rename(m_path, next), "rename");
        return m_path = next;
    }

private:
    QTemporaryDir m_dir;
    QString m_path;
    int m_count = 0;
};

/** The size of a benchmark in sections; notes the number of entries. */
int sectionsOf(benchmark::State &state)
{
    state.counters["entries"] = double(state.range(0)) * kEntries;
    return int(state.range(0));
}

const QString kSection = QStringLiteral("section7");
const QString kKey = QStringLiteral("recording_timetable_37"); // the second line of a section
const QString kValue = QStringLiteral("value 351");

/** The key of the second line of that section where there are so many kinds of sections. */
QString keyOf(int kinds)
{
    return QStringLiteral("recording_timetable_%1").arg(7 % kinds * kEntries + 37);
}

// ---- Load, look up, free -----------------------------------------------------------------------

template <int kinds>
void loadOurs(benchmark::State &state)
{
    const QString text = configText(sectionsOf(state), kinds);
    QString value;
    for (auto _ : state) {
        vn::VanteroConfigFile config;
        config.parse(text, QDateTime());
        value = config.value(kSection, keyOf(kinds));
    }
    require(value == kValue, "load/ours");

    const double before = heapInUse();
    vn::VanteroConfigFile config;
    config.parse(text, QDateTime());
    state.counters["bytes_per_entry"] = (heapInUse() - before) / state.counters["entries"];
}

template <int kinds>
void loadGKeyFile(benchmark::State &state)
{
    const QByteArray text = iniText(sectionsOf(state), kinds);
    const QByteArray key = keyOf(kinds).toLatin1();
    const auto load = [&] {
        GKeyFile *file = g_key_file_new();
        g_key_file_load_from_data(file, text.constData(), gsize(text.size()), G_KEY_FILE_NONE,
                                  nullptr);
        return file;
    };
    std::string value;
    for (auto _ : state) {
        GKeyFile *file = load();
        char *found = g_key_file_get_value(file, "section7", key.constData(), nullptr);
        value = found;
        g_free(found);
        g_key_file_free(file);
    }
    require(value == "value 351", "load/GKeyFile");

    const double before = heapInUse();
    GKeyFile *file = load();
    state.counters["bytes_per_entry"] = (heapInUse() - before) / state.counters["entries"];
    g_key_file_free(file);
}

void loadQSettings(benchmark::State &state)
{
    IniFile file(iniText(sectionsOf(state)));
    QString value;
    for (auto _ : state) {
        state.PauseTiming();
        const QString path = file.freshPath();
        state.ResumeTiming();
        const QSettings settings(path, QSettings::IniFormat);
        benchmark::DoNotOptimize(settings.allKeys()); // it parses a section when it is asked for it
        value = settings.value(kSection + QLatin1Char('/') + kKey).toString();
    }
    require(value == kValue, "load/QSettings");
}

void loadKConfig(benchmark::State &state)
{
    IniFile file(iniText(sectionsOf(state)));
    QString value;
    for (auto _ : state) {
        const KConfig config(file.path(), KConfig::SimpleConfig);
        value = config.group(kSection).readEntry("recording_timetable_37");
    }
    require(value == kValue, "load/KConfig");
}

using StdMap = std::map<std::string, std::map<std::string, std::string>>;

StdMap parseByInih(const QByteArray &text)
{
    StdMap map;
    const auto add = [](void *user, const char *section, const char *name, const char *value) {
        (*static_cast<StdMap *>(user))[section][name] = value;
        return 1;
    };
    require(ini_parse_string(text.constData(), add, &map) == 0, "load/inih");
    return map;
}

void loadInih(benchmark::State &state)
{
    const QByteArray text = iniText(sectionsOf(state));
    std::string value;
    for (auto _ : state) {
        const StdMap map = parseByInih(text);
        value = map.at("section7").at("recording_timetable_37");
    }
    require(value == "value 351", "load/inih");

    const double before = heapInUse();
    const StdMap map = parseByInih(text);
    state.counters["bytes_per_entry"] = (heapInUse() - before) / state.counters["entries"];
}

/** One scan of the text, one string a key and a value: what the content of any result costs. */
void loadLimit(benchmark::State &state)
{
    const QString text = configText(sectionsOf(state));
    std::size_t count = 0;
    for (auto _ : state) {
        std::vector<std::pair<QString, QString>> entries;
        const QStringView view(text);
        for (qsizetype begin = 0; begin < view.size();) {
            const qsizetype end = view.indexOf(QLatin1Char('\n'), begin);
            const QStringView line = view.mid(begin, end - begin);
            const qsizetype equals = line.indexOf(QLatin1Char('='));
            if (equals >= 0) {
                entries.emplace_back(line.left(equals).toString(), line.mid(equals + 1).toString());
            }
            begin = end + 1;
        }
        count = entries.size();
        benchmark::DoNotOptimize(entries);
    }
    require(double(count) == state.counters["entries"] + 1, "load/limit"); // and the header line
}

// ---- Print -------------------------------------------------------------------------------------

void printOurs(benchmark::State &state)
{
    vn::VanteroConfigFile config;
    config.parse(configText(sectionsOf(state)), QDateTime());
    QString text;
    for (auto _ : state)
        benchmark::DoNotOptimize(text = config.toString());
    require(text.startsWith(QStringLiteral("\nSECTION head\n")) && text.contains(kValue),
            "print/ours");
}

void printGKeyFile(benchmark::State &state)
{
    const QByteArray text = iniText(sectionsOf(state));
    GKeyFile *file = g_key_file_new();
    g_key_file_load_from_data(file, text.constData(), gsize(text.size()), G_KEY_FILE_NONE, nullptr);
    gsize size = 0;
    for (auto _ : state) {
        char *printed = g_key_file_to_data(file, &size, nullptr);
        benchmark::DoNotOptimize(printed);
        g_free(printed);
    }
    g_key_file_free(file);
    require(size > gsize(text.size()) / 2, "print/GKeyFile");
}

void printQSettings(benchmark::State &state)
{
    const int sections = sectionsOf(state);
    const IniFile file(iniText(sections));
    QSettings settings(file.path(), QSettings::IniFormat);
    int round = 0;
    for (auto _ : state) {
        settings.setValue(QStringLiteral("section0/recording_timetable_0"),
                          ++round); // makes it write
        settings.sync();
    }
    require(QFile(file.path()).size() > sections * kEntries * 10, "print/QSettings");
}

/** One reservation and one pass that appends strings which lie ready in a row. */
void printLimit(benchmark::State &state)
{
    vn::VanteroConfigFile config;
    config.parse(configText(sectionsOf(state)), QDateTime());
    std::vector<std::pair<QString, QString>> entries;
    const QStringList sections = config.allSectionKeys();
    for (const QString &name : sections) {
        const auto section = config.section(name);
        for (auto it = section.begin(); it != section.end(); ++it)
            entries.emplace_back(it.key(), it.value());
    }
    const int size = config.toString().size();
    QString text;
    for (auto _ : state) {
        text = QString();
        text.reserve(size);
        for (const auto &[key, value] : entries) {
            text += key;
            text += QLatin1Char('=');
            text += value;
            text += QLatin1Char('\n');
        }
        benchmark::DoNotOptimize(text);
    }
    require(text.contains(kValue), "print/limit");
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(20)->Arg(200)->Arg(2000);
}

} // namespace

BENCHMARK_TEMPLATE(loadOurs, 1)->Name("load/ours")->Apply(sizes);
BENCHMARK_TEMPLATE(loadGKeyFile, 1)->Name("load/GKeyFile")->Apply(sizes);
BENCHMARK(loadQSettings)->Name("load/QSettings")->Apply(sizes);
BENCHMARK(loadKConfig)->Name("load/KConfig")->Apply(sizes);
BENCHMARK(loadInih)->Name("load/inih")->Apply(sizes);
BENCHMARK(loadLimit)->Name("load/limit")->Apply(sizes);
BENCHMARK_TEMPLATE(loadOurs, 12)->Name("load600Keys/ours")->Arg(200); // sections
BENCHMARK_TEMPLATE(loadGKeyFile, 12)->Name("load600Keys/GKeyFile")->Arg(200);
BENCHMARK(printOurs)->Name("print/ours")->Apply(sizes);
BENCHMARK(printGKeyFile)->Name("print/GKeyFile")->Apply(sizes);
BENCHMARK(printQSettings)->Name("print/QSettings")->Apply(sizes);
BENCHMARK(printLimit)->Name("print/limit")->Apply(sizes);
