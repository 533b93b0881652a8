// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SOURCELIST_H
#define BROWSER_SOURCELIST_H

#include "Problem.h"

#include <QtCore/QStringList>

#include <functional>
#include <vector>

namespace browser {

/** A file that may hold what is looked for. */
struct Source
{
    enum class Kind { Configuration, Archive, AlarmList };

    QString path; // absolute
    Kind kind;
    bool isNamed; // by the user, and not found in a folder
};

/**
 * The files of @p paths, in their order; of folders all that is in them, hidden files and links
 * left out. What is not there goes to @p report. Ends early when @p isCancelled says so.
 */
std::vector<Source> listSources(const QStringList &paths,
                                const std::function<void(const Problem &)> &report,
                                const std::function<bool()> &isCancelled);

} // namespace browser

#endif // BROWSER_SOURCELIST_H
