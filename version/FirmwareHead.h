// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_FIRMWAREHEAD_H
#define VN_VERSION_FIRMWAREHEAD_H

/**
 * @file
 * The lines of a firmware package that name its version, and whether they agree.
 */

#include "base/Export.h"
#include "base/Finding.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QList>

class QByteArray;
class QIODevice;

namespace vn {

/**
 * A line of a package that names a version.
 * @since 1.0.0
 */
struct FirmwareLine
{
    /** The forms of such lines. */
    enum class Form {
        TwoHashes, ///< `## Version: VN-3.0.6.29`
        OneHash,   ///< `# Version: VN-3.0.6.29`
        Upload,    ///< `# VN-3.0.6.29 UPLD`
    };

    /** The form that the version was taken by; of two on one line the later one in this list. */
    Form form = Form::TwoHashes;
    /** The number of the line, from 1. */
    int line = 0;
    /** The version that it names; null where the line leaves no text for one. */
    VanteroSoftwareVersion version;
    /** Where the text of the version stands; offsets count code units of the decoded package. */
    TextRange range;
};

/**
 * The head of a firmware package: what VanteroSoftwareVersion::fromFwp() reads, with its places.
 * @code
 * const vn::FirmwareHead head = vn::FirmwareHead::read(device);
 * if (!head.findings().isEmpty())
 *     qWarning() << head.version() << head.findings().first().message;
 * @endcode
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_EXPORT FirmwareHead
{
public:
    /**
     * Reads the first 30 lines of @p device, as VanteroSoftwareVersion::fromFwpFile() does. Reports
     * nothing but findings: what cannot be read has no lines.
     */
    [[nodiscard]] static FirmwareHead read(QIODevice *device);

    /** The same over the bytes of a package. */
    [[nodiscard]] static FirmwareHead read(const QByteArray &data);

    /** The lines that name a version, in their order; the last one counts. Empty where none does.
     */
    [[nodiscard]] const QList<FirmwareLine> &lines() const noexcept;

    /** The version that fromFwp() gives: that of the last line; null where there is none. */
    [[nodiscard]] VanteroSoftwareVersion version() const;

    /**
     * What is wrong with the lines, in the order of their places, and what VersionLint finds in the
     * text of the version that counts. `docs/findings.md` has the codes.
     */
    [[nodiscard]] const Findings &findings() const noexcept;

private:
    QList<FirmwareLine> m_lines;
    Findings m_findings;
};

} // namespace vn

#endif // VN_VERSION_FIRMWAREHEAD_H
