// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateParser.h"

#include "alarm/AlarmUpdateActions_p.h"
#include "alarm/ParserInput_p.h"
#include "alarm/ScannerInput_p.h"
#include "alarm/SharedStrings_p.h"
#include "alarm/TokenLocation_p.h"
#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QScopeGuard>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValueIterator>

#define YYSTYPE QScriptValue
#define YYLTYPE vn::PULocation
#include "alarmupdate_lex.h"
#include "alarmupdate_yacc.h"

namespace vn {

namespace {

using ScannerInput = internal::ScannerInput<alarmupdate_scan_buffer, alarmupdate_create_buffer,
                                            alarmupdate_switch_to_buffer, alarmupdate_delete_buffer,
                                            alarmupdate_restore_text>;

} // namespace

void AlarmUpdateParser::ScannerDeleter::operator()(void *scanner) const
{
    alarmupdatelex_destroy(scanner);
}

AlarmUpdateParser::AlarmUpdateParser(QScriptEngine *engine, QObject *parent)
    : QObject(parent)
    , m_engine(engine)
    , m_standardInput(std::make_unique<internal::StandardInputRest>())
    , m_strings(std::make_unique<internal::SharedStrings>())
{
    yyscan_t scanner = nullptr;
    if (alarmupdatelex_init_extra(this, &scanner) != 0)
        qBadAlloc();
    m_scanner.reset(scanner);
    alarmupdateset_lval(&m_result, scanner);
}

AlarmUpdateParser::~AlarmUpdateParser()
{
    ScannerInput::release(*m_standardInput, m_scanner.get());
}

QScriptValue AlarmUpdateParser::parse(const char *data, unsigned int length)
{
    return onlyThrows<ParseException>([&] {
        AlarmUpdateActions::reset(this);
        if (length > internal::kMaxBufferSize)
            throw ParseException(internal::textTooLong(), 0, 0, 0, 0);

        const int error = [&] {
            int space = 0; // this scanner matches white space by itself
            const ScannerInput input(data, length, m_scanner.get(), *m_standardInput, space);
            const auto drop = qScopeGuard([&] { AlarmUpdateActions::dropValues(this); });
            return alarmupdate_parse(this);
        }();
        if (error != 0)
            throw ParseException(m_errorMessage, 0, m_location.start, 0, m_location.end);
        return m_result;
    });
}

QScriptValue AlarmUpdateParser::parse(QByteArray *data)
{
    return onlyThrows<ParseException>([&] {
        internal::appendEndMark(data);
        return parse(data->constData(), static_cast<unsigned int>(data->size()));
    });
}

QScriptValue AlarmUpdateParser::parse(const QString &text)
{
    return onlyThrows<ParseException>([&] {
        QByteArray bytes = text.toLatin1();
        return parse(&bytes);
    });
}

QScriptValue AlarmUpdateParser::parse(const QTextStream *stream)
{
    return onlyThrows<ParseException>([&] { return parse(internal::readAll(stream)); });
}

QScriptValue AlarmUpdateParser::parse(QIODevice *device)
{
    return onlyThrows<ParseException>([&] {
        AlarmUpdateActions::reset(this);
        const QByteArray content = internal::readAll(device);
        return parse(content.constData(), static_cast<unsigned int>(content.size()));
    });
}

QString AlarmUpdateParser::errorMessage() const
{
    return m_errorMessage;
}

QScriptValue AlarmUpdateParser::keyValue(const QScriptValue &key, const QScriptValue &value)
{
    QScriptValue object = m_engine->newObject();
    object.setProperty(key.toString(), value);
    return object;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): published so
QScriptValue AlarmUpdateParser::addProperties(QScriptValue &target, const QScriptValue &source)
{
    QScriptValueIterator property(source);
    while (property.hasNext()) {
        property.next();
        target.setProperty(property.name(), property.value());
    }
    return target;
}

QScriptValue AlarmUpdateParser::appendValue(QScriptValue &list, const QScriptValue &value)
{
    if (!list.isArray()) {
        QScriptValue array = m_engine->newArray();
        array.setProperty(0, list);
        array.setProperty(1, value);
        return array;
    }
    list.setProperty(list.property(QStringLiteral("length")).toUInt32(), value);
    return list;
}

QScriptValue AlarmUpdateParser::date(RememberedDate &last, const char *text,
                                     void (*set)(QDateTime &, const QString &))
{
    // Updates repeat their dates. To find what a local time is costs more than all the rest.
    if (!last.text.isEmpty() && last.text == text)
        return m_engine->newDate(last.milliseconds);
    QDateTime dateTime;
    set(dateTime, QString::fromLatin1(text));
    const QScriptValue value = m_engine->newDate(dateTime);
    last = {text, value.toNumber()};
    return value;
}

QScriptValue AlarmUpdateParser::dateValue(void *scanner, const char *text)
{
    AlarmUpdateParser *const parser = alarmupdateget_extra(scanner);
    return parser->date(parser->m_date, text, [](QDateTime &dateTime, const QString &date) {
        dateTime = QDate::fromString(date, Qt::ISODate).startOfDay();
    });
}

QScriptValue AlarmUpdateParser::timeValue(void *scanner, const char *text)
{
    AlarmUpdateParser *const parser = alarmupdateget_extra(scanner);
    return parser->date(parser->m_time, text, [](QDateTime &dateTime, const QString &time) {
        dateTime.setTime(QTime::fromString(time, Qt::ISODate));
    });
}

} // namespace vn
