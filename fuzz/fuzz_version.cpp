// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The reading of a version against the published expression: split, then part for part. Texts
// without "*" only, which the expression cannot keep in its part.

#include "Support.h"

#include "version/VanteroSoftwareVersion.h"
#include "version/VersionLint.h"
#include "version/VersionOrder.h"

using vn::VanteroSoftwareVersion;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // Code units as they come reach what no valid UTF-8 does: surrogates without their partner.
    Input input(data, size);
    const bool isRaw = input.byte() == 'u';
    const QByteArray bytes = input.rest();
    QString text = fromUtf8(bytes);
    if (isRaw)
        text = QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes.constData()),
                                  bytes.size() / 2);
    text.remove(QLatin1Char('*'));

    const QStringList parts = text.split(VanteroSoftwareVersion::splitVersion, Qt::KeepEmptyParts);
    int low[6] = {};
    int high[6] = {};
    for (int i = 0; i < parts.size() && i < 6; ++i) {
        QString part = parts.at(i);
        if (i == 1 && part.startsWith(QLatin1Char('V')))
            part.remove(0, 1);
        if (i == 0)
            low[i] = part == QLatin1String("VN")    ? 20
                     : part == QLatin1String("R16") ? 10
                     : part == QLatin1String("R8")  ? 2
                     : part == QLatin1String("R4")  ? 1
                                                    : 0;
        else if (i < 5)
            low[i] = static_cast<qint16>(part.toInt());
        else
            low[i] = part == QLatin1String("pre") ? 1 : 0;
        high[i] = i == 5 && part != QLatin1String("pre") ? 99 : low[i];
    }

    const VanteroSoftwareVersion version(text);
    FUZZ_EQUAL(QString(version), text);
    FUZZ_CHECK(version.isNull() == text.isEmpty());
    for (int i = 0; i < 6; ++i) {
        FUZZ_CHECK(version[i] == low[i]);
        FUZZ_CHECK(version.high(i) == high[i]);
    }

    // A version without a warning is what it looks like; every finding is in the text.
    bool warns = false;
    const vn::Findings findings = vn::VersionLint::check(text);
    for (const vn::Finding &finding : findings) {
        warns = warns || finding.severity == vn::Finding::Severity::Warning;
        FUZZ_CHECK(finding.range.offset >= 0 && finding.range.length >= 0);
        FUZZ_CHECK(finding.range.offset + finding.range.length <= text.size());
    }
    FUZZ_CHECK(warns || (!version.platform().isNull() && parts.size() <= 6));
    FUZZ_CHECK(warns || !vn::VersionOrder::isPattern(version)); // no "*" is in the text
    FUZZ_CHECK(!vn::VersionOrder::before(version, version));
    FUZZ_CHECK(vn::VersionOrder::covers(version, version));
    return 0;
}
