// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SCANNERINPUT_P_H
#define VN_ALARM_SCANNERINPUT_P_H

#include "alarm/ScannerRuntime_p.h"
#include "alarm/TokenLocation_p.h"
#include "base/Exceptions.h"

#include <QtCore/qglobal.h>

#include <cstdio>

namespace vn::internal {

/** What a scanner has read of standard input and not used yet; it waits for the next refused
 * buffer, whatever is parsed in between. */
struct StandardInputRest
{
    void *buffer = nullptr; // of the scanner; none before the first refused buffer
    int space = 0;          // bytes of white space behind the last token, which are no token yet
};

/**
 * What a scanner reads during one parse; for both scanners, which are named by their functions. It
 * is handed a buffer; if it refuses that, it goes on in standard input.
 */
template <auto scanBuffer, auto createBuffer, auto switchToBuffer, auto deleteBuffer,
          auto restoreText>
class ScannerInput
{
    Q_DISABLE_COPY(ScannerInput)

    using Buffer = decltype(scanBuffer(nullptr, 0, nullptr));

public:
    /** Makes the @p length bytes at @p data the input of @p scanner, which writes to them until
     * this object goes; or standard input from its @p rest on, with @p space behind a token. */
    ScannerInput(const char *data, unsigned int length, void *scanner, StandardInputRest &rest,
                 int &space)
        : m_scanner(scanner)
        , m_rest(rest)
        , m_space(space)
        , m_accepted(scanBuffer(const_cast<char *>(data), length, scanner))
    {
        if (m_accepted)
            return;
        std::clearerr(stdin); // a terminal that was at its end may have more by now
        if (!m_rest.buffer)
            m_rest.buffer = createBuffer(stdin, kReadSize, scanner);
        switchToBuffer(static_cast<Buffer>(m_rest.buffer), scanner);
        m_space = m_rest.space;
    }

    ~ScannerInput()
    {
        restoreText(m_scanner);
        if (m_accepted)
            deleteBuffer(m_accepted, m_scanner);
        else
            m_rest.space = m_space;
    }

    /** Whether the scanner takes the @p length bytes at @p data. */
    static bool isAccepted(const char *data, unsigned int length)
    {
        return length >= 2 && data[length - 2] == 0 && data[length - 1] == 0;
    }

    bool isStandardInput() const { return !m_accepted; }

    /** Gives back the memory of @p rest, before @p scanner goes. */
    static void release(const StandardInputRest &rest, void *scanner)
    {
        deleteBuffer(static_cast<Buffer>(rest.buffer), scanner);
    }

private:
    static constexpr int kReadSize = 16384;

    void *m_scanner;
    StandardInputRest &m_rest;
    int &m_space;
    Buffer m_accepted; // none while standard input is read
};

/** The result of a grammar whose scanner could not go on; 1 and 2 are the grammar's own. */
constexpr int kScannerFailed = 3;

/**
 * Lets the grammar @p parse read the @p length bytes at @p data, or standard input, into the tape
 * of
 * @p builder.
 * @throws ParseException when the text is refused, or 2 GiB long or longer
 */
template <typename Input, typename Builder>
void runGrammar(Builder &builder, const char *data, unsigned int length, StandardInputRest &rest,
                int (*parse)(Builder *))
{
    if (length > kMaxBufferSize)
        throw ParseException(textTooLong(), 0, 0, 0, 0);
    const int error = [&] {
        builder.begin();
        try { // making the input may run out of memory in the scanner, too
            const Input input(data, length, builder.scanner(), rest, builder.token().space);
            builder.tape().begin(input.isStandardInput() ? nullptr : data);
            return parse(&builder);
        } catch (const ScannerError &e) {
            builder.setErrorMessage(e.message.c_str());
            return kScannerFailed;
        }
    }();
    if (error != 0)
        throw ParseException(builder.errorMessage(), 0, builder.location().start, 0,
                             builder.location().end);
}

} // namespace vn::internal

#endif // VN_ALARM_SCANNERINPUT_P_H
