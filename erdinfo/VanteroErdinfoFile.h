// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ERDINFO_VANTEROERDINFOFILE_H
#define VN_ERDINFO_VANTEROERDINFOFILE_H

#include "base/Export.h"

#include <string>

namespace vn {

/**
 * The content of an erdinfo file, which describes one event recording, to be written to its path.
 * What the file holds where: erdinfo/ErdinfoFields.h. What the numbers and texts mean is up to the
 * application.
 * @code
 * VanteroErdinfoFile info(L"/recordings/17.erdinfo");
 * info.setData(7, -1, 25, 25, start, end, // microseconds
 *              L"entrance", L"K40D", L"motion");
 * if (!info.save())
 *     qWarning("the record cannot be written");
 * @endcode
 * Errors: save() alone reports one, and only that of opening; ErdinfoRecord tells all.
 *
 * Threads: reentrant. Two objects that write one path at the same time mix their bytes.
 * @since 1.0.0
 */
class VN_EXPORT VanteroErdinfoFile
{
public:
    /** Empty texts and zero numbers, to be written to @p path. */
    explicit VanteroErdinfoFile(const std::wstring &path);
    /** A copy with the same path. */
    VanteroErdinfoFile(const VanteroErdinfoFile &other);
    /** Takes path and values over. */
    VanteroErdinfoFile &operator=(const VanteroErdinfoFile &other);
    ~VanteroErdinfoFile();

    /**
     * Replaces all values.
     * @param id1 first number
     * @param id2 second number
     * @param number1 first unsigned number
     * @param number2 second unsigned number
     * @param time1 in microseconds; the file keeps whole milliseconds and 32 bits of the seconds
     * @param time2 the same
     * @param text1 for a field of 128 bytes
     * @param text2 for a field of 16 bytes
     * @param text3 for a field of 32 bytes
     */
    void setData(int id1, int id2, unsigned int number1, unsigned int number2,
                 unsigned long long time1, unsigned long long time2, const std::wstring &text1,
                 const std::wstring &text2, const std::wstring &text3);

    /**
     * Writes the 488 bytes of the record to the beginning of the file, which is created when it is
     * missing. Kept on purpose: an existing file is not truncated, bytes behind the record stay.
     *
     * Returns false when the path is empty or the file cannot be opened for reading and writing.
     * Kept on purpose: a write that fails is not reported; the result is still true.
     */
    [[nodiscard]] bool save() const;

private:
    std::wstring m_path;
    std::wstring m_text1;
    std::wstring m_text2;
    std::wstring m_text3;
    int m_id1 = 0;
    int m_id2 = 0;
    unsigned int m_number1 = 0;
    unsigned int m_number2 = 0;
    unsigned long long m_time1 = 0;
    unsigned long long m_time2 = 0;
};

} // namespace vn

#endif // VN_ERDINFO_VANTEROERDINFOFILE_H
