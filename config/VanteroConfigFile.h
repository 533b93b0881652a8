// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_VANTEROCONFIGFILE_H
#define VN_CONFIG_VANTEROCONFIGFILE_H

#include "base/AtomicFile.h"
#include "base/Export.h"
#include "base/smart.h"
#include "config/VanteroConfigMap.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

class QByteArray;
class QDate;
class QDir;
class QIODevice;
class QRecursiveMutex;
class QTextStream;

namespace vn {

class ZipReader;
class ZipWriter;

/**
 * One camera configuration: the text it was loaded from and the map parsed from it.
 *
 * Text and map are independent on purpose: loading sets both, edits change only the map, and
 * store() writes only the text.
 * @code
 * VanteroConfigFile config = VanteroConfigFile::open(path, QDateTime::currentDateTime());
 * config.value("ethernet", "HOSTNAME");
 * config.map(); // all of it, as a value to compare and to go through
 * @endcode
 * To change a file, edit its text with VanteroConfigText, which leaves every other character as it
 * is. A section that is printed from the map has no comments, its keys in ascending order and,
 * where a key repeats, its newest value first: once read again, that one is the oldest.
 *
 * The text format: a header block, which ends at the first empty line after its second line, then
 * blocks "SECTION name", lines `key=value`, "ENDSECTION name". Header values are kept in the map as
 * entries of the section HEAD_SECTION.
 *
 * Exceptions: each loading and storing operation names those that may leave it; any other exception
 * (a std::bad_alloc, say) that reaches its boundary ends the process. Parse errors carry -1 for all
 * positions. When loading fails, the entries read so far stay in the map.
 *
 * Threads: one object may be used from several threads at once, but for store(): its recursive lock
 * is held by each operation that reads or changes the map, and by storeAtomic() while it takes the
 * text. Both forms of store() take no lock: as long as one runs, no other thread may load into the
 * object or assign to it; lookups, edits and other store() may run beside it. Operations on a
 * device lock once it has been read; parseSection() locks for each entry, makeHeader() for each of
 * its two values. Assignment locks the target, then the source: two threads must not assign two
 * objects to each other at the same time. The preserve operations likewise hold their own lock and
 * take that of the previous configuration for a moment; nothing guards the map that they fill. The
 * static operations share nothing and may run on any number of threads at once, each with arguments
 * of its own (archive, map).
 * @since 1.0.0
 */
class VN_EXPORT VanteroConfigFile : public QObject
{
    // No Q_OBJECT: the class has no signals, slots or meta-object of its own.
public:
    /** "head": the section that holds the header values. */
    static const QString HEAD_SECTION;
    /** "File Version": from header line 1. */
    static const QString FILE_VERSION;
    /** "Software Version": from header line 2. */
    static const QString SOFTWARE_VERSION;
    /** "Factory IP": from the camera address line of the header. */
    static const QString FACTORY_IP;
    /** "Type Long": set by callers only. */
    static const QString TYPE_LONG;
    /** "Type Short": set by callers only. */
    static const QString TYPE_SHORT;

    // ---- Construction --------------------------------------------------------------------------

    /** An empty configuration: null text, empty map, the current time as time stamp. */
    VanteroConfigFile();

    /** A copy with a lock of its own; the content is shared until one of the two is changed. */
    VanteroConfigFile(const VanteroConfigFile &other);

    /** Copies text, time stamp and map under both locks; the QObject base stays as it is. */
    VanteroConfigFile &operator=(const VanteroConfigFile &other);

    ~VanteroConfigFile() override;

    // ---- Map, under the lock -------------------------------------------------------------------

    /** The newest value of @p key; a null string when the section or the key is missing. */
    [[nodiscard]] QString value(const QString &section, const QString &key) const;

    /** VanteroConfigMap::setValue() on the map. */
    void setValue(const QString &section, const QString &key, const QString &value);

    /** VanteroConfigMap::addValue() on the map. */
    void addValue(const QString &section, const QString &key, const QString &value);

    /** Whether there is a section of that name; an empty one counts. */
    [[nodiscard]] bool containsSection(const QString &section) const;

    /** The names of all sections, HEAD_SECTION included where there is one, ascending. */
    [[nodiscard]] QStringList allSectionKeys() const;

    /** The printed map (VanteroConfigMap::print()), not the text it was loaded from. */
    [[nodiscard]] QString toString() const;

    /** One printed section (VanteroConfigMap::printSection()). */
    [[nodiscard]] QString toString(const QString &section) const;

    /** A copy of the section, or an empty one. */
    [[nodiscard]] QMultiMap<QString, QString> section(const QString &section) const;

    /** Makes the section equal to @p content: nothing of the section before remains. Every name is
     *  accepted, HEAD_SECTION included. */
    void setSection(const QString &section, const QMultiMap<QString, QString> &content);

    /** A copy of the whole map, HEAD_SECTION included, as it stands at one moment. */
    [[nodiscard]] VanteroConfigMap map() const;

    /** The time stamp: of construction, or of the last load. */
    [[nodiscard]] QDateTime timeStamp() const;

    // ---- Header values, entries of HEAD_SECTION ------------------------------------------------

    /** FILE_VERSION, such as "1.3"; like all header values a null string when it is missing. */
    [[nodiscard]] QString getFileVersion() const;
    /** SOFTWARE_VERSION, such as "VN-3.0.6.29". */
    [[nodiscard]] QString getSoftwareVersion() const;
    /** FACTORY_IP, such as "10.0.0.1". */
    [[nodiscard]] QString getFactoryIP() const;
    /** TYPE_LONG; no header holds it. */
    [[nodiscard]] QString getLongCameraType() const;
    /** TYPE_SHORT; no header holds it. */
    [[nodiscard]] QString getShortCameraType() const;

    /** setValue() of FILE_VERSION. */
    void setFileVersion(const QString &value);
    /** setValue() of SOFTWARE_VERSION. */
    void setSoftwareVersion(const QString &value);
    /** setValue() of FACTORY_IP. */
    void setFactoryIP(const QString &value);
    /** setValue() of TYPE_LONG. */
    void setLongCameraType(const QString &value);
    /** setValue() of TYPE_SHORT. */
    void setShortCameraType(const QString &value);

    // ---- Loading -------------------------------------------------------------------------------

    /**
     * Replaces text and map with what @p text holds. Returns whether the header's two version lines
     * were found; the sections are loaded in any case.
     *
     * Kept on purpose: the time stamp ends up as the current time, not as @p dateTime.
     * @throws ParseException for a malformed section
     */
    bool parse(const QString &text, const QDateTime &dateTime);

    /**
     * The same over all that @p device has at hand, decoded as QTextStream does: by the codec of
     * the locale, UTF-16 and UTF-32 by their byte order mark. (open() decodes as
     * FileUtils::readText() does, by the bytes alone.) A sequential device is not waited for.
     * @throws ParseException for a malformed section
     * @throws FileException when the device is a QFile that cannot be read to its end, or is not
     * open for reading; nothing is loaded
     * @throws IOException the same for any other device. A peer that closes its connection ends a
     * socket, and is no error
     */
    bool parse(QIODevice *device, const QDateTime &dateTime);

    /**
     * Reads header and sections from @p stream into the map, which is not cleared; the text stays
     * as it was, the time stamp becomes @p dateTime. Returns the result of parseHeader().
     * @throws ParseException for a malformed section
     * @throws IOException "Read past EOF" when the stream gives no line though it is not at its end
     */
    bool parse(QTextStream *stream, const QDateTime &dateTime);

    /**
     * A new configuration from the file at @p path, read by FileUtils::readText(); the result for
     * the header is dropped.
     * @throws FileException when the file cannot be read
     * @throws ParseException for a malformed section
     */
    static VanteroConfigFile open(const QString &path, const QDateTime &dateTime);

    /**
     * Reads the header block from @p stream into HEAD_SECTION and returns whether both version
     * lines were found (an empty text counts as found). The first two lines are consumed whatever
     * they hold, then everything up to and including the next empty line, even lines that look like
     * sections.
     * @throws ParseException, IOException only; raises none of its own
     */
    bool parseHeader(QTextStream *stream);

    /**
     * The same over a QTextStream on @p device, which may read beyond the header.
     *
     * A device that fails is taken for one that is at its end: what it gave before counts, so that
     * false, or fewer values, may be the result. One that is not open holds an empty text.
     */
    bool parseHeader(QIODevice *device);

    /** The same over @p text. */
    bool parseHeader(const QString &text);

    /**
     * Reads the next section block from @p stream into the map and returns its name, or a null
     * string when the stream ends before any block. Blocks of one name merge. With @p
     * ignoreStrayLines, entries before the block are skipped; without, they are errors. The lock is
     * taken an entry at a time.
     * @throws ParseException for a malformed section
     * @throws IOException "Read past EOF" when the stream gives no line though it is not at its end
     */
    QString parseSection(QTextStream *stream, bool ignoreStrayLines);

    /**
     * Adds all section blocks of @p stream, the comment of a camera's JPEG image already cut out of
     * it; everything else is skipped. Map, text and time stamp are kept.
     * @throws ParseException for a malformed section
     * @throws IOException "Read past EOF" when the stream gives no line though it is not at its end
     */
    void parseJpegComment(QTextStream *stream);

    /**
     * The same over a QTextStream on @p device; one that is not open holds an empty text.
     *
     * A device that fails short of its end raises; one that cannot tell (a socket, a pipe) is
     * taken to be at its end: between two blocks the rest is missing in silence, within one it is a
     * section that is not closed.
     * @throws ParseException for a malformed section
     * @throws IOException "Read past EOF" when the device gives nothing though it is not at its end
     */
    void parseJpegComment(QIODevice *device);

    /** The same over a QTextStream on @p comment, which is not changed. */
    void parseJpegComment(QByteArray *comment);

    /** The same over @p comment. */
    void parseJpegComment(const QString &comment);

    // ---- Storing and naming --------------------------------------------------------------------

    /** The header block for the versions of this configuration, six lines with "\n" at their ends.
     * The other header values are not part of it. */
    [[nodiscard]] QString makeHeader() const;

    /**
     * Writes the text (not the map) as UTF-8 to the file at @p path, which is replaced: any text
     * that a QString holds, 1,073,741,000 characters and more. What comes to 1 GiB or more of UTF-8
     * is not read again, see FileUtils::readText(). Takes no lock, see the class.
     * @throws FileException when the file cannot be opened or written
     */
    void store(const QString &path);

    /**
     * The same as AtomicFile::replace() does it: at any moment the file is the old or the new one,
     * and a full disk leaves the old one. The text is that of one moment, whatever other threads
     * do. Returns what the new file could not keep of the old one: its owner, its access list and
     * so on.
     * @throws FileException when the file cannot be written
     */
    AtomicFile::Losses storeAtomic(const QString &path) const;

    /**
     * Adds the text (not the map) to @p archive as the entry @p entryName.
     *
     * Kept on purpose: the entry is Latin-1; characters outside of it become "?".
     * @throws IOException when the archive refuses it
     */
    void store(vnm::smart<ZipWriter> archive, const QString &entryName);

    /**
     * A file name in @p dir that is not taken: @p first, @p second, "-", the date as yyyy-MM-dd and
     * @p suffix; a taken name gets "[2]", "[3]", … before its last ".".
     * Example: ("", "cam", 2010-05-01, ".cfg") gives "cam-2010-05-01.cfg".
     */
    [[nodiscard]] static QString newFileName(const QDir &dir, const QString &first,
                                             const QString &second, const QDate &date,
                                             const QString &suffix);

    /** The same with @p prefix and the suffix ".cfg". */
    [[nodiscard]] static QString newFileName(const QDir &dir, const QString &prefix,
                                             const QDate &date);

    // ---- Section editing -----------------------------------------------------------------------

    /**
     * Makes the section of the configuration text @p target equal to that of @p source: replaced in
     * place, added at the end, or deleted where @p source lacks it. All other characters stay.
     *
     * Kept on purpose: the markers "SECTION name" and "ENDSECTION name" are found as plain
     * substrings, each from the start of the text, so a section whose name begins with @p section,
     * or a comment, matches, too; and each replacement in place adds two line breaks on each side.
     * Reports nothing: every text is accepted.
     */
    [[nodiscard]] static QString replaceSection(const QString &target, const QString &source,
                                                const QString &section);

    /**
     * The lines of the configuration text @p text without the sections named in @p sections, and
     * without what the flags name. Lines outside sections that are neither comment nor empty are
     * always dropped; every kept line ends with "\n" in the result.
     * @param text                a whole configuration text
     * @param sections            names of sections, compared whole and with case
     * @param dropOuterComments   drops comment lines outside sections, the header block included
     * @param dropSectionComments drops comment lines inside sections
     * @param dropEmptyLines      drops empty lines everywhere
     */
    [[nodiscard]] static QString removeSections(const QString &text, const QStringList &sections,
                                                bool dropOuterComments, bool dropSectionComments,
                                                bool dropEmptyLines);

    // ---- Preserving entries --------------------------------------------------------------------

    /**
     * Puts this configuration's @p section into @p result, with the values of @p keys taken from
     * @p previous. A section that @p result has already is kept, only the keys are written. Returns
     * false when this configuration lacks the section: that of @p previous, if any, is then taken
     * over whole.
     *
     * Kept on purpose: a key that @p previous lacks gets a null value.
     *
     * preserveReport() tells beforehand what becomes of each key. The lock of this configuration is
     * held throughout, that of @p previous (which may be this one) for each look at it; @p result
     * is the caller's, and no other thread may use it meanwhile.
     */
    bool preserveEntries(const VanteroConfigFile &previous, const QString &section,
                         const QStringList &keys, VanteroConfigMap &result) const;

    /** Preserves the references from events, actions, messaging and recording to time tables. */
    void preserveTimeTableReferences(const VanteroConfigFile &previous,
                                     VanteroConfigMap &result) const;

    /** Preserves the definitions of motion detection. */
    void preserveVideoMotion(const VanteroConfigFile &previous, VanteroConfigMap &result) const;

    /** Preserves network address and host name. */
    void preserveIpAddresses(const VanteroConfigFile &previous, VanteroConfigMap &result) const;

    // ---- Loading many configurations -----------------------------------------------------------

    /**
     * Adds the text of every entry of @p archive whose name ends with "cfg" to @p configurations,
     * under the factory address of its header (the empty string where it has none), and returns
     * their number. Texts of one address are all kept, the latest first.
     * @throws IOException when the archive or an entry cannot be read; texts added before stay
     * @throws ParseException only; raises none of its own
     */
    static int parseAll(ZipReader &archive, QMap<QString, QString> &configurations);

    /**
     * Adds the texts of all configurations found in @p paths: files whose header is one, archives
     * (names ending with ".zip", case ignored), and, when @p recursive, folders with all that is in
     * them, hidden entries and symbolic links left out. Returns the number of texts added.
     *
     * The entries of a folder are taken in the order in which the file system has them, which may
     * be another on each machine; of two texts of one address in a folder either may so come first.
     * A folder that cannot be listed is passed over in silence, like one that is not there, and so
     * are the files of one that can be listed but not entered. ConfigCollector tells of both, and
     * takes entries by name where asked.
     * @param paths     files, archives and folders; what is neither is passed over
     * @param configurations gets the texts by factory address, the latest of one address first
     * @param recursive whether folders are looked into, at any depth
     * @param password  handed to every archive; empty means none
     * @throws IOException when a file, archive or entry cannot be read; texts added before stay
     * @throws ParseException only; raises none of its own
     */
    static int parseAll(const QStringList &paths, QMap<QString, QString> &configurations,
                        bool recursive, const QByteArray &password);

    /** The same into a new map. */
    static QMap<QString, QString> parseAll(const QStringList &paths, bool recursive,
                                           const QByteArray &password);

private:
    QString m_sourceText;
    QDateTime m_timeStamp;
    VanteroConfigMap m_map;
    std::unique_ptr<QRecursiveMutex> m_lock; // never shared between objects
};

} // namespace vn

#endif // VN_CONFIG_VANTEROCONFIGFILE_H
