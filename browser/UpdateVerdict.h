// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_UPDATEVERDICT_H
#define BROWSER_UPDATEVERDICT_H

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace browser {

/** What is known of an update of one camera. */
struct UpdateVerdict
{
    enum class Answer {
        Safe,    // on this model, which is known
        NotSafe, // on this model, or on all where none is known
        Depends, // on the model, which is not known
        Unknown,
    };

    Answer answer;
    QString step;   // "upgrade", "downgrade", "same version"
    QString reason; // the rule in words, or what is not known
    QString rule;   // its identifier; null where none was asked
    QString wayOut; // of a no: what would have to be installed before; null where
                    // nothing is known

    /** "Safe", "Not safe", "Depends on the model" or "Unknown". */
    QString answerText() const;
};

/** Judges the update of a camera of @p model, which may be empty, from the
 * version @p current to
 * @p target. It is safe only on a model that is known. A way out goes by the
 * versions that are
 * @p available, where there is one. */
UpdateVerdict judgeUpdate(const QString &model, const QString &current, const QString &target,
                          const QList<vn::VanteroSoftwareVersion> &available = {});

} // namespace browser

#endif // BROWSER_UPDATEVERDICT_H
