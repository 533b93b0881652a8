// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMLISTREADER_P_H
#define VN_ALARM_ALARMLISTREADER_P_H

#include "alarm/AlarmBuilder_p.h"
#include "alarm/AlarmListParser.h"
#include "alarm/ScannerInput_p.h"

#include <memory>

namespace vn::internal {

using AlarmListBuilder = AlarmBuilder<PLLocation>;

/**
 * Reads alarm lists, one after another, into a tape. It owns one scanner for its whole life.
 *
 * Texts as cameras write them are read by a scanner of our own (see AlarmListScan_p.h); where that
 * gives no result, the grammar reads the text as if nothing had been tried.
 */
class AlarmListReader
{
    Q_DISABLE_COPY(AlarmListReader)

public:
    /** @p parser is what the scanner calls its owner. Without one, fatal errors are thrown. */
    explicit AlarmListReader(AlarmListParser *parser);
    ~AlarmListReader();

    /** A parse begins: sets location and message back. */
    void reset() { m_builder.reset(); }

    /**
     * Reads the first @p length - 2 bytes at @p data, or standard input where the last two are not
     * zero.
     * @throws ParseException when the text is no alarm list, or 2 GiB long or longer
     */
    void read(const char *data, unsigned int length);
    /** The plain path of read() alone: false, and nothing has happened, where it gives no result.
     */
    bool readPlain(const char *data, unsigned int length);
    /** The other path of read() alone. */
    void readByGrammar(const char *data, unsigned int length);

    /** The values of the last text, until the next one or clear(). */
    const AlarmTape &tape() { return m_builder.tape(); }
    void clear() { m_builder.tape().clear(); }

    const QString &errorMessage() const { return m_builder.errorMessage(); }
    /** Whether the scanner stands neither in a string nor in a comment. */
    bool isClean() const;
    /** Takes the scanner out of the string or comment that it stands in. */
    void resetScanner();

    AlarmListBuilder &builder() { return m_builder; }

private:
    struct ScannerDeleter
    {
        void operator()(void *scanner) const;
    };

    std::unique_ptr<void, ScannerDeleter> m_scanner;
    AlarmListBuilder m_builder;
    StandardInputRest m_standardInput;
};

} // namespace vn::internal

/** The next token, its value for the builder's tape; the grammar counts by itself. */
int alarmlist_lex(int *count, vn::internal::AlarmListBuilder *builder);

/** Stores @p message as the error message. */
void alarmlist_error(vn::internal::AlarmListBuilder *builder, const char *message);

// ---- What else the scanner's file has -----------------------------------------------------------

/** Puts back the byte that the scanner has replaced by the zero byte behind its last token. */
void alarmlist_restore_text(void *scanner);

/** Whether @p scanner stands neither in a string nor in a comment. */
bool alarmlist_is_initial(void *scanner);

/** Puts @p scanner into its first state. */
void alarmlist_set_initial(void *scanner);

/** The string in which the scanners of all parsers collect quoted texts. */
QString &alarmlist_collected();

#endif // VN_ALARM_ALARMLISTREADER_P_H
