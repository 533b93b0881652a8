// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Runs a fuzz target over the files and folders named as arguments, without a fuzzer. So every
// build keeps the targets alive, and every input that was ever worth keeping is a test.

#include <QtCore/QByteArray>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

QStringList filesOf(const QString &path)
{
    if (!QFileInfo(path).isDir())
        return {path};
    QStringList files;
    QDirIterator it(path, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files += it.next();
    files.sort();
    return files;
}

void run(const QByteArray &input)
{
    // A copy without a zero byte behind it, so that reading too far shows under AddressSanitizer.
    const auto size = static_cast<std::size_t>(input.size());
    auto *copy = static_cast<std::uint8_t *>(std::malloc(size ? size : 1));
    std::copy(input.begin(), input.end(), copy);
    LLVMFuzzerTestOneInput(copy, size);
    std::free(copy);
}

} // namespace

int main(int argc, char **argv)
{
    int count = 0;
    run(QByteArray());
    for (int i = 1; i < argc; ++i) {
        const QStringList files = filesOf(QString::fromLocal8Bit(argv[i]));
        for (const QString &name : files) {
            QFile file(name);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(name), qPrintable(file.errorString()));
                return EXIT_FAILURE;
            }
            std::fprintf(stderr, "%s\n",
                         qPrintable(name)); // the last one named is the one that fails
            run(file.readAll());
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
