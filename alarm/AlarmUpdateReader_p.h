// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEREADER_P_H
#define VN_ALARM_ALARMUPDATEREADER_P_H

#include "alarm/AlarmBuilder_p.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScannerInput_p.h"

#include <memory>
#include <utility>

namespace vn::internal {

using AlarmUpdateBuilder = AlarmBuilder<PULocation>;

/** Reads alarm updates, one after another, into a tape, by two paths as AlarmListReader does. It
 * owns one scanner for its whole life. */
class AlarmUpdateReader
{
    Q_DISABLE_COPY(AlarmUpdateReader)

public:
    /** @p parser is what the scanner calls its owner. Without one, fatal errors are thrown. */
    explicit AlarmUpdateReader(AlarmUpdateParser *parser);
    ~AlarmUpdateReader();

    /** A parse begins: sets location and message back. */
    void reset() { m_builder.reset(); }

    /**
     * Reads the first @p length - 2 bytes at @p data, or standard input where the last two are not
     * zero.
     * @throws ParseException when the text is no alarm update, or 2 GiB long or longer
     */
    void read(const char *data, unsigned int length);
    /** The plain path of read() alone: false, and nothing has happened, where it gives no result.
     */
    bool readPlain(const char *data, unsigned int length);
    /** The other path of read() alone. */
    void readByGrammar(const char *data, unsigned int length);

    /** The values of the last text, until the next one or clear(): one object, or nothing for an
     * empty image. */
    const AlarmTape &tape() { return m_builder.tape(); }
    void clear() { m_builder.tape().clear(); }

    /** The same for who may read another text while using it; its memory should come back. */
    AlarmTape takeTape() { return std::move(m_builder.tape()); }
    void giveBack(AlarmTape &&tape)
    {
        tape.clear();
        m_builder.tape() = std::move(tape);
    }

    const QString &errorMessage() const { return m_builder.errorMessage(); }

    AlarmUpdateBuilder &builder() { return m_builder; }

private:
    struct ScannerDeleter
    {
        void operator()(void *scanner) const;
    };

    std::unique_ptr<void, ScannerDeleter> m_scanner;
    AlarmUpdateBuilder m_builder;
    StandardInputRest m_standardInput;
};

/** The parser that owns @p scanner. */
AlarmUpdateParser *ownerOf(void *scanner);

} // namespace vn::internal

/** The next token, its value for the builder's tape; the grammar counts by itself. */
int alarmupdate_lex(int *count, vn::internal::AlarmUpdateBuilder *builder);

/** Stores @p message as the error message. */
void alarmupdate_error(vn::internal::AlarmUpdateBuilder *builder, const char *message);

/** Puts back the byte that the scanner has replaced by the zero byte behind its last token. */
void alarmupdate_restore_text(void *scanner);

/** Takes the scanner out of the string in which an exception has left it. */
void alarmupdate_set_initial(void *scanner);

#endif // VN_ALARM_ALARMUPDATEREADER_P_H
