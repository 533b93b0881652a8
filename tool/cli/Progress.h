// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_PROGRESS_H
#define VN_TOOL_CLI_PROGRESS_H

#include <QtCore/QElapsedTimer>

#include <optional>

namespace vn::tool {

/**
 * A line on standard error that tells how far long work has come: files, bytes, rate, time left.
 * It appears when the work has taken half a second, and only on a terminal that can take it back.
 */
class Progress
{
public:
    /** A line that is not @p wanted never appears. */
    explicit Progress(bool wanted);
    /** Takes the line back. */
    ~Progress();

    Progress(const Progress &) = delete; // there is one line for it
    Progress &operator=(const Progress &) = delete;

    /** Whether the line may appear; where it may not, nobody needs to ask how much there is. */
    bool isPossible() const;

    /** Tells that so much more is to come, where that is known: then a bar and the time left are
     * shown. */
    void expect(qint64 files, qint64 bytes);

    /** Counts one more file, of @p bytes, as done. */
    void advance(qint64 bytes);

    /** Takes the line back, so that something else can be written; the next step shows it again. */
    void hide();

private:
    QByteArray line() const;

    const bool m_wanted;
    mutable std::optional<bool> m_isTerminal; // asked when it matters
    bool m_visible = false;
    qint64 m_files = 0;
    qint64 m_bytes = 0;
    qint64 m_totalFiles = -1;
    qint64 m_totalBytes = -1;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceDrawn;
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_PROGRESS_H
