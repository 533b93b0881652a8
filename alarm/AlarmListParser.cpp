// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListParser.h"

#include "alarm/AlarmListActions_p.h"
#include "alarm/ParserInput_p.h"
#include "alarm/ScannerInput_p.h"
#include "alarm/SharedStrings_p.h"
#include "alarm/TokenLocation_p.h"
#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"

#include <QtCore/QByteArray>
#include <QtCore/QScopeGuard>

#include <utility>

#define YYSTYPE QVariant
#define YYLTYPE vn::PLLocation
#include "alarmlist_lex.h"
#include "alarmlist_yacc.h"

namespace vn {

namespace {

using ScannerInput = internal::ScannerInput<alarmlist_scan_buffer, alarmlist_create_buffer,
                                            alarmlist_switch_to_buffer, alarmlist_delete_buffer,
                                            alarmlist_restore_text>;

} // namespace

void AlarmListParser::ScannerDeleter::operator()(void *scanner) const
{
    alarmlistlex_destroy(scanner);
}

AlarmListParser::AlarmListParser(QObject *parent)
    : QObject(parent)
    , m_standardInput(std::make_unique<internal::StandardInputRest>())
    , m_strings(std::make_unique<internal::SharedStrings>())
{
    yyscan_t scanner = nullptr;
    if (alarmlistlex_init_extra(this, &scanner) != 0)
        qBadAlloc();
    m_scanner.reset(scanner);
}

AlarmListParser::~AlarmListParser()
{
    ScannerInput::release(*m_standardInput, m_scanner.get());
}

QVariant AlarmListParser::parse(const char *data, unsigned int length)
{
    return onlyThrows<ParseException>([&] {
        AlarmListActions::reset(this);
        if (length > internal::kMaxBufferSize)
            throw ParseException(internal::textTooLong(), 0, 0, 0, 0);

        const int error = [&] {
            const ScannerInput input(data, length, m_scanner.get(), *m_standardInput, m_space);
            const auto drop = qScopeGuard([&] { AlarmListActions::dropValues(this); });
            return alarmlist_parse(this);
        }();
        QVariant result = std::exchange(m_result, QVariant());
        if (error != 0)
            throw ParseException(m_errorMessage, 0, m_location.start, 0, m_location.end);
        return result;
    });
}

QVariant AlarmListParser::parse(QByteArray *data)
{
    return onlyThrows<ParseException>([&] {
        internal::appendEndMark(data);
        return parse(data->constData(), static_cast<unsigned int>(data->size()));
    });
}

QVariant AlarmListParser::parse(const QString &text)
{
    return onlyThrows<ParseException>([&] {
        QByteArray bytes = text.toLatin1();
        return parse(&bytes);
    });
}

QVariant AlarmListParser::parse(const QTextStream *stream)
{
    return onlyThrows<ParseException>([&] { return parse(internal::readAll(stream)); });
}

QVariant AlarmListParser::parse(QIODevice *device)
{
    return onlyThrows<ParseException>([&] {
        AlarmListActions::reset(this);
        const QByteArray content = internal::readAll(device);
        return parse(content.constData(), static_cast<unsigned int>(content.size()));
    });
}

QString AlarmListParser::errorMessage() const
{
    return m_errorMessage;
}

} // namespace vn
