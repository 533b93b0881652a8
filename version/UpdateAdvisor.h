// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_UPDATEADVISOR_H
#define VN_VERSION_UPDATEADVISOR_H

/**
 * @file
 * Advice on updates for people who must not be misled: whether an update is safe, with a yes only
 * where nothing is guessed, and which way there is where it is not.
 */

#include "base/Export.h"

#include "version/UpdateRules.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn {

/**
 * A rule that refuses an update.
 * @since 1.0.0
 */
struct UpdateReason
{
    /** The identifier of the rule: "k40-step". */
    QString rule;
    /** The rule in one English sentence, without a full stop. */
    QString sentence;
};

/**
 * What becomes of an update on one class of models.
 * @since 1.0.0
 */
struct UpdateClassVerdict
{
    /** The models. */
    UpdateModelClass models;
    /** Whether the update is safe on them. */
    bool safe = false;
    /** Every rule that refuses it, in the order of the rules; empty where it is safe. */
    QList<UpdateReason> reasons;
};

/**
 * What is to be said of an update.
 * @since 1.0.0
 */
struct UpdateJudgement
{
    /** The answer; only `Safe` is a yes. */
    enum class Verdict {
        Safe,    ///< The update is safe, on every model where none was given.
        Unsafe,  ///< A rule refuses it, on every model where none was given.
        Depends, ///< No model was given, and it is safe on some and unsafe on others.
        Unknown, ///< It cannot be judged: see obstacles.
    };

    /** The answer. */
    Verdict verdict = Verdict::Unknown;

    /** Every rule that refuses the update, in the order of the rules; where it depends on the
     * model, on any of them. Empty where it is safe and where it cannot be judged. */
    QList<UpdateReason> reasons;

    /** Where it depends on the model: a row for each class of UpdateRules::modelClasses(), in that
     * order; otherwise empty. */
    QList<UpdateClassVerdict> classes;

    /** Why it cannot be judged, a sentence each without a full stop; empty where it can. */
    QStringList obstacles;

    /** Models that may have been meant, where that is what keeps it from being judged: "H40" for
     * "h40". */
    QStringList candidates;
};

/**
 * One step of a way.
 * @since 1.0.0
 */
struct UpdateHop
{
    /** The version to install. */
    VanteroSoftwareVersion version;
    /** The verdict on going there from the version before; safe. Where no model was given, that on
     * the other models. */
    SafeUpdateVerdict verdict;
};

/**
 * A way from one version to another, or how far one gets.
 * @since 1.0.0
 */
struct UpdatePlan
{
    /** Whether the target can be reached by safe updates. */
    bool reachable = false;

    /** The versions to install, in order, the target last. Empty where the camera has the target
     * already, where there is no way, and where there is nothing to judge. */
    QList<UpdateHop> hops;

    /** Where there is no way: of the versions that can be reached, the current one among them, the
     * one that is nearest to the target, coming from the side of the current one. Otherwise null.
     */
    VanteroSoftwareVersion nearest;

    /** The rules that refuse the update from there to the target, in the order of the rules. */
    QList<UpdateReason> blockedBy;

    /** What the first of them asks of the next package: "VN-3.0.6.29 or later". */
    QString needed;

    /** The lowest version at a limit of a rule that would open the way if a package of it were at
     * hand: "VN-3.0.6.29". Null where no single package would. */
    VanteroSoftwareVersion bridge;

    /** Why nothing can be planned, as in UpdateJudgement; empty where it can. */
    QStringList obstacles;

    /** Models that may have been meant, as in UpdateJudgement. */
    QStringList candidates;

    /** The versions at hand that were left out: patterns, and those that cannot be judged. */
    QList<VanteroSoftwareVersion> leftOut;
};

/**
 * A version that is offered, and how it may be installed.
 * @since 1.0.0
 */
struct InstallableVersion
{
    /** How it may be installed. */
    enum class Way {
        Directly, ///< By one safe update; also where the camera has it already.
        ByPlan,   ///< By several safe updates.
        Never,    ///< Not at all with the versions at hand.
        Unknown,  ///< It cannot be judged.
    };

    /** The version. */
    VanteroSoftwareVersion version;
    /** How it may be installed. */
    Way way = Way::Unknown;
    /** The rules that refuse the update to it from the current version; empty where it is direct or
     * cannot be judged. */
    QList<UpdateReason> reasons;
    /** The way there, or what keeps from it. */
    UpdatePlan plan;
};

/**
 * Judges and plans updates by the rules of VanteroSoftwareVersion::isSafe().
 *
 * A model, a version or a text that may mean something else is not judged:
 * - a version without a known platform;
 * - a pattern, which also is what a pre-release other than `pre` makes of a version;
 * - a version whose text has a part that is no number, or one that does not fit
 *   (VersionLint: "number-unreadable", "number-cut", "number-too-large", "foreign-digits");
 * - a model that is no K40, say, but would be one in capital letters or without its blanks.
 *
 * Threads: all functions are reentrant. They raise nothing.
 * @since 1.0.0
 */
class VN_EXPORT UpdateAdvisor
{
public:
    UpdateAdvisor() = delete; // a name for functions only

    /**
     * What is to be said of the update of a camera of the @p model from @p current to @p target.
     * Without a model (an empty text) the update is judged on every class of models.
     * Where it is judged and a model is given, `Safe` is what isSafe() says, too.
     * @code
     * UpdateAdvisor::judge("h40", "VN-3.0.8.7", "VN-3.0.6.2").candidates; // H40
     * UpdateAdvisor::judge("H40", "VN-3.0.8.7", "VN-3.0.6.2").reasons;    // h40-return
     * @endcode
     */
    [[nodiscard]] static UpdateJudgement judge(const QString &model,
                                               const VanteroSoftwareVersion &current,
                                               const VanteroSoftwareVersion &target);

    /**
     * The shortest way of safe updates from @p current to @p target by way of versions of
     * @p available. Of ways of the same length it is the one whose first version is highest; of
     * those with the same first one, the one whose second is highest, and so on; of versions with
     * the same numbers the first one counts. The target need not be among the available ones.
     * Without a model every update has to be safe on every class of models.
     *
     * Takes time and memory that grow with the square of the number of versions at the most.
     */
    [[nodiscard]] static UpdatePlan plan(const QString &model,
                                         const VanteroSoftwareVersion &current,
                                         const VanteroSoftwareVersion &target,
                                         const QList<VanteroSoftwareVersion> &available);

    /**
     * For each of @p versions, in their order, how a camera of the @p model that runs @p current
     * may get it, by way of the others where need be. The plans are those of plan().
     */
    [[nodiscard]] static QList<InstallableVersion>
    installable(const QString &model, const VanteroSoftwareVersion &current,
                const QList<VanteroSoftwareVersion> &versions);
};

} // namespace vn

#endif // VN_VERSION_UPDATEADVISOR_H
