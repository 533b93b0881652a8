// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ERDINFO_ERDINFOLAYOUT_H
#define VN_ERDINFO_ERDINFOLAYOUT_H

/**
 * @file
 * Sizes, offsets and constants of an erdinfo record, which describes one event recording, by name.
 * The table of all its fields: erdinfo/ErdinfoFields.h.
 *
 * A text of L characters in a field of W bytes is stored as UTF-32, but by a count of bytes: the
 * first min(L, W) bytes of its code units, the rest of the field 0. So a field holds no more than
 * the first quarter of a text, rounded up, whose last character may be cut, and a text that fills
 * its field has no terminating 0.
 */

#include <QtCore/qglobal.h>

/** Sizes and offsets, in bytes, and constants of the record. @since 1.0.0 */
namespace vn::ErdinfoLayout {

// ---- Sizes, in bytes -------------------------------------------------------------------------

constexpr int kHeaderSize = 332;                     ///< the header record
constexpr int kDataSize = 156;                       ///< the data record
constexpr int kRecordSize = kHeaderSize + kDataSize; ///< both records, the whole of what is written
constexpr int kBlockSize = 64;                       ///< one block
constexpr int kMagicSize = 4;                        ///< the magic
constexpr int kText1Size = 128;                      ///< the field of the first text
constexpr int kText2Size = 16;                       ///< the field of the second text
constexpr int kText3Size = 32;                       ///< the field of the third text

// ---- Header record, offsets from the start of the file ---------------------------------------

constexpr int kMagicOffset = 0;      ///< kMagic
constexpr int kFormatOffset = 4;     ///< kFormat
constexpr int kHeaderSizeOffset = 8; ///< kHeaderSize
constexpr int kDataSizeOffset = 12;  ///< kDataSize
constexpr int kFlagsOffset = 16;     ///< the flags, 0
constexpr int kText1Offset = 20;     ///< the first text
constexpr int kText2Offset = 276;    ///< the second text
constexpr int kText3Offset = 292;    ///< the third text

// ---- Data record, offsets from the start of the file -----------------------------------------

constexpr int kDataOffset = kHeaderSize;        ///< where the data record begins
constexpr int kId1Offset = kDataOffset + 0;     ///< the first number
constexpr int kId2Offset = kDataOffset + 4;     ///< the second number
constexpr int kBlock1Offset = kDataOffset + 12; ///< the first block
constexpr int kBlock2Offset = kDataOffset + 76; ///< the second block

// ---- Block, offsets from its start -----------------------------------------------------------

constexpr int kBlockFirstCodeOffset = 0;     ///< kBlockFirstCode
constexpr int kBlockSecondCodeOffset = 4;    ///< kBlockSecondCode
constexpr int kBlockNumberOffset = 8;        ///< the unsigned number
constexpr int kBlockSecondsOffset = 12;      ///< whole seconds
constexpr int kBlockMillisecondsOffset = 16; ///< milliseconds within the second
constexpr int kBlockIdOffset = 20;           ///< the number
constexpr int kBlockThirdCodeOffset = 24;    ///< kBlockThirdCode

// ---- Constant values -------------------------------------------------------------------------

constexpr char kMagic[kMagicSize] = {'E', 'v', 't', 'D'}; ///< "EvtD"
constexpr quint32 kFormat = 0x01080002;                   ///< the format code
constexpr quint32 kBlockFirstCode = 1;                    ///< the first code of a block
constexpr quint32 kBlockSecondCode = 2;                   ///< the second code of a block
constexpr quint16 kBlockThirdCode = 1;                    ///< the third code of a block, 16 bits

} // namespace vn::ErdinfoLayout

#endif // VN_ERDINFO_ERDINFOLAYOUT_H
