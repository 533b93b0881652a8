// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_PROBLEM_H
#define BROWSER_PROBLEM_H

#include <QtCore/QString>

namespace browser {

/** Something that could not be read. */
struct Problem
{
    QString file;
    QString place; // in the file: an entry of an archive, a line; empty where it is the file
    QString reason;
};

} // namespace browser

#endif // BROWSER_PROBLEM_H
