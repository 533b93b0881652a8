// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateReader_p.h"

#include "alarm/AlarmUpdateScan_p.h"

#define YYSTYPE vn::internal::AlarmToken
#define YYLTYPE vn::PULocation
#include "alarmupdate_lex.h"
#include "alarmupdate_yacc.h"

namespace vn::internal {

namespace {

using UpdateInput =
    ScannerInput<alarmupdate_scan_buffer, alarmupdate_create_buffer, alarmupdate_switch_to_buffer,
                 alarmupdate_delete_buffer, alarmupdate_restore_text>;

void *newScanner(AlarmUpdateParser *parser)
{
    yyscan_t scanner = nullptr;
    if (alarmupdatelex_init_extra(parser, &scanner) != 0)
        qBadAlloc();
    return scanner;
}

} // namespace

void AlarmUpdateReader::ScannerDeleter::operator()(void *scanner) const
{
    alarmupdatelex_destroy(scanner);
}

AlarmUpdateReader::AlarmUpdateReader(AlarmUpdateParser *parser)
    : m_scanner(newScanner(parser))
    , m_builder(m_scanner.get(), true)
{
    alarmupdateset_lval(&m_builder.token(), m_scanner.get());
    m_builder.token().throwsFatalErrors = !parser;
}

AlarmUpdateReader::~AlarmUpdateReader()
{
    UpdateInput::release(m_standardInput, m_scanner.get());
}

void AlarmUpdateReader::read(const char *data, unsigned int length)
{
    reset();
    if (!readPlain(data, length))
        readByGrammar(data, length);
}

bool AlarmUpdateReader::readPlain(const char *data, unsigned int length)
{
    if (!UpdateInput::isAccepted(data, length) || length > kMaxBufferSize)
        return false;
    m_builder.tape().begin(data);
    return scanPlainUpdate(data, static_cast<int>(length - 2), m_builder.tape());
}

void AlarmUpdateReader::readByGrammar(const char *data, unsigned int length)
{
    alarmupdate_set_initial(m_scanner.get());
    runGrammar<UpdateInput>(m_builder, data, length, m_standardInput, alarmupdate_parse);
}

AlarmUpdateParser *ownerOf(void *scanner)
{
    return alarmupdateget_extra(scanner);
}

} // namespace vn::internal

int alarmupdate_lex(int *count, vn::internal::AlarmUpdateBuilder *builder)
{
    *count = 0;
    return builder->keep(
        alarmupdatelex(&builder->token(), &builder->location(), builder->scanner()));
}

void alarmupdate_error(vn::internal::AlarmUpdateBuilder *builder, const char *message)
{
    builder->setErrorMessage(message);
}
