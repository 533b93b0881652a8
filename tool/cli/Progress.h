// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_PROGRESS_H
#define VN_TOOL_CLI_PROGRESS_H

#include <QtCore/QElapsedTimer>

namespace vn::tool {

/**
 * A bar on standard error that tells how far long work has come. It appears when the work has taken
 * half a second, and only on a terminal that can take it back.
 */
class Progress
{
public:
    /** A bar for @p total steps; one that is not @p wanted never appears. */
    Progress(int total, bool wanted);
    /** Takes the bar back. */
    ~Progress();

    Progress(const Progress &) = delete; // there is one line for it
    Progress &operator=(const Progress &) = delete;

    /** Counts one more step as done. */
    void advance();

    /** Takes the bar back, so that something else can be written; the next step shows it again. */
    void hide();

private:
    int m_total;
    int m_done = 0;
    bool m_possible;
    bool m_visible = false;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceDrawn;
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_PROGRESS_H
