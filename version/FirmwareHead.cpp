// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/FirmwareHead.h"

#include "version/FirmwareLines_p.h"
#include "version/VersionLint.h"

#include <QtCore/QBuffer>

#include <algorithm>

namespace vn {

namespace {

using internal::NamedVersion;

/** The range of @p length characters at @p column, from 0, of the line that names @p version. */
TextRange rangeIn(const NamedVersion &version, int column, int length)
{
    const int line = version.line + 1;
    return {line, column + 1, line, column + 1 + length, version.lineOffset + column, length};
}

TextRange rangeOfText(const NamedVersion &version)
{
    return rangeIn(version, version.column, version.text.size());
}

Finding warning(const char *code, const QString &message, const TextRange &range)
{
    return {Finding::Severity::Warning, QString::fromLatin1(code), message, range};
}

/** What is wrong with a line by itself. */
void checkLine(const NamedVersion &version, Findings &findings)
{
    if (version.hasTwoForms)
        findings.append(warning(
            "two-forms", QString::fromLatin1("the line has a mark and UPLD, and UPLD decides"),
            rangeOfText(version)));
    if (version.text.isEmpty())
        findings.append(warning("version-empty",
                                QString::fromLatin1("the line is one of a version and names none"),
                                rangeOfText(version)));
    if (!version.skipped.isEmpty() && version.skipped != QLatin1String(" "))
        findings.append(
            warning("character-skipped",
                    QString::fromLatin1("\"%1\" behind the mark is skipped, where a blank is due")
                        .arg(version.skipped),
                    rangeIn(version, version.column - 1, 1)));
}

/** What is wrong with a line beside @p last, which counts. */
void compareLines(const NamedVersion &version, const NamedVersion &last, Findings &findings)
{
    if (version.text == last.text)
        return;
    findings.append(
        warning("versions-differ",
                QString::fromLatin1("line %1 names \"%2\", but line %3 \"%4\", which counts")
                    .arg(QString::number(version.line + 1), version.text,
                         QString::number(last.line + 1), last.text),
                rangeOfText(version)));
}

/** What VersionLint finds in the text of @p version, with its places in the package. */
void checkText(const NamedVersion &version, Findings &findings)
{
    Findings inText = VersionLint::check(version.text);
    for (Finding &finding : inText) {
        finding.range = rangeIn(version, version.column + static_cast<int>(finding.range.offset),
                                static_cast<int>(finding.range.length));
        findings.append(finding);
    }
}

Findings check(const std::vector<NamedVersion> &versions)
{
    Findings findings;
    if (versions.empty()) {
        findings.append({Finding::Severity::Error,
                         QString::fromLatin1("no-version"),
                         QString::fromLatin1("none of the first 30 lines names a version"),
                         {}});
        return findings;
    }
    for (const NamedVersion &version : versions) {
        checkLine(version, findings);
        compareLines(version, versions.back(), findings);
    }
    if (!versions.back().text.isEmpty())
        checkText(versions.back(), findings);
    std::stable_sort(findings.begin(), findings.end(), [](const Finding &a, const Finding &b) {
        return a.range.offset < b.range.offset;
    });
    return findings;
}

} // namespace

FirmwareHead FirmwareHead::read(QIODevice *device)
{
    FirmwareHead head;
    std::vector<NamedVersion> versions;
    if (device && device->isReadable())
        versions = internal::namedVersions(*device);
    for (const NamedVersion &version : versions)
        head.m_lines.append({version.form, version.line + 1, version.text, rangeOfText(version)});
    head.m_findings = check(versions);
    return head;
}

FirmwareHead FirmwareHead::read(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    (void)buffer.open(QIODevice::ReadOnly); // a buffer of its own bytes always opens
    return read(&buffer);
}

const QList<FirmwareLine> &FirmwareHead::lines() const noexcept
{
    return m_lines;
}

VanteroSoftwareVersion FirmwareHead::version() const
{
    return m_lines.isEmpty() ? VanteroSoftwareVersion() : m_lines.last().version;
}

const Findings &FirmwareHead::findings() const noexcept
{
    return m_findings;
}

} // namespace vn
