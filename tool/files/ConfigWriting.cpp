// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigWriting.h"

#include "config/ConfigDiff.h"

#include <iterator>

namespace vn::tool {

namespace {

/** Takes the oldest value of a header key out of @p map, for the header, which is read first; null
 * where there is none that a line of the header can hold. */
QString takeOldest(VanteroConfigMap &map, const QString &key)
{
    VanteroConfigMap::Section &head = map.section(VanteroConfigFile::HEAD_SECTION);
    if (!head.contains(key))
        return QString();
    const auto oldest = std::prev(head.upperBound(key));
    const QString value = oldest.value();
    if (!value.isNull())
        head.erase(oldest);
    return value;
}

QString header(VanteroConfigMap &map, bool hasVersionLines)
{
    const QString lineEnd(QLatin1Char('\n'));
    if (!hasVersionLines)
        return lineEnd + lineEnd;
    const QString fileVersion = takeOldest(map, VanteroConfigFile::FILE_VERSION);
    const QString softwareVersion = takeOldest(map, VanteroConfigFile::SOFTWARE_VERSION);
    const QString address = takeOldest(map, VanteroConfigFile::FACTORY_IP);
    if (!fileVersion.isNull() && !softwareVersion.isNull()) {
        VanteroConfigFile versions;
        versions.setFileVersion(fileVersion);
        versions.setSoftwareVersion(softwareVersion);
        return headerText(versions, address);
    }
    const auto line = [](const char *mark, const QString &value) {
        return value.isNull() ? QString() : QString::fromLatin1(mark) + value;
    };
    const QString addressLine = line("# Camera IP: ", address);
    return line("#:", fileVersion) + lineEnd + line("#:", softwareVersion) + lineEnd + addressLine +
           (addressLine.isEmpty() ? QString() : lineEnd);
}

} // namespace

QString headerText(const VanteroConfigFile &config, const QString &address)
{
    QString text = config.makeHeader();
    if (address.isNull())
        return text;
    int titleEnd = 0;
    for (int line = 0; line < 3; ++line)
        titleEnd = text.indexOf(QLatin1Char('\n'), titleEnd) + 1;
    return text.insert(titleEnd, QLatin1String("# Camera IP: ") + address + QLatin1Char('\n'));
}

VanteroConfigMap oldestFirst(const VanteroConfigMap &map)
{
    VanteroConfigMap reversed;
    for (const QString &name : map.allSectionKeys()) {
        const VanteroConfigMap::Section &section = map.section(name);
        reversed.replaceSection(name, {});
        // Added in this order, newest first, the oldest value comes to stand first.
        for (auto it = section.begin(); it != section.end(); ++it)
            reversed.addValue(name, it.key(), it.value());
    }
    return reversed;
}

bool saysTheSame(const VanteroConfigMap &a, const VanteroConfigMap &b)
{
    for (const ConfigSectionDifference &section : configDiff(a, b))
        for (const ConfigKeyDifference &key : section.keys)
            if (key.kind != ConfigKeyDifference::Kind::NullAgainstEmpty)
                return false;
    return true;
}

QString textOf(const VanteroConfigMap &map, bool hasVersionLines)
{
    VanteroConfigMap rest = map;
    QString text = header(rest, hasVersionLines);
    rest = oldestFirst(rest);
    for (const QString &name : rest.allSectionKeys()) {
        const VanteroConfigMap::Section &section = qAsConst(rest).section(name);
        if (section.isEmpty() && name == VanteroConfigFile::HEAD_SECTION)
            continue;
        text += QLatin1String("\nSECTION ") + name + QLatin1Char('\n');
        for (auto it = section.begin(); it != section.end(); ++it)
            text += (it.value().isNull() ? it.key() : it.key() + QLatin1Char('=') + it.value()) +
                    QLatin1Char('\n');
        text += QLatin1String("ENDSECTION ") + name + QLatin1Char('\n');
    }
    // A "\r" at the end of a value is none of it unless another one follows.
    if (text.contains(QLatin1String("\r\n")))
        text.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return text;
}

} // namespace vn::tool
