// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_UPDATEVERDICT_H
#define BROWSER_UPDATEVERDICT_H

#include <QtCore/QString>

namespace browser {

/** What is known of an update of one camera. */
struct UpdateVerdict
{
    enum class Answer { Safe, NotSafe, Unknown };

    Answer answer;
    QString step;   // "upgrade", "downgrade", "same version"
    QString reason; // the rule in words, or what is not known
    QString rule;   // its identifier; null where no version is known

    /** "Safe", "Not safe" or "Unknown". */
    QString answerText() const;
};

/** Judges the update of a camera of @p model from the version @p current to @p target. */
UpdateVerdict judgeUpdate(const QString &model, const QString &current, const QString &target);

} // namespace browser

#endif // BROWSER_UPDATEVERDICT_H
