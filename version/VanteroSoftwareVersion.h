// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_VANTEROSOFTWAREVERSION_H
#define VN_VERSION_VANTEROSOFTWAREVERSION_H

#include "base/Export.h"

#include <QtCore/QRegExp>
#include <QtCore/QString>

#include <array>

class QByteArray;
class QIODevice;
class QTextStream;

namespace vn {

/** Whether an update is safe, and which rule says so. @since 1.0.0 */
struct SafeUpdateVerdict
{
    /** Whether the update is allowed. */
    bool safe;

    /**
     * The identifier of the rule that decided: "platform", "major", "r16-step", "r16-return",
     * "k40-step", "h40-return", "k30-h30-k40-return", "k30-h30-k40-pattern", "w40-minimum" or
     * "50-minimum"; "none" where no rule applied. An identifier never changes its meaning.
     */
    QString rule;

    /**
     * That rule in one English sentence without a full stop. It states the rule alone, whether it
     * is met or not: "K40 cameras on VN-3.0.3.* must first be updated to VN-3.0.6.29 or later".
     */
    QString sentence;
};

/**
 * A version of camera software (firmware), such as "VN-3.0.6.29", or a pattern of versions, such as
 * "VN-3.0.8.*": its text and a numeric reading of it that orders versions and matches patterns.
 *
 * The text is split into parts at every run of characters that are neither letters, digits, marks
 * nor "*". The first six parts are the components; each is a closed range of 16-bit numbers, low to
 * high, which are equal unless the part is a wildcard:
 *
 * | Index | Component       | Part of the text                                                  |
 * |-------|-----------------|-------------------------------------------------------------------|
 * | 0     | platform        | "R4" is 1, "R8" 2, "R16" 10, "VN" 20, "*" 0 to 99, all else 0     |
 * | 1     | major number    | a decimal number after one "V", if there is one; "*" is 0 to 99   |
 * | 2     | minor number    | a decimal number; "*" is 0 to 99                                  |
 * | 3     | third number    | the same                                                          |
 * | 4     | fourth number   | the same                                                          |
 * | 5     | pre-release     | missing is 0, "pre" is 1, all else (an empty part too) is 0 to 99 |
 *
 * A part that is no decimal number of 32 bits counts as 0, as a missing part does; a number is cut
 * to 16 bits. A wildcard covers its own component only: the fourth number of "R16-2.1.*" is 0.
 *
 * Comparison goes by the numbers alone. The components are compared in their order; two ranges that
 * overlap are equal, the first two that do not decide. So a pattern equals every version that it
 * covers, and equality is not transitive:
 * @code
 * VanteroSoftwareVersion("VN-3.0.8.4") == VanteroSoftwareVersion("VN-3.0.8.*");  // true
 * VanteroSoftwareVersion("VN-3.0.6.29") < VanteroSoftwareVersion("VN-3.0.8.*");  // true
 * VanteroSoftwareVersion("R16-2.1.5.3") > VanteroSoftwareVersion("R16-2.1.*");   // true
 * @endcode
 * Errors: no operation reports one. A text that is no version has components of 0; isNull() and
 * operator[] tell.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_EXPORT VanteroSoftwareVersion
{
public:
    /**
     * What separates the parts of a text: `(\W|_)+`. "*" is the exception that it cannot express:
     * parse() keeps it in its part, since it is the wildcard.
     */
    static const QRegExp splitVersion;

    // ---- Construction --------------------------------------------------------------------------

    /** The null version: an empty text, all components 0. */
    VanteroSoftwareVersion();

    /** The version that @p text (Latin-1) holds; a null pointer counts as an empty text. */
    VanteroSoftwareVersion(const char *text);

    /** The version that @p text holds. The text is kept as it is. */
    VanteroSoftwareVersion(const QString &text);

    /** Reads the components anew from @p text. Kept on purpose: the stored text, and with it
     *  isNull(), stays as it was. */
    void parse(const QString &text);

    // ---- Content -------------------------------------------------------------------------------

    /** The text, as given to the constructor. */
    operator QString() const;

    /** The low end of component @p i, from 0 to 5; 0 for a wildcard and for any other index. */
    [[nodiscard]] int operator[](int i) const noexcept;

    /** The high end of component @p i, from 0 to 5; 99 for a wildcard, 0 for any other index. */
    [[nodiscard]] int high(int i) const noexcept;

    /** The name of the platform, such as "VN"; "*" for the wildcard, null where it is not known. */
    [[nodiscard]] QString platform() const;

    /** Whether the text is empty. */
    [[nodiscard]] bool isNull() const noexcept;

    // ---- Comparison: ranges that overlap are equal ---------------------------------------------

    /** Whether all components overlap. */
    [[nodiscard]] bool operator==(const VanteroSoftwareVersion &other) const noexcept;
    /** Whether some component does not overlap. */
    [[nodiscard]] bool operator!=(const VanteroSoftwareVersion &other) const noexcept;
    /** Whether the first components that do not overlap are lower here. */
    [[nodiscard]] bool operator<(const VanteroSoftwareVersion &other) const noexcept;
    /** Whether `*this < other` or `*this == other`. */
    [[nodiscard]] bool operator<=(const VanteroSoftwareVersion &other) const noexcept;
    /** Whether the first components that do not overlap are higher here. */
    [[nodiscard]] bool operator>(const VanteroSoftwareVersion &other) const noexcept;
    /** Whether `*this > other` or `*this == other`. */
    [[nodiscard]] bool operator>=(const VanteroSoftwareVersion &other) const noexcept;

    /** Whether going from this version to @p other is an upgrade: `*this < other`. */
    [[nodiscard]] bool isUpgrade(const VanteroSoftwareVersion &other) const noexcept;

    /** Whether going from this version to @p other is a downgrade: `*this > other`. */
    [[nodiscard]] bool isDowngrade(const VanteroSoftwareVersion &other) const noexcept;

    // ---- Safe updates --------------------------------------------------------------------------

    /**
     * Whether a camera of that @p model, which runs this version, may be updated to @p target. Only
     * the first characters of the model name count, and their case.
     */
    [[nodiscard]] bool isSafe(const QString &model, const VanteroSoftwareVersion &target) const;

    /**
     * The same with the rule that decides; `checkUpdate(m, t).safe == isSafe(m, t)` always.
     * @code
     * VanteroSoftwareVersion("VN-3.0.3.7").checkUpdate("K40D", "VN-3.4.5.4").safe; // true
     * VanteroSoftwareVersion("VN-3.0.3.7").checkUpdate("K40D", "VN-3.0.6.2").rule; // "k40-step"
     * @endcode
     */
    [[nodiscard]] SafeUpdateVerdict checkUpdate(const QString &model,
                                                const VanteroSoftwareVersion &target) const;

    // ---- Versions from elsewhere ---------------------------------------------------------------

    /** Kept on purpose: a null version, whatever the file; callers treat it as unknown. */
    [[nodiscard]] static VanteroSoftwareVersion fromFile(const QString &fileName);

    /**
     * The version that the beginning of a firmware package names, or a null version. Among the
     * first 30 lines the last one of these forms counts:
     *
     * | Line                       | Text of the version                       |
     * |----------------------------|-------------------------------------------|
     * | `## Version: VN-3.0.6.29`  | from the second character after the colon |
     * | `# Version: VN-3.0.6.29`   | the same                                  |
     * | `# VN-3.0.6.29 UPLD`       | all but the first 2 and last 5 characters |
     *
     * Reads from the current position and leaves the stream after the last line read. Reports
     * nothing: a package without such a line gives a null version.
     */
    [[nodiscard]] static VanteroSoftwareVersion fromFwp(QTextStream &stream);

    /** The same over the bytes of a package, in the locale's codec. */
    [[nodiscard]] static VanteroSoftwareVersion fromFwp(const QByteArray &data);

    /**
     * The same over a device that is open for reading, from its current position, in the locale's
     * codec. Of a sequential device no more is taken than the 30 lines, but up to 16,384 bytes
     * at once of a line that is longer than that, and of a QFile opened by a handle; a file such
     * as a named pipe is waited for, any other device gives what it has at hand. Where one of
     * random access stands afterwards is open.
     *
     * A line may be of any length below 2^29 characters; a longer one names no version. Of a line
     * that is no version line no more than 2 MB are kept in memory, but of a sequential device,
     * which cannot be read again, the line at hand is kept as a whole, at 2 bytes a character.
     * Reports nothing: a device that cannot be read gives a null version.
     */
    [[nodiscard]] static VanteroSoftwareVersion fromFwpFile(QIODevice *device);

    /** The same over the named file. Reports nothing: a missing file gives a null version. */
    [[nodiscard]] static VanteroSoftwareVersion fromFwpFile(const QString &fileName);

    // ---- The version of an application ---------------------------------------------------------

    /**
     * The version of an application as people read it, such as "4.1 beta 5, revision 1234, debug".
     * @param version major.minor.stage.build, where stage is "0" alpha, "1" beta, "2" release
     *        candidate, "3" release; major.minor.build is a release. What is none of these is kept.
     * @param revision text of the source revision; empty or "?" adds nothing; what stands before
     *        the first colon, and the colon, is left out unless the text begins with it
     * @param debug greater than 0 for a debug build
     */
    [[nodiscard]] static QString applicationVersion(const QString &version, const QString &revision,
                                                    short debug);

private:
    static constexpr int kComponents = 6;

    struct Range
    {
        qint16 low;
        qint16 high;
    };

    Q_DECL_HIDDEN int order(const VanteroSoftwareVersion &other) const noexcept;

    QString m_text;
    std::array<Range, kComponents> m_components{};
};

} // namespace vn

Q_DECLARE_TYPEINFO(vn::VanteroSoftwareVersion, Q_MOVABLE_TYPE);

#endif // VN_VERSION_VANTEROSOFTWAREVERSION_H
