// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_VANTEROCONFIGTEXTNAMES_P_H
#define VN_CONFIG_VANTEROCONFIGTEXTNAMES_P_H

#include <QtCore/QStringView>

#include <vector>

namespace vn::internal {

/** A section, and where who searches a text for the words of its first and last line must find
 * them first. */
struct NamedSection
{
    QStringView name;
    qsizetype start;         // of its first line
    qsizetype end;           // of its last line
    qsizetype mistaken = -1; // where the words stand before one of these; -1 where they do not
};

/** Finds out where VanteroConfigFile::replaceSection() would take something else for a section.
 * @p sections have distinct names; they are sorted. */
void findMistakenNames(QStringView text, std::vector<NamedSection> &sections);

} // namespace vn::internal

#endif // VN_CONFIG_VANTEROCONFIGTEXTNAMES_P_H
