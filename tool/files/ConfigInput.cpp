// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigInput.h"

#include "tool/cli/Closest.h"
#include "tool/cli/FindingsPrinter.h"
#include "tool/cli/ToolError.h"
#include "tool/files/Input.h"
#include "tool/files/JpegComment.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <iterator>

namespace vn::tool {

namespace {

/** The line where reading fails: of a section that is not closed, the one behind the last. */
int lineOf(const Finding &fault, const QString &text)
{
    if (fault.code != QLatin1String("section-not-closed"))
        return fault.range.line;
    return text.count(QLatin1Char('\n')) + (text.endsWith(QLatin1Char('\n')) ? 1 : 2);
}

/** The text in an image. */
QString imageComment(const ConfigSource &source)
{
    const QByteArray comment = jpegComment(source.bytes, source.name);
    if (comment.isNull())
        throw ToolError(ExitCode::No, QStringLiteral("the image has no comment")).at(source.name);
    return FileUtils::decodeText(comment);
}

/** All bytes are Latin-1, so an archive or UTF-16 would pass for a text without sections. */
void requireEightBit(const ConfigSource &source)
{
    const auto refusal = [&source](const char *reason) {
        return ToolError(ExitCode::BadInput, QString::fromLatin1(reason)).at(source.name);
    };
    if (source.bytes.startsWith("PK\x03\x04") || source.bytes.startsWith("PK\x05\x06"))
        throw refusal("a zip archive; \"config collect\" reads its configurations");
    if (source.bytes.startsWith("\xFF\xFE") || source.bytes.startsWith("\xFE\xFF"))
        throw refusal("UTF-16; configurations are UTF-8 or Latin-1");
}

} // namespace

void requireWellFormed(const VanteroConfigText &text, const QString &name)
{
    for (const Finding &finding : text.findings())
        if (finding.severity == Finding::Severity::Error)
            throw ToolError(ExitCode::BadInput, finding.message)
                .at(name, lineOf(finding, text.text()));
}

QString sectionHint(const VanteroConfigText &text, const QString &section)
{
    QStringList sections;
    for (const VanteroConfigText::Section &each : text.outline().sections)
        sections += each.name;
    return sections.contains(section) ? QString() : didYouMean(section, sections);
}

QString keyHint(const VanteroConfigText &text, const QString &section, const QString &key)
{
    QStringList keys;
    for (const VanteroConfigText::Section &each : text.outline().sections)
        if (each.name == section)
            for (const VanteroConfigText::Block &block : each.blocks)
                for (const VanteroConfigText::Entry &entry : block.entries)
                    keys += entry.key;
    if (keys.isEmpty())
        return sectionHint(text, section);
    return keys.contains(key) ? QString() : didYouMean(key, keys);
}

void requireDone(const VanteroConfigText::Result &result, const QString &name, const QString &hint)
{
    if (result.outcome == VanteroConfigText::Outcome::NotFound)
        throw ToolError(ExitCode::No, result.reason + hint).at(name);
    if (!result)
        throw ToolError(ExitCode::BadInput, result.reason).at(name);
}

VanteroConfigFile parseConfig(const QString &text, const QString &name, bool *hasVersionLines)
{
    VanteroConfigFile config;
    try {
        const bool result = config.parse(text, QDateTime::currentDateTime());
        if (hasVersionLines)
            *hasVersionLines = result;
    } catch (const ExceptionQt &e) {
        requireWellFormed(VanteroConfigText(text), name);
        throw ToolError(ExitCode::BadInput, e.message()).at(name);
    }
    return config;
}

void requireText(const ConfigSource &source)
{
    requireEightBit(source);
    if (source.bytes.contains('\0'))
        throw ToolError(ExitCode::BadInput, QStringLiteral("no text: it holds zero bytes"))
            .at(source.name);
}

VanteroConfigText configText(const ConfigSource &source)
{
    requireEightBit(source);
    if (isJpeg(source.bytes))
        return VanteroConfigText(imageComment(source), VanteroConfigText::Form::ImageComment);
    return VanteroConfigText(FileUtils::decodeText(source.bytes));
}

void warnOfLostSection(const QString &text, const QString &name, Output &out)
{
    if (!text.startsWith(QLatin1String("SECTION")))
        return;
    for (const Finding &finding : VanteroConfigText(text).findings())
        if (finding.code == QLatin1String("no-header"))
            out.warn(name, QStringLiteral("%1 (line %2)")
                               .arg(finding.message, QString::number(finding.range.line)));
}

namespace {

/** Whether something in @p text is not what is read: it is passed over, cut or taken otherwise. */
bool isLoss(const Finding &finding, const QString &text)
{
    static constexpr const char *codes[] = {
        "lost-in-header",        "text-behind-version",   "address-repeated",
        "address-not-read",      "title-at-start",        "no-blank-in-title",
        "blanks-around-address", "entry-outside-section", "section-without-name",
        "no-blank-before-name",  "blank-before-section"};
    if (finding.code == QLatin1String("no-header")) { // it begins with what is lost, if anything
        const int at = int(finding.range.offset);
        return at < text.size() && !QLatin1String("#\r\n").contains(text.at(at));
    }
    return std::any_of(std::begin(codes), std::end(codes),
                       [&](const char *code) { return finding.code == QLatin1String(code); });
}

} // namespace

std::optional<ToolError> lossOf(const VanteroConfigText &text, const QString &name)
{
    Findings losses = text.findings();
    const auto isNone = [&](const Finding &each) { return !isLoss(each, text.text()); };
    losses.erase(std::remove_if(losses.begin(), losses.end(), isNone), losses.end());
    return warningOf(losses, name, "config lint");
}

namespace {

/** Calls @p use for each line of @p text from @p begin on, without its end, until it returns true;
 * returns where that line begins, or the end. */
template <typename Use>
int findLine(const QString &text, int begin, Use &&use)
{
    while (begin < text.size()) {
        const int found = text.indexOf(QLatin1Char('\n'), begin);
        const int end = found < 0 ? text.size() : found;
        QStringView line(text.constData() + begin, end - begin);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (use(line))
            break;
        begin = end + 1;
    }
    return std::min(begin, text.size());
}

int endOfHeader(const QString &text)
{
    int number = 0;
    return findLine(text, 0, [&](QStringView line) { return ++number > 2 && line.isEmpty(); });
}

/** Whether @p line, which is behind the header, may not be read as it looks. */
bool isSuspicious(QStringView line, bool &isInSection)
{
    if (line.isEmpty())
        return false;
    const QChar first = line.front();
    if (first == QLatin1Char('#'))
        return line.startsWith(QLatin1String("# Camera IP"));
    const QLatin1String mark(first == QLatin1Char('S') ? "SECTION" : "ENDSECTION");
    if ((first == QLatin1Char('S') || first == QLatin1Char('E')) && line.startsWith(mark)) {
        isInSection = first == QLatin1Char('S');
        return line.size() <= mark.size() + 1 || line.at(mark.size()) != QLatin1Char(' ');
    }
    return !isInSection || first.isSpace();
}

} // namespace

std::optional<ToolError> headerLossOf(const QString &text, const QString &name)
{
    return lossOf(VanteroConfigText(text.left(endOfHeader(text))), name);
}

std::optional<ToolError> quickLossOf(const QString &text, const QString &name)
{
    bool isInSection = false;
    const int suspicious = findLine(
        text, endOfHeader(text), [&](QStringView line) { return isSuspicious(line, isInSection); });
    if (suspicious == text.size() && !headerLossOf(text, name))
        return std::nullopt;
    return lossOf(VanteroConfigText(text), name);
}

namespace {

void warnOfLosses(const VanteroConfigText &text, const QString &name, Output &out)
{
    if (out.json()) // which has no place for it
        return;
    if (const auto loss = lossOf(text, name))
        out.complain(*loss);
}

} // namespace

ConfigInput readConfig(const ConfigSource &source, Output &out)
{
    ConfigInput result;
    if (!isJpeg(source.bytes)) {
        requireText(source);
        const QString text = FileUtils::decodeText(source.bytes);
        bool hasVersionLines = false;
        result.config = parseConfig(text, source.name, &hasVersionLines);
        result.hasVersionLines = hasVersionLines;
        if (result.config.allSectionKeys().isEmpty()) // hardly a configuration, then
            warnOfLostSection(text, source.name, out);
        else
            warnOfLosses(VanteroConfigText(text), source.name, out);
        return result;
    }
    const QString comment = imageComment(source);
    try {
        result.config.parseJpegComment(comment);
    } catch (const ExceptionQt &e) {
        throw ToolError(ExitCode::BadInput, QLatin1String("image comment: ") + e.message())
            .at(source.name);
    }
    if (!result.config.allSectionKeys().isEmpty())
        warnOfLosses(VanteroConfigText(comment, VanteroConfigText::Form::ImageComment), source.name,
                     out);
    return result;
}

ConfigInput readConfig(const QString &name, Output &out)
{
    return readConfig(ConfigSource{name, readInput(name)}, out);
}

} // namespace vn::tool
