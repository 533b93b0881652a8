// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigExaminer.h"

#include "tool/files/ConfigInput.h"
#include "tool/files/JpegComment.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/StringUtils.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

#include <algorithm>
#include <utility>

namespace vn::tool {

namespace {

using Found = ConfigCollector::Found;
using Outcome = ConfigSources::Outcome;
using Status = ConfigCollector::Status;

/** How far the sections of @p text can be read, where not all can. */
BrokenSections countSections(const QString &text, VanteroConfigText::Form form)
{
    const VanteroConfigText places(text, form);
    BrokenSections result{0, 0, 0};
    const Findings findings = places.findings();
    const auto first = std::find_if(findings.begin(), findings.end(), [](const Finding &each) {
        return each.severity == Finding::Severity::Error;
    });
    if (first != findings.end())
        result.line = first->range.line;
    const int headerEnd = places.outline().header.range.endLine;
    const QVector<QStringRef> lines = text.splitRef(QLatin1Char('\n'));
    for (int i = form == VanteroConfigText::Form::Configuration ? headerEnd : 0; i < lines.size();
         ++i) {
        result.all += lines.at(i).startsWith(QLatin1String("SECTION")) ? 1 : 0;
        const bool isRead = i + 1 < result.line;
        result.readable += isRead && lines.at(i).startsWith(QLatin1String("ENDSECTION")) ? 1 : 0;
    }
    return result;
}

} // namespace

void describeSites(Arguments &arguments)
{
    arguments.describe(
        "A file counts when its first two lines tell the versions, a camera's JPEG image when its "
        "comment has sections. An archive is what has a name that ends with \".zip\"; of its "
        "entries those count whose names end with \"cfg\", and such images (\"jpg\", \"jpeg\"). "
        "In folders, which are gone through by name, hidden entries and symbolic links are passed "
        "over.");
    arguments.describe(
        "What cannot be read is reported, the rest goes on, and the exit status is 2; so it is for "
        "texts that are not readable to their end. The order of results is that of the sources, "
        "however many threads read. SIGINT ends the work in good order.");
}

QString BrokenSections::toString() const
{
    const QString text = QStringLiteral("%1 of %2 sections readable").arg(readable).arg(all);
    return line > 0 ? text + QStringLiteral(", line %1").arg(line) : text;
}

ConfigExaminer::ConfigExaminer(const ConfigSources &sources, ConfigSelection selection, Look look)
    : m_sources(sources)
    , m_selection(std::move(selection))
    , m_look(std::move(look))
{
}

Outcome ConfigExaminer::operator()(const Found &found) const
{
    Outcome outcome;
    ScannedConfig config;
    config.path = found.path;
    config.entry = found.entry;
    config.source = nameOf(found);
    config.bytes = found.bytes;
    const bool isText = found.status == Status::Configuration &&
                        (found.entry.isNull() ||
                         StringUtils::endsWithIgnoreCase(found.entry, QStringLiteral("cfg")));
    if (isText)
        readText(found, std::move(config), outcome);
    else if (isJpeg(found.bytes))
        readImage(found, std::move(config), outcome);
    else
        outcome.fault = m_sources.faultOf(found);
    return outcome;
}

void ConfigExaminer::readText(const Found &found, ScannedConfig &&config, Outcome &outcome) const
{
    config.address = found.factoryIp;
    config.firmware = found.softwareVersion;
    VanteroConfigMap values;
    try {
        (void)m_selection.parse(found.text, values);
    } catch (const ParseException &) {
        // What was read before counts.
        config.broken = countSections(found.text, VanteroConfigText::Form::Configuration);
    }
    if (!config.broken)
        outcome.fault = quickLossOf(found.text, config.source);
    finish(std::move(config), values, outcome);
}

void ConfigExaminer::readImage(const Found &found, ScannedConfig &&config, Outcome &outcome) const
{
    const QString comment = FileUtils::decodeText(jpegComment(found.bytes, config.source));
    VanteroConfigFile file;
    try {
        file.parseJpegComment(comment);
    } catch (const ParseException &) {
        config.broken = countSections(comment, VanteroConfigText::Form::ImageComment);
    }
    if (file.allSectionKeys().isEmpty() && !config.broken) {
        if (found.isNamed)
            outcome.fault = ToolError::warning(QStringLiteral("no configuration: the comment of "
                                                              "the image has no sections"))
                                .because(QStringLiteral("no-configuration"))
                                .at(config.source);
        return;
    }
    if (!config.broken)
        outcome.fault = lossOf(VanteroConfigText(comment, VanteroConfigText::Form::ImageComment),
                               config.source);
    config.isImage = true;
    config.address = file.getFactoryIP();
    config.firmware = file.getSoftwareVersion();
    finish(std::move(config), file.map(), outcome);
}

void ConfigExaminer::finish(ScannedConfig &&config, const VanteroConfigMap &values,
                            Outcome &outcome) const
{
    if (config.broken)
        outcome.fault = ToolError(ExitCode::BadInput, config.broken->toString())
                            .because(QStringLiteral("sections-broken"))
                            .at(config.source);
    outcome.result = m_look(std::move(config), values);
}

} // namespace vn::tool
