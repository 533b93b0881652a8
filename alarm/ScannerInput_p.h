// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SCANNERINPUT_P_H
#define VN_ALARM_SCANNERINPUT_P_H

#include <QtCore/qglobal.h>

#include <cstdio>

namespace vn::internal {

/**
 * What a scanner reads during one parse; for both scanners, which are named by their functions. It
 * is handed a buffer; if it refuses that, it reads standard input.
 */
template <auto scanBuffer, auto createBuffer, auto switchToBuffer, auto deleteBuffer,
          auto restoreText>
class ScannerInput
{
    Q_DISABLE_COPY(ScannerInput)

public:
    /** Makes the @p length bytes at @p data the input of @p scanner, which writes to them until
     * this object goes. */
    ScannerInput(const char *data, unsigned int length, void *scanner)
        : m_scanner(scanner)
        , m_buffer(scanBuffer(const_cast<char *>(data), length, scanner))
    {
        if (m_buffer)
            return;
        std::clearerr(stdin); // a terminal that was at its end may have more by now
        m_buffer = createBuffer(stdin, kReadSize, scanner);
        switchToBuffer(m_buffer, scanner);
    }

    ~ScannerInput()
    {
        restoreText(m_scanner);
        deleteBuffer(m_buffer, m_scanner);
    }

private:
    static constexpr int kReadSize = 16384;

    void *m_scanner;
    decltype(scanBuffer(nullptr, 0, nullptr)) m_buffer;
};

} // namespace vn::internal

#endif // VN_ALARM_SCANNERINPUT_P_H
