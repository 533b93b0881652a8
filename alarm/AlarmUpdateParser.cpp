// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateParser.h"

#include "alarm/AlarmUpdateObject_p.h"
#include "alarm/AlarmUpdateReader_p.h"
#include "alarm/ParserInput_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QScopeGuard>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValueIterator>

#include <utility>

namespace vn {

struct AlarmUpdateParser::Private
{
    Private(AlarmUpdateParser *parser, QScriptEngine *engineOfValues)
        : engine(engineOfValues)
        , reader(parser)
        , object(engineOfValues)
    {
    }

    QScriptEngine *const engine;
    internal::AlarmUpdateReader reader;
    internal::AlarmUpdateObject object;
};

AlarmUpdateParser::AlarmUpdateParser(QScriptEngine *engine, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, engine))
{
}

AlarmUpdateParser::~AlarmUpdateParser() = default;

QScriptValue AlarmUpdateParser::parse(const char *data, unsigned int length)
{
    return onlyThrows<ParseException>([&] {
        {
            auto clear = qScopeGuard([this] { d->reader.clear(); });
            d->reader.read(data, length);
            clear.dismiss();
        }
        // Setters of scripts may call this function again while the object is made.
        internal::AlarmTape tape = d->reader.takeTape();
        const auto giveBack = qScopeGuard([&] { d->reader.giveBack(std::move(tape)); });
        return d->object.object(tape);
    });
}

QScriptValue AlarmUpdateParser::parse(QByteArray *data)
{
    return internal::parseBytes(*this, data);
}

QScriptValue AlarmUpdateParser::parse(const QString &text)
{
    return internal::parseText(*this, text);
}

QScriptValue AlarmUpdateParser::parse(const QTextStream *stream)
{
    return internal::parseStream(*this, stream);
}

QScriptValue AlarmUpdateParser::parse(QIODevice *device)
{
    d->reader.reset();
    return internal::parseDevice(*this, device);
}

QString AlarmUpdateParser::errorMessage() const
{
    return d->reader.errorMessage();
}

FatalErrors AlarmUpdateParser::fatalErrors() const noexcept
{
    return d->reader.builder().token().throwsFatalErrors ? FatalErrors::Throw
                                                         : FatalErrors::EndProcess;
}

void AlarmUpdateParser::setFatalErrors(FatalErrors policy) noexcept
{
    d->reader.builder().token().throwsFatalErrors = policy == FatalErrors::Throw;
}

QScriptValue AlarmUpdateParser::keyValue(const QScriptValue &key, const QScriptValue &value)
{
    QScriptValue object = d->engine->newObject();
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
        QScriptValue array = d->engine->newArray();
        array.setProperty(0, list);
        array.setProperty(1, value);
        return array;
    }
    list.setProperty(list.property(QStringLiteral("length")).toUInt32(), value);
    return list;
}

QScriptValue AlarmUpdateParser::dateValue(void *scanner, const char *text)
{
    const QDate date = QDate::fromString(QString::fromLatin1(text), Qt::ISODate);
    return internal::ownerOf(scanner)->d->engine->newDate(date.startOfDay());
}

QScriptValue AlarmUpdateParser::timeValue(void *scanner, const char *text)
{
    QDateTime withoutDay;
    withoutDay.setTime(QTime::fromString(QString::fromLatin1(text), Qt::ISODate));
    return internal::ownerOf(scanner)->d->engine->newDate(withoutDay);
}

} // namespace vn
