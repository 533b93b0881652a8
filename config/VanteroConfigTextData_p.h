// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_VANTEROCONFIGTEXTDATA_P_H
#define VN_CONFIG_VANTEROCONFIGTEXTDATA_P_H

#include "config/ConfigSyntax_p.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QHash>
#include <QtCore/QSharedData>

#include <array>
#include <vector>

namespace vn::internal {

/**
 * What VanteroConfigText holds: the text as it was given, an index of its values, and what has been
 * done to them. The text never changes; where it differs is computed when it is asked for. So an
 * edit costs a lookup, however long the text is.
 */
class ConfigTextData : public QSharedData
{
public:
    using Form = VanteroConfigText::Form;
    using Result = VanteroConfigText::Result;
    using Splice = VanteroConfigText::Splice;

    ConfigTextData(const QString &text, Form form);

    Form form() const { return m_form; }
    const QString &original() const { return m_original; }
    QVector<Splice> splices() const;
    QString text() const;

    bool containsSection(const QString &section) const;
    QString value(const QString &section, const QString &key, int index) const;
    QStringList values(const QString &section, const QString &key) const;

    Result setValue(const QString &section, const QString &key, const QString &value, int index);
    Result addValue(const QString &section, const QString &key, const QString &value);
    Result removeValue(const QString &section, const QString &key, int index);
    Result removeKey(const QString &section, const QString &key);
    Result removeSection(const QString &section);
    Result addSection(const QString &section, const VanteroConfigMap::Section &content);

private:
    class Indexer;

    static constexpr int kNone = -1;

    // The views lie in the text or in m_kept. Those of places in the text are null where an edit
    // made the thing.

    struct Entry
    {
        int block; // kNone for the header
        int older; // the next older entry of the key, or kNone
        QStringView key;
        QStringView value;
        QStringView line;
        QStringView originalValue;
        bool isRemoved = false;
        bool isTouched = false;
    };

    struct Block
    {
        int section;
        int previous; // block of the section, or kNone
        QStringView firstLine;
        QStringView lastLine;
        std::vector<int> added = {}; // entries
        bool isRemoved = false;
    };

    struct Section
    {
        QString name;
        int lastBlock = kNone;
        int count = 0; // of entries
    };

    /** Characters of the original text, and what stands there instead. */
    struct Change
    {
        const QChar *begin;
        const QChar *end;
        QString text;
    };

    struct Key
    {
        int section;
        QStringView key;

        friend bool operator==(const Key &a, const Key &b)
        {
            return a.section == b.section && a.key == b.key;
        }
        friend uint qHash(const Key &of, uint seed)
        {
            return qHash(of.key, seed) + uint(of.section) * 0x9e3779b9U;
        }
    };

    QStringView keep(const QString &text);
    int makeSection(QStringView name);
    int makeBlock(int section, QStringView firstLine);
    int makeEntry(int section, int block, QStringView key, QStringView value, QStringView line);

    int newest(const QString &section, const QString &key) const;
    int entryAt(const QString &section, const QString &key, int index) const;
    const Section *existing(const QString &section) const;
    bool isVersionLine(int entry) const;
    int headerField(int entry) const;

    Result malformed() const;
    Result missing(const QString &section, const QString &key, int index) const;
    Result checkHeader(int entry, const QString &value) const;
    Result add(const QString &section, const QString &key, const QString &value, bool mayBeHeader);
    void remove(int entry);
    void touch(int entry);

    const QChar *endOfLine(QStringView line) const;
    QString lineEndOf(QStringView line) const;
    QString lineEndOf(const Block &block) const;
    QString lineEndOf(const Entry &entry) const;
    QString lineEnd() const;
    const QChar *placeOfNewAddress() const;
    void addChange(const Entry &entry, std::vector<Change> &changes) const;
    QString added(const Block &block, const QString &lineEnd) const;
    QString newBlocks() const;
    std::vector<Change> changes() const;

    QString m_original;
    Form m_form;
    QString m_fault; // why the text is refused, or null
    int m_faultLine = 0;

    std::vector<QStringView> m_header;                       // its lines
    std::vector<QStringView> m_addresses;                    // those of them that hold an address
    std::array<int, 3> m_headerEntries{kNone, kNone, kNone}; // by HeaderField
    bool m_areAddressesRemoved = false;

    std::vector<Entry> m_entries;
    std::vector<Block> m_blocks;
    std::vector<Section> m_sections;
    QHash<QStringView, int> m_sectionIds; // those that have not been removed
    QHash<Key, int> m_newest;

    std::vector<int> m_touchedEntries;
    std::vector<int> m_touchedBlocks;
    QVector<QString> m_kept;
};

} // namespace vn::internal

#endif // VN_CONFIG_VANTEROCONFIGTEXTDATA_P_H
