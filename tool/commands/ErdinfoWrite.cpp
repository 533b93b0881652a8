// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Command.h"
#include "tool/commands/ErdinfoRecord.h"
#include "tool/files/Input.h"
#include "tool/files/OutputFile.h"

#include "erdinfo/ErdinfoLayout.h"
#include "erdinfo/VanteroErdinfoFile.h"

#include <QtCore/QFileInfo>

#include <array>
#include <limits>
#include <memory>
#include <optional>

#include <sys/mman.h>
#include <unistd.h>

namespace vn::tool {

namespace {

using ErdinfoLayout::kRecordSize;

/** A file that has a path, but no place on any disk. */
class MemoryFile
{
public:
    MemoryFile()
        : m_descriptor(::memfd_create("record", MFD_CLOEXEC))
    {
    }
    MemoryFile(const MemoryFile &) = delete; // closed once
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor); }

private:
    int m_descriptor;
};

class ErdinfoWrite : public Command
{
public:
    void declare(Arguments &arguments) override
    {
        using Int = std::numeric_limits<qint32>;
        constexpr qint64 kLargestUnsigned = std::numeric_limits<quint32>::max();
        constexpr qint64 kLargestTime = std::numeric_limits<qint64>::max();
        arguments.describe(
            "Writes the record to the beginning of FILE and reads it back. Values that are not "
            "given are 0 or empty. Bytes behind the record of an existing file are kept; after a "
            "failure the file is what it was.");
        arguments.describe(
            "The format counts a text in characters, but stores as many bytes of it as it has "
            "characters, four a character: only its first quarter is kept. A warning tells.");
        arguments.file("FILE", "erdinfo file; it is made when it is missing", m_file);
        arguments.option("--id1", "N", "first number", m_id1, Int::min(), Int::max());
        arguments.option("--id2", "N", "second number", m_id2, Int::min(), Int::max());
        arguments.option("--number1", "N", "first unsigned number", m_number1, 0, kLargestUnsigned);
        arguments.option("--number2", "N", "second unsigned number", m_number2, 0,
                         kLargestUnsigned);
        arguments.option("--time1", "MICROSECONDS", "first time; whole milliseconds are kept",
                         m_time1, 0, kLargestTime);
        arguments.option("--time2", "MICROSECONDS", "second time", m_time2, 0, kLargestTime);
        arguments.option("--text1", "TEXT", "first text, for 128 bytes", m_texts[0]);
        arguments.option("--text2", "TEXT", "second text, for 16 bytes", m_texts[1]);
        arguments.option("--text3", "TEXT", "third text, for 32 bytes", m_texts[2]);
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
        const QByteArray record = makeRecord();
        const QByteArray rest = isRegularFile() ? readInput(m_file).mid(kRecordSize) : QByteArray();
        writeFileAtomically(m_file, record + rest);
        if (isRegularFile() && readInput(m_file) != record + rest)
            throw failure(QStringLiteral("does not hold what was written to it"));

        const QStringList warnings = textWarnings(ErdinfoRecord::read(record));
        if (out.json())
            out.setResult(Json::object({{"file", m_file},
                                        {"bytesKept", rest.size()},
                                        {"warnings", Json::array(warnings)}}));
        else
            for (const QString &warning : warnings)
                out.warn(m_file, warning);
        return ExitCode::Done;
    }

private:
    ToolError failure(const QString &message) const
    {
        return ToolError(ExitCode::OutputFailed, message).at(m_file);
    }

    bool isRegularFile() const { return QFileInfo(m_file).isFile(); }

    /** The record as the library writes it: to a file in memory, since it writes in place and does
     * not report a failed write. */
    QByteArray makeRecord() const
    {
        const MemoryFile memory;
        VanteroErdinfoFile file(memory.path().toStdWString());
        file.setData(static_cast<int>(m_id1.value_or(0)), static_cast<int>(m_id2.value_or(0)),
                     static_cast<unsigned>(m_number1.value_or(0)),
                     static_cast<unsigned>(m_number2.value_or(0)),
                     static_cast<quint64>(m_time1.value_or(0)),
                     static_cast<quint64>(m_time2.value_or(0)), text(0).toStdWString(),
                     text(1).toStdWString(), text(2).toStdWString());
        QByteArray bytes = file.save() ? readInput(memory.path()) : QByteArray();
        if (bytes.size() != kRecordSize || !ErdinfoRecord::read(bytes).faults.isEmpty())
            throw failure(QStringLiteral("the record could not be made"));
        return bytes;
    }

    QString text(std::size_t i) const { return m_texts[i].value_or(QString()); }

    QStringList textWarnings(const ErdinfoRecord &record) const
    {
        QStringList warnings;
        for (std::size_t i = 0; i < m_texts.size(); ++i)
            if (record.texts[i] != text(i))
                warnings += QStringLiteral("the format keeps only \"%1\" of text %2")
                                .arg(record.texts[i])
                                .arg(i + 1);
        return warnings;
    }

    QString m_file;
    std::optional<qint64> m_id1;
    std::optional<qint64> m_id2;
    std::optional<qint64> m_number1;
    std::optional<qint64> m_number2;
    std::optional<qint64> m_time1;
    std::optional<qint64> m_time2;
    std::array<std::optional<QString>, 3> m_texts;
};

} // namespace

std::unique_ptr<Command> makeErdinfoWrite()
{
    return std::make_unique<ErdinfoWrite>();
}

} // namespace vn::tool
