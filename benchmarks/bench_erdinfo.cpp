// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Writing a record of 488 bytes over an existing file. */

#include "Support.h"

#include "erdinfo/VanteroErdinfoFile.h"

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <array>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kSize = 488;

/** A file of 1000 bytes to write over. */
class Target
{
public:
    Target()
        : m_path(m_dir.filePath(QStringLiteral("event.erd")))
    {
        QFile file(m_path);
        require(file.open(QIODevice::WriteOnly) && file.write(QByteArray(1000, 'x')) == 1000,
                "target");
    }

    const QString &path() const { return m_path; }

    /** Requires that the record was written and the rest was kept. */
    void check(const char *what) const
    {
        QFile file(m_path);
        require(file.open(QIODevice::ReadOnly) && file.size() == 1000, what);
        require(file.read(4) == "EvtD", what);
    }

private:
    QTemporaryDir m_dir;
    QString m_path;
};

/** The bytes that the others write. */
std::array<char, kSize> record()
{
    return {'E', 'v', 't', 'D'};
}

void writeOurs(benchmark::State &state)
{
    const Target target;
    vn::VanteroErdinfoFile file(target.path().toStdWString());
    file.setData(1, 2, 3, 4, 5000000, 6000000, L"front", L"cam", L"motion");
    bool saved = true;
    for (auto _ : state)
        saved = file.save() && saved;
    require(saved, "write/ours");
    target.check("write/ours");
}

void writeQFile(benchmark::State &state)
{
    const Target target;
    const auto bytes = record();
    for (auto _ : state) {
        QFile file(target.path());
        require(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered), "write/QFile");
        require(file.write(bytes.data(), kSize) == kSize, "write/QFile");
        file.close();
    }
    target.check("write/QFile");
}

void writeQDataStream(benchmark::State &state)
{
    const Target target;
    const auto bytes = record();
    for (auto _ : state) {
        QFile file(target.path());
        require(file.open(QIODevice::ReadWrite), "write/QDataStream");
        QDataStream stream(&file);
        stream.setByteOrder(QDataStream::LittleEndian);
        for (int i = 0; i < kSize; i += 4) {
            quint32 word = 0;
            std::memcpy(&word, bytes.data() + i, sizeof word);
            stream << word;
        }
        file.close();
    }
    target.check("write/QDataStream");
}

/** The system's own open, write and close. */
void writeLimit(benchmark::State &state)
{
    const Target target;
    const auto bytes = record();
    const QByteArray path = QFile::encodeName(target.path());
    for (auto _ : state) {
        const int file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        require(::write(file, bytes.data(), kSize) == kSize, "write/limit");
        ::close(file);
    }
    target.check("write/limit");
}

} // namespace

BENCHMARK(writeOurs)->Name("write/ours")->Arg(kSize);
BENCHMARK(writeQFile)->Name("write/QFile unbuffered")->Arg(kSize);
BENCHMARK(writeQDataStream)->Name("write/QDataStream")->Arg(kSize);
BENCHMARK(writeLimit)->Name("write/limit")->Arg(kSize);
