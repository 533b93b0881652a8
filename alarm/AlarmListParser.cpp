// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmListParser.h"

#include "alarm/AlarmListReader_p.h"
#include "alarm/AlarmListTree_p.h"
#include "alarm/ParserInput_p.h"

#include <QtCore/QScopeGuard>

namespace vn {

struct AlarmListParser::Private
{
    explicit Private(AlarmListParser *parser)
        : reader(parser)
    {
    }

    internal::AlarmListReader reader;
    internal::AlarmListTree tree;
};

AlarmListParser::AlarmListParser(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
}

AlarmListParser::~AlarmListParser() = default;

QVariant AlarmListParser::parse(const char *data, unsigned int length)
{
    return onlyThrows<ParseException>([&] {
        const auto clear = qScopeGuard([this] { d->reader.clear(); });
        d->reader.read(data, length);
        return d->tree.value(d->reader.tape(), d->reader.tape().root());
    });
}

QVariant AlarmListParser::parse(QByteArray *data)
{
    return internal::parseBytes(*this, data);
}

QVariant AlarmListParser::parse(const QString &text)
{
    return internal::parseText(*this, text);
}

QVariant AlarmListParser::parse(const QTextStream *stream)
{
    return internal::parseStream(*this, stream);
}

QVariant AlarmListParser::parse(QIODevice *device)
{
    d->reader.reset();
    return internal::parseDevice(*this, device);
}

QString AlarmListParser::errorMessage() const
{
    return d->reader.errorMessage();
}

bool AlarmListParser::isClean() const noexcept
{
    return d->reader.isClean();
}

void AlarmListParser::reset() noexcept
{
    d->reader.resetScanner();
}

FatalErrors AlarmListParser::fatalErrors() const noexcept
{
    return d->reader.builder().token().throwsFatalErrors ? FatalErrors::Throw
                                                         : FatalErrors::EndProcess;
}

void AlarmListParser::setFatalErrors(FatalErrors policy) noexcept
{
    d->reader.builder().token().throwsFatalErrors = policy == FatalErrors::Throw;
}

} // namespace vn
