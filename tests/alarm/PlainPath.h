// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_PLAINPATH_H
#define VN_TESTS_ALARM_PLAINPATH_H

/** @file The plain paths held against the grammars; for tests and fuzz targets. */

#include "alarm/AlarmListReader_p.h"
#include "alarm/AlarmListTree_p.h"
#include "alarm/AlarmUpdateReader_p.h"
#include "base/Exceptions.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <cstring>
#include <memory>
#include <optional>

/** The tree of the value at @p index, made without anything remembered. */
inline QVariant plainTree(const vn::internal::AlarmTape &tape, int index)
{
    using Kind = vn::internal::AlarmEntry::Kind;
    const vn::internal::AlarmEntry &entry = tape[index];
    std::vector<int> children;
    tape.children(index, children);
    switch (entry.kind) {
    case Kind::Bool:
        return entry.number != 0;
    case Kind::Number:
        return entry.number;
    case Kind::Word:
    case Kind::Quoted:
        return tape.text(entry);
    case Kind::Array: {
        QVariantList list;
        for (const int child : children)
            list.prepend(plainTree(tape, child));
        return list;
    }
    case Kind::Object: {
        QMultiMap<QString, QVariant> map;
        for (std::size_t i = children.size(); i > 0; i -= 2)
            map.insert(tape.text(tape[children[i - 2]]), plainTree(tape, children[i - 1]));
        return QVariant(static_cast<const QVariantMap &>(map));
    }
    default:
        return QVariant();
    }
}

/** In what two tapes differ; empty when in nothing. */
inline QString tapeDifference(const vn::internal::AlarmTape &a, const vn::internal::AlarmTape &b)
{
    if (a.size() != b.size())
        return QStringLiteral("%1 and %2 entries").arg(a.size()).arg(b.size());
    for (int i = 0; i < a.size(); ++i) {
        const bool isSame =
            a[i].kind == b[i].kind && a[i].start == b[i].start && a[i].end == b[i].end &&
            (a[i].isContainer() ? a[i].children.count == b[i].children.count &&
                                      a[i].children.extent == b[i].children.extent
             : a[i].isText()
                 ? a.text(a[i]) == b.text(b[i]) && a.text(a[i]).isNull() == b.text(b[i]).isNull()
                 : a[i].integer == b[i].integer &&
                       std::memcmp(&a[i].number, &b[i].number, sizeof a[i].number) == 0);
        if (!isSame)
            return QStringLiteral("entry %1").arg(i);
    }
    return {};
}

struct PlainPathResult
{
    bool isPlain = false;
    QString difference; // empty when there is none
};

/** How a reader ended with a text. */
struct ReadOutcome
{
    bool isRead = false;
    QString error;

    friend bool operator==(const ReadOutcome &a, const ReadOutcome &b)
    {
        return a.isRead == b.isRead && a.error == b.error;
    }
};

template <typename Read>
ReadOutcome outcomeOf(Read &&read)
{
    try {
        read();
        return {true, {}};
    } catch (const vn::ParseException &e) {
        return {
            false,
            QStringLiteral("%1 %2-%3").arg(e.message()).arg(e.startColumn()).arg(e.endColumn())};
    }
}

/** A text with its end mark, in memory of its own. A star at its end would end the process when it
 * stands in a comment. */
inline QByteArray terminated(QByteArray text)
{
    return text + (text.endsWith('*') ? " " : "") + QByteArray(2, '\0');
}

/** Lets @p plain try the plain path and @p grammar the other one with @p text. */
inline PlainPathResult comparePaths(vn::internal::AlarmListReader &plain,
                                    vn::internal::AlarmListReader &grammar, const QByteArray &text)
{
    const QByteArray bytes = terminated(text);
    QByteArray scanned(bytes.constData(), bytes.size());
    const auto size = static_cast<unsigned>(bytes.size());
    const QString before = QStringLiteral("as before");

    PlainPathResult result;
    plain.reset();
    alarmlist_collected() = before;
    result.isPlain = plain.readPlain(bytes.constData(), size);
    const QString collected = alarmlist_collected();
    if (!result.isPlain) {
        if (collected != before || !plain.isClean())
            result.difference = QStringLiteral("something was left behind");
        return result;
    }

    grammar.reset();
    alarmlist_collected() = before;
    const ReadOutcome outcome = outcomeOf([&] { grammar.readByGrammar(scanned.data(), size); });
    if (!outcome.isRead)
        result.difference = QStringLiteral("the grammar refuses it: ") + outcome.error;
    else
        result.difference = tapeDifference(plain.tape(), grammar.tape());
    if (result.difference.isEmpty() && alarmlist_collected() != collected)
        result.difference = QStringLiteral("what is collected");
    if (result.difference.isEmpty() && !grammar.isClean())
        result.difference = QStringLiteral("the state of the scanner");

    // The tree three times, so that what it remembers shows.
    vn::internal::AlarmListTree tree;
    for (int time = 0; time < 3 && result.difference.isEmpty(); ++time) {
        if (tree.value(plain.tape(), plain.tape().root()) !=
            plainTree(grammar.tape(), grammar.tape().root()))
            result.difference = QStringLiteral("the tree");
    }
    return result;
}

/** The same of updates. */
inline PlainPathResult comparePaths(vn::internal::AlarmUpdateReader &plain,
                                    vn::internal::AlarmUpdateReader &grammar,
                                    const QByteArray &text)
{
    const QByteArray bytes = text + QByteArray(2, '\0');
    QByteArray scanned(bytes.constData(), bytes.size());
    const auto size = static_cast<unsigned>(bytes.size());

    PlainPathResult result;
    plain.reset();
    result.isPlain = plain.readPlain(bytes.constData(), size);
    if (!result.isPlain)
        return result;
    grammar.reset();
    const ReadOutcome outcome = outcomeOf([&] { grammar.readByGrammar(scanned.data(), size); });
    result.difference = outcome.isRead ? tapeDifference(plain.tape(), grammar.tape())
                                       : QStringLiteral("the grammar refuses it: ") + outcome.error;
    return result;
}

/** Texts one after another on two readers that try the plain path, and on two that do not. */
class ListSequence
{
public:
    /** What differs when the reader @p which reads @p text; empty when nothing does. */
    QString compare(unsigned which, const QByteArray &text)
    {
        const QByteArray bytes = terminated(text);
        QByteArray first(bytes.constData(), bytes.size());
        QByteArray second(bytes.constData(), bytes.size());
        const auto size = static_cast<unsigned>(bytes.size());
        Side &a = m_sides[0];
        Side &b = m_sides[1];

        const ReadOutcome outcome = run(a, [&] { a.readers[which].read(first.constData(), size); });
        const ReadOutcome expected = run(b, [&] {
            b.readers[which].reset();
            b.readers[which].readByGrammar(second.data(), size);
        });
        if (!(outcome == expected))
            return QStringLiteral("'%1' and '%2'").arg(outcome.error, expected.error);
        if (a.collected != b.collected)
            return QStringLiteral("collected: '%1' and '%2'").arg(a.collected, b.collected);
        if (a.readers[which].isClean() != b.readers[which].isClean())
            return QStringLiteral("the state of the scanner");
        if (first != bytes)
            return QStringLiteral("the bytes of the caller");
        if (!outcome.isRead)
            return {};
        const vn::internal::AlarmTape &tape = a.readers[which].tape();
        const QString difference = tapeDifference(tape, b.readers[which].tape());
        if (difference.isEmpty() &&
            m_trees[which].value(tape, tape.root()) != plainTree(tape, tape.root()))
            return QStringLiteral("the tree");
        return difference;
    }

private:
    struct Side
    {
        vn::internal::AlarmListReader readers[2] = {vn::internal::AlarmListReader(nullptr),
                                                    vn::internal::AlarmListReader(nullptr)};
        QString collected;
    };

    template <typename Read>
    static ReadOutcome run(Side &side, Read &&read)
    {
        alarmlist_collected() = side.collected;
        const ReadOutcome outcome = outcomeOf(read);
        side.collected = alarmlist_collected();
        return outcome;
    }

    Side m_sides[2];
    vn::internal::AlarmListTree m_trees[2];
};

#endif // VN_TESTS_ALARM_PLAINPATH_H
