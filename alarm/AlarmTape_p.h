// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMTAPE_P_H
#define VN_ALARM_ALARMTAPE_P_H

/**
 * @file
 * What both languages are read into before anything is made of it: the values of a text in a row.
 *
 * The values stand in the order in which they end in the text, so an array or object stands behind
 * what is inside of it, and the outermost value is the last entry. Of `{a: 1, b: [x, 'y']}`:
 *
 *     index    0     1     2     3     4      5                     6
 *     entry    a     1     b     x     'y'    [] of 2, extent 3     {} of 2, extent 7
 *
 * An object has a key and a value for each member. A value takes as many entries as its extent; its
 * own is the last of them. So what is inside is found from behind, without a look at the rest:
 * @code
 * int child = index;
 * for (int left = tape.childCount(index); left > 0; --left) { // the last child first
 *     child = tape.before(child);  // the first time: the last child
 *     …
 * }
 * tape.children(index, list); // the same in the order of the text: of an object key, value, key, …
 * @endcode
 * Trees come out as they are published when they are made in this order, from behind: arrays in
 * reverse, and the first value of a repeated key first. The n-th of count elements in the text is
 * element count - 1 - n of the published list.
 *
 * Places are byte offsets from 0 into the text, brackets and quotes included. Texts are read from
 * the bytes of the text, which must still be there, but for those that are in no memory as a whole:
 * of standard input, and strings that began in an earlier text.
 *
 * Who wants the values of a text without the published tree makes an AlarmListReader or an
 * AlarmUpdateReader (with the AlarmUpdateParser or without one), calls read() on bytes that end
 * with two zero bytes, and looks at its tape(); read() throws what parse() throws.
 */

#include <QtCore/QLatin1String>
#include <QtCore/QString>

#include <vector>

namespace vn::internal {

/** One value, or the key of a member. */
struct AlarmEntry
{
    enum class Kind : quint8 {
        Null,
        Bool,
        Number, ///< a double; `integer` says that it was an integer of an update
        Word,   ///< a text without quotes
        Quoted, ///< a text in quotes
        Date,   ///< of an update: a day, `number` is year * 10000 + month * 100 + day
        Time,   ///< of an update: a time without a day
        Array,  ///< `children`
        Object, ///< `children`; of an update its pairs, also of an error report
    };

    struct Children
    {
        qint32 count;  ///< elements of an array, members of an object
        qint32 extent; ///< entries of the value, its own included
    };

    Kind kind = Kind::Null;
    bool integer = false;
    qint32 start = 0; ///< the first byte
    qint32 end = 0;   ///< behind the last one
    qint32 kept = -1; ///< of a text that is not in the bytes: its index in what the tape keeps
    union {
        double number = 0; ///< of a boolean 1 or 0
        Children children;
    };

    bool isText() const { return kind == Kind::Word || kind == Kind::Quoted; }
    bool isContainer() const { return kind == Kind::Array || kind == Kind::Object; }
};

/** The values of one text. */
class AlarmTape
{
public:
    // ---- Reading -------------------------------------------------------------------------------

    bool isEmpty() const { return m_entries.empty(); }
    int size() const { return static_cast<int>(m_entries.size()); }
    const AlarmEntry &operator[](int index) const
    {
        return m_entries[static_cast<std::size_t>(index)];
    }
    /** The outermost value, which is the last one. */
    int root() const { return size() - 1; }

    /** How many entries the value at @p index takes. */
    int extent(int index) const
    {
        const AlarmEntry &entry = (*this)[index];
        return entry.isContainer() ? entry.children.extent : 1;
    }
    /** The value that ends before the one at @p index begins. */
    int before(int index) const { return index - extent(index); }
    /** Elements of an array, keys and values of an object. */
    int childCount(int index) const
    {
        const AlarmEntry &entry = (*this)[index];
        return entry.kind == AlarmEntry::Kind::Object ? 2 * entry.children.count
               : entry.isContainer()                  ? entry.children.count
                                                      : 0;
    }
    /** What is directly inside of the value at @p index, in the order of the text. */
    void children(int index, std::vector<int> &result) const
    {
        result.resize(static_cast<std::size_t>(childCount(index)));
        int child = index - 1;
        for (auto place = result.rbegin(); place != result.rend(); ++place) {
            *place = child;
            child = before(child);
        }
    }

    /** Whether the text of @p entry is bytes() of it; else keptText() has it. */
    static bool isInText(const AlarmEntry &entry) { return entry.kept < 0; }
    /** The text of @p entry without its quotes. */
    QLatin1String bytes(const AlarmEntry &entry) const
    {
        const int quote = entry.kind == AlarmEntry::Kind::Quoted ? m_quotes : 0;
        return QLatin1String(m_text + entry.start + quote, entry.end - entry.start - 2 * quote);
    }
    const QString &keptText(const AlarmEntry &entry) const
    {
        return m_kept[static_cast<std::size_t>(entry.kept)];
    }
    /** The same wherever it is; null where it is empty. */
    QString text(const AlarmEntry &entry) const
    {
        if (!isInText(entry))
            return keptText(entry);
        const QLatin1String latin1 = bytes(entry);
        return latin1.isEmpty() ? QString() : QString(latin1);
    }

    // ---- Writing -------------------------------------------------------------------------------

    /** Texts of updates keep their quotes, those of lists lose them. */
    explicit AlarmTape(bool keepsQuotes)
        : m_quotes(keepsQuotes ? 0 : 1)
    {
    }

    /** A new text begins; null where it is in no memory as a whole. */
    void begin(const char *text)
    {
        clear();
        m_text = text;
    }
    /** Forgets the values; the memory of a long text with them. */
    void clear()
    {
        m_entries.clear();
        m_kept.clear();
        if (m_entries.capacity() > kMostEntriesKept)
            std::vector<AlarmEntry>().swap(m_entries);
    }
    bool isTextInMemory() const { return m_text; }

    AlarmEntry &add(AlarmEntry::Kind kind, qint32 start, qint32 end)
    {
        AlarmEntry &entry = m_entries.emplace_back();
        entry.kind = kind;
        entry.start = start;
        entry.end = end;
        return entry;
    }
    void addKept(AlarmEntry::Kind kind, qint32 start, qint32 end, const QString &text)
    {
        add(kind, start, end).kept = static_cast<qint32>(m_kept.size());
        m_kept.push_back(text);
    }
    /** An array or object of the entries from @p first on. */
    void addContainer(AlarmEntry::Kind kind, qint32 start, qint32 end, int count, int first)
    {
        const int extent = size() - first + 1;
        add(kind, start, end).children = {count, extent};
    }

    /** The entries from @p first on, which no brackets are around, are one array or object. */
    void wrap(AlarmEntry::Kind kind, int count, int first)
    {
        addContainer(kind, (*this)[first].start, (*this)[root()].end, count, first);
    }

private:
    static constexpr std::size_t kMostEntriesKept = 16384;

    std::vector<AlarmEntry> m_entries;
    std::vector<QString> m_kept;
    const char *m_text = nullptr;
    int m_quotes;
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMTAPE_P_H
