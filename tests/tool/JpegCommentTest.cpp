// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The comment of an image, against the comments that libjpeg itself keeps: the same bytes, the same
// refusals in the same words.

#include "support/Files.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include "tool/cli/ToolError.h"
#include "tool/files/JpegComment.h"

#include <gtest/gtest.h>

#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>

namespace {

using namespace vn::tool;

/** What becomes of an image: its comment, or why it is refused. */
struct Reading
{
    QByteArray comment;
    QString refusal; // null where it is read
};

bool operator==(const Reading &a, const Reading &b)
{
    return a.comment == b.comment && a.comment.isNull() == b.comment.isNull() &&
           a.refusal == b.refusal;
}

std::ostream &operator<<(std::ostream &out, const Reading &reading)
{
    return out << (reading.refusal.isNull() ? reading.comment.toHex().toStdString()
                                            : reading.refusal.toStdString());
}

Reading read(const QByteArray &image)
{
    try {
        return {jpegComment(image, "x"_q), {}};
    } catch (const ToolError &e) {
        EXPECT_EQ(e.code(), ExitCode::BadInput);
        EXPECT_EQ(e.file(), "x"_q);
        return {{}, e.message()};
    }
}

// ---- The reference -----------------------------------------------------------------------------

struct Errors
{
    jpeg_error_mgr manager;
    std::jmp_buf wayBack;
    char message[JMSG_LENGTH_MAX];
};

bool readKept(jpeg_decompress_struct *info, Errors *errors, const QByteArray &image)
{
    info->err = jpeg_std_error(&errors->manager);
    errors->manager.error_exit = [](j_common_ptr failed) {
        auto *own = reinterpret_cast<Errors *>(failed->err);
        own->manager.format_message(failed, own->message);
        std::longjmp(own->wayBack, 1); // NOLINT(cert-err52-cpp)
    };
    errors->manager.emit_message = [](j_common_ptr, int) {};
    if (setjmp(errors->wayBack) != 0) // NOLINT(cert-err52-cpp)
        return false;
    jpeg_create_decompress(info);
    jpeg_mem_src(info, reinterpret_cast<const unsigned char *>(image.constData()),
                 static_cast<unsigned long>(image.size()));
    jpeg_save_markers(info, JPEG_COM, 0xFFFF);
    jpeg_read_header(info, TRUE);
    return true;
}

/** By libjpeg's own list of comments, which takes quadratic time. */
Reading expected(const QByteArray &image)
{
    jpeg_decompress_struct info = {};
    Errors errors = {};
    Reading result;
    if (readKept(&info, &errors, image)) {
        for (const jpeg_marker_struct *kept = info.marker_list; kept; kept = kept->next)
            result.comment.append(reinterpret_cast<const char *>(kept->data),
                                  static_cast<int>(kept->data_length));
    } else {
        result.refusal = "damaged JPEG image: "_q + QString::fromLatin1(errors.message);
    }
    jpeg_destroy_decompress(&info);
    return result;
}

// ---- Images ------------------------------------------------------------------------------------

QByteArray segment(char marker, const QByteArray &content)
{
    const int length = content.size() + 2;
    return QByteArray("\xFF") + marker + static_cast<char>(length >> 8) +
           static_cast<char>(length & 0xFF) + content;
}

QByteArray comment(const QByteArray &content)
{
    return segment('\xFE', content);
}

const QByteArray kStart = "\xFF\xD8";

/** A frame of one pixel and the head of its scan: all that a header needs. */
const QByteArray kImage = QByteArray::fromHex("ffc0000b080001000101011100"
                                              "ffda0008010100003f00");

QByteArray bytes(Random &random, unsigned size)
{
    QByteArray result;
    for (unsigned i = 0; i < size; ++i)
        result += static_cast<char>(random.below(256));
    return result;
}

QByteArray randomSegment(Random &random)
{
    static const char markers[] =
        "\xE0\xE1\xEE\xEF\xDB\xC4\xDD\xCC\xC0\xC2\xC9\xDA\xD0\xD8\xD9\x01";
    switch (random.below(12)) {
    case 0:
        return segment(markers[random.below(sizeof markers - 1)], bytes(random, random.below(20)));
    case 1:
        return QByteArray("\xFF\xFE\0", 3) + static_cast<char>(random.below(3)); // no length
    case 2:
        return QByteArray(static_cast<int>(random.below(4)), '\xFF'); // filling
    case 3:
        return bytes(random, random.below(4)); // lost between segments
    case 4:
        return segment('\xE0', "JFIF" + QByteArray("\0\1\1\0\0\1\0\1\0\0", 10));
    default:
        return comment(bytes(random, random.below(random.below(50) == 0 ? 65534 : 12)));
    }
}

QByteArray randomImage(Random &random)
{
    QByteArray image = kStart;
    for (unsigned i = random.below(8); i > 0; --i)
        image += randomSegment(random);
    image += kImage;
    return image;
}

QByteArray damaged(QByteArray image, Random &random)
{
    for (unsigned i = 1 + random.below(3); i > 0 && !image.isEmpty(); --i) {
        const int at = static_cast<int>(random.below(static_cast<unsigned>(image.size())));
        switch (random.below(4)) {
        case 0:
            image.truncate(at);
            break;
        case 1:
            image[at] = static_cast<char>(random.below(256));
            break;
        case 2:
            image.remove(at, 1);
            break;
        default:
            image.insert(at, random.below(2) ? '\xFF' : '\xFE');
        }
    }
    return image;
}

} // namespace

TEST(JpegComment, isWhatTheSegmentsHold)
{
    const struct
    {
        const char *name;
        QByteArray image;
        Reading expected;
    } rows[] = {
        {"none", kStart + kImage, {}},
        {"one", kStart + comment("a") + kImage, {"a", {}}},
        {"joined", kStart + comment("a") + comment("") + comment("bc") + kImage, {"abc", {}}},
        {"emptyOnesAreNone", kStart + comment("") + comment("") + kImage, {}},
        {"behindOthers", kStart + segment('\xE1', "x") + comment("a") + kImage, {"a", {}}},
        {"betweenFrameAndScan",
         kStart + kImage.left(13) + comment("a") + kImage.mid(13),
         {"a", {}}},
        {"notBehindTheScan", kStart + kImage + comment("a"), {}},
        {"lengthsBelowTwoHoldNothing",
         kStart + QByteArray("\xFF\xFE\0\0\xFF\xFE\0\1", 8) + comment("a") + kImage,
         {"a", {}}},
        {"marksInAComment",
         kStart + comment("\xFF\xD9\xFF\xDA") + kImage,
         {"\xFF\xD9\xFF\xDA", {}}},
        {"largest",
         kStart + comment(QByteArray(65533, 'x')) + kImage,
         {QByteArray(65533, 'x'), {}}},
        {"cutInAComment",
         kStart + comment("abc").left(6),
         {{}, "damaged JPEG image: JPEG datastream contains no image"_q}},
        {"cutInALength",
         kStart + "\xFF\xFE\x01",
         {{}, "damaged JPEG image: JPEG datastream contains no image"_q}},
        {"noImage", "GIF", {{}, "damaged JPEG image: Not a JPEG file: starts with 0x47 0x49"_q}},
        {"empty", "", {{}, "damaged JPEG image: Empty input file"_q}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(read(row.image), row.expected);
        EXPECT_EQ(expected(row.image), row.expected);
    }
}

TEST(JpegComment, isTheSameAsLibjpegKeeps)
{
    Random random(20260101);
    int refused = 0;
    constexpr int kRuns = 20000;
    for (int i = 0; i < kRuns; ++i) {
        const QByteArray whole = randomImage(random);
        const QByteArray image = random.below(2) ? damaged(whole, random) : whole;
        const Reading result = read(image);
        ASSERT_EQ(result, expected(image)) << image.toHex().constData();
        refused += result.refusal.isNull() ? 0 : 1;
    }
    EXPECT_GT(refused, kRuns / 10);
    EXPECT_LT(refused, kRuns * 9 / 10);
}

TEST(JpegComment, isTheSameForEveryCutOfKeptImages)
{
    const QDir corpus(QStringLiteral(VANTERO_JPEG_CORPUS));
    QByteArrayList images;
    for (const QString &name : corpus.entryList(QDir::Files))
        images += readFile(corpus.filePath(name));
    ASSERT_FALSE(images.isEmpty());
    images += readFile(QStringLiteral(VANTERO_EXAMPLE_DATA "/gate.jpg"));
    for (const QByteArray &image : qAsConst(images))
        for (int size = 0; size <= image.size(); ++size)
            ASSERT_EQ(read(image.left(size)), expected(image.left(size))) << size;
}

// The time is measured by scripts/benchmark growth; a walk over all that stand before, for each of
// these, would not end within the time that a test has.
TEST(JpegComment, mayBeInAMillionSegments)
{
    constexpr int kSegments = 1000000;
    QByteArray image = kStart;
    QByteArray joined;
    image.reserve(5 * kSegments + 64);
    for (int i = 0; i < kSegments; ++i) {
        const char letter = static_cast<char>('a' + i % 26);
        image += comment(QByteArray(1, letter));
        joined += letter;
    }
    image += kImage;
    EXPECT_TRUE(read(image) == (Reading{joined, {}}));
}
