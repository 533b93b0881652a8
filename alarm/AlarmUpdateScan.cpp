// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateScan_p.h"

#include "alarm/AlarmTape_p.h"
#include "alarm/Bytes_p.h"
#include "alarm/NumberText_p.h"

namespace vn::internal {

namespace {

using Kind = UpdateToken::Kind;

/** The stack of the grammar holds two symbols for each pair and each text of the last one's list,
 * and is full with 98 of both. */
constexpr int kMostPairsAndTexts = 97;

/** Behind the number without a sign at @p at, whose @p kind it tells; @p at where there is none. */
const char *skipNumber(const char *at, Kind &kind)
{
    const char *const end = skip(Digit, at);
    const bool hasPoint = *end == '.' && is(Digit, end[1]);
    kind = hasPoint ? Kind::Float : Kind::Integer;
    return hasPoint ? skip(Digit, end + 1) : end;
}

/** Behind what looks like @p form, "9" for any digit, at @p at; null where nothing does. */
const char *skipForm(const char *at, const char *form)
{
    for (; *form != '\0'; ++form, ++at)
        if (*form == '9' ? !is(Digit, *at) : *at != *form)
            return nullptr;
    return at;
}

/** A value that is no text; whether it is one. */
bool addValue(const char *data, const UpdateToken &token, AlarmTape &tape)
{
    const auto add = [&](AlarmEntry::Kind kind, double number = 0) -> AlarmEntry & {
        AlarmEntry &entry = tape.add(kind, token.start, token.end);
        entry.number = number;
        return entry;
    };
    const char *const text = data + token.start;
    switch (token.kind) {
    case Kind::Integer:
        add(AlarmEntry::Kind::Number, toInt32(text)).integer = true;
        return true;
    case Kind::Float:
        add(AlarmEntry::Kind::Number, toDouble(text, token.end - token.start));
        return true;
    case Kind::Date:
        add(AlarmEntry::Kind::Date, toDayNumber(text));
        return true;
    case Kind::Time:
        add(AlarmEntry::Kind::Time);
        return true;
    case Kind::Bool:
        add(AlarmEntry::Kind::Bool, *text == 't' ? 1 : 0);
        return true;
    default:
        return false;
    }
}

void addText(const UpdateToken &token, AlarmTape &tape)
{
    tape.add(token.kind == Kind::Text ? AlarmEntry::Kind::Word : AlarmEntry::Kind::Quoted,
             token.start, token.end);
}

} // namespace

UpdateToken UpdateScanner::next()
{
    const char *end = skip(UpdateWord, m_at);
    while (is(Space, *m_at)) {
        const char *const behindSpace = skip(Space, m_at);
        if (behindSpace < end)
            break; // the longest match counts
        m_at = behindSpace;
        end = skip(UpdateWord, m_at);
    }
    UpdateToken token;
    token.start = static_cast<int>(m_at - m_data);
    m_at = end > m_at ? readWord(token, end) : readOther(token);
    token.end = static_cast<int>(m_at - m_data);
    return token;
}

/** Of a word up to @p end, which may be something else that is as long or longer. */
const char *UpdateScanner::readWord(UpdateToken &token, const char *end) const
{
    if (skipNumber(m_at, token.kind) == end) {
        if (*end == '-' || *end == ':') {
            if (const char *const behindDate = skipForm(m_at, "9999-99-99")) {
                token.kind = Kind::Date;
                return behindDate;
            }
            if (const char *const behindTime = skipForm(m_at, "99:99:99")) {
                token.kind = Kind::Time;
                return behindTime;
            }
        }
        return end;
    }
    const QLatin1String text(m_at, static_cast<int>(end - m_at));
    token.kind =
        text == QLatin1String("true") || text == QLatin1String("false") ? Kind::Bool : Kind::Text;
    return end;
}

const char *UpdateScanner::readOther(UpdateToken &token) const
{
    if (m_at == m_end)
        return m_at;
    if (*m_at == '-') {
        const char *const end = skipNumber(m_at + 1, token.kind);
        if (end > m_at + 1)
            return end;
    } else if (*m_at == '"') {
        const void *const quote =
            std::memchr(m_at + 1, '"', static_cast<std::size_t>(m_end - m_at - 1));
        if (quote) {
            token.kind = Kind::Quoted;
            return static_cast<const char *>(quote) + 1;
        }
    }
    token.kind = isIn(*m_at, "#,;=:-") ? Kind::Mark : Kind::Stray;
    token.mark = *m_at;
    return m_at + 1;
}

bool scanPlainUpdate(const char *data, int length, AlarmTape &tape)
{
    UpdateScanner scanner(data, length);
    for (int pairs = 1;; ++pairs) {
        UpdateToken token = scanner.next();
        if (!token.isText())
            return false;
        addText(token, tape);
        if (scanner.next().mark != '=')
            return false;
        int texts = 0;
        do {
            token = scanner.next();
            if (token.isText()) {
                addText(token, tape);
                ++texts;
            } else if (texts > 0 || !addValue(data, token, tape)) {
                return false;
            }
            token = scanner.next();
        } while (texts > 0 && token.mark == ',');
        if (texts > 1)
            tape.wrap(AlarmEntry::Kind::Array, texts, tape.size() - texts);
        if (pairs + texts > kMostPairsAndTexts)
            return false;
        if (token.kind == Kind::End) {
            tape.wrap(AlarmEntry::Kind::Object, pairs, 0);
            return true;
        }
        if (token.mark != ';')
            return false;
    }
}

} // namespace vn::internal
