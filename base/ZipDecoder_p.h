// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ZIPDECODER_P_H
#define VN_BASE_ZIPDECODER_P_H

/** @file Decodes the entries of a zip archive whose directory has been read. */

#include "base/ZipDirectory_p.h"

#include <QtCore/QByteArray>

#include <cstddef>
#include <memory>
#include <vector>

namespace vn {

namespace internal {

/** Bytes in a buffer that keeps its memory from one entry to the next. */
class EntryContent
{
public:
    const char *data() const { return m_data.get(); }
    std::size_t size() const { return m_size; }

    /** Drops the bytes, and the memory where it is more than a usual entry needs. */
    void clear();

private:
    friend class ZipDecoder;

    /** Makes room for @p capacity bytes in all; keeps those that are there. */
    void reserve(std::size_t capacity);

    std::unique_ptr<char[]> m_data;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

/**
 * Decodes entries with libarchive, one after the other in one pass where they are asked for in the
 * order in which they lie in the file.
 *
 * libarchive finds entries by the archive's directory only, and reads all of it before the first
 * one. So a pass gives it the file with a directory of our own, which holds no more than the
 * entries ahead. To begin at any entry then costs the same.
 */
class ZipDecoder
{
public:
    /** @p file and @p directory must outlive the decoder. An empty @p password means none.
     * @throws ArchiveException with the reason when libarchive cannot be loaded */
    ZipDecoder(const ArchiveFile &file, const ZipDirectory &directory, const QByteArray &password);
    ~ZipDecoder();

    /**
     * Decodes the entry @p index of the directory into @p content: all of it, until libarchive
     * tells its end, and compares it with the directory.
     * @throws ArchiveException with the reason when the entry is damaged or the password wrong;
     * @p content is of no use then
     */
    void decode(int index, EntryContent *content);

    /** How many bytes the latest decode() has unpacked, of use or not. */
    std::int64_t unpackedSize() const { return m_unpackedSize; }

private:
    class Pass;

    void decodeOnce(int index, EntryContent *content);
    QByteArray withoutPadding(const ZipEntry &entry) const;
    Pass &passAt(int position);
    void checkLocalHeader(const ZipEntry &entry) const;

    const ArchiveFile &m_file;
    const ZipDirectory &m_directory;
    QByteArray m_password;
    std::vector<int> m_order;     // the entries by their place in the file
    std::vector<int> m_positions; // where in m_order each entry is
    std::unique_ptr<Pass> m_pass;
    int m_passSize = 0; // the entries in the latest pass
    int m_passEnd = 0;  // where it ended or will end
    std::int64_t m_unpackedSize = 0;
    bool m_looksForPadding = false; // once one entry has had some
};

} // namespace internal

} // namespace vn

#endif // VN_BASE_ZIPDECODER_P_H
