// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListReader_p.h"

#include "alarm/AlarmListScan_p.h"

#include <QtCore/QScopeGuard>

#define YYSTYPE vn::internal::AlarmToken
#define YYLTYPE vn::PLLocation
#include "alarmlist_lex.h"
#include "alarmlist_yacc.h"

namespace vn::internal {

namespace {

using ListInput =
    ScannerInput<alarmlist_scan_buffer, alarmlist_create_buffer, alarmlist_switch_to_buffer,
                 alarmlist_delete_buffer, alarmlist_restore_text>;

void *newScanner(AlarmListParser *parser)
{
    yyscan_t scanner = nullptr;
    if (alarmlistlex_init_extra(parser, &scanner) != 0)
        qBadAlloc();
    return scanner;
}

} // namespace

void AlarmListReader::ScannerDeleter::operator()(void *scanner) const
{
    alarmlistlex_destroy(scanner);
}

AlarmListReader::AlarmListReader(AlarmListParser *parser)
    : m_scanner(newScanner(parser))
    , m_builder(m_scanner.get(), false)
{
    alarmlistset_lval(&m_builder.token(), m_scanner.get());
    m_builder.token().throwsFatalErrors = !parser;
}

AlarmListReader::~AlarmListReader()
{
    ListInput::release(m_standardInput, m_scanner.get());
}

void AlarmListReader::read(const char *data, unsigned int length)
{
    reset();
    if (!readPlain(data, length))
        readByGrammar(data, length);
}

bool AlarmListReader::readPlain(const char *data, unsigned int length)
{
    if (!isClean() || !ListInput::isAccepted(data, length) || length > kMaxBufferSize)
        return false;
    AlarmTape &tape = m_builder.tape();
    tape.begin(data);
    const PlainList list = scanPlainList(data, static_cast<int>(length - 2), tape);
    if (!list.isRead)
        return false;
    if (list.lastQuoted >= 0)
        alarmlist_collected() = tape.text(tape[list.lastQuoted]);
    return true;
}

void AlarmListReader::readByGrammar(const char *data, unsigned int length)
{
    // Strings in one piece are not collected while they are scanned; the last one shows afterwards.
    const auto collect = qScopeGuard([this] {
        const int last = m_builder.lastWhole();
        if (last >= 0 && isClean())
            alarmlist_collected() = tape().text(tape()[last]);
    });
    runGrammar<ListInput>(m_builder, data, length, m_standardInput, alarmlist_parse);
}

void AlarmListReader::resetScanner()
{
    alarmlist_set_initial(m_scanner.get());
}

bool AlarmListReader::isClean() const
{
    return alarmlist_is_initial(m_scanner.get());
}

} // namespace vn::internal

int alarmlist_lex(int *count, vn::internal::AlarmListBuilder *builder)
{
    *count = 0;
    return builder->keep(alarmlistlex(&builder->token(), &builder->location(), builder->scanner()));
}

void alarmlist_error(vn::internal::AlarmListBuilder *builder, const char *message)
{
    builder->setErrorMessage(message);
}
