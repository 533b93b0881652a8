// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_VERSION_UPDATERULES_H
#define VN_VERSION_UPDATERULES_H

/**
 * @file
 * The rules of safe updates as values, for programs that show or explain them. What decides is
 * VanteroSoftwareVersion::isSafe(); these come from the same table.
 */

#include "base/Export.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn {

/**
 * One rule: which cameras it concerns, and which versions it asks of their next update.
 * @since 1.0.0
 */
struct UpdateRule
{
    /** What a rule that concerns a camera does with an update. */
    enum class Effect {
        Decides, ///< It allows or refuses; no later rule is asked.
        Refuses, ///< It only refuses; what it allows goes on to the next rules.
    };

    /** Its name, as in SafeUpdateVerdict::rule: "k40-step". It never changes its meaning. */
    QString identifier;
    /** The platform of current versions that it concerns: "VN"; empty for any. */
    QString platform;
    /** What the models that it concerns begin with, case-sensitive: "K40"; "?" is any character.
     * Empty for any model. */
    QStringList models;
    /** The current versions that it concerns: "VN-3.0.3.*", "VN-3.0.8.* or later", "any version".
     */
    QString current;
    /** Whether later rules are asked. */
    Effect effect = Effect::Decides;
    /** What connects cameras and target in the sentence: "must first be updated to". */
    QString demand;
    /** The versions that it allows: "VN-3.0.6.29 or later", "their platform", "any version". */
    QString target;
    /** The whole rule in one English sentence without a full stop, as in
     * SafeUpdateVerdict::sentence. */
    QString sentence;
};

/**
 * Models of cameras that no rule tells apart.
 * @since 1.0.0
 */
struct UpdateModelClass
{
    /** What their names begin with, case-sensitive: "K30" and "H30"; "?" is any character. Empty
     * for all models that begin otherwise, which are the last class. */
    QStringList beginnings;

    /** The class in words: "K30, H30", "other models". */
    QString name;

    /** A model of this class, for VanteroSoftwareVersion::isSafe() and the like: "K30". */
    QString example;
};

/**
 * The table of rules.
 * @code
 * for (const vn::UpdateRule &rule : vn::UpdateRules::all())
 *     qInfo() << rule.identifier << rule.sentence;
 * @endcode
 * Threads: all functions are thread-safe. They report nothing.
 * @since 1.0.0
 */
class VN_EXPORT UpdateRules
{
public:
    UpdateRules() = delete; // a name for functions only

    /** The rules in the order in which they are asked; the last one, "none", allows everything. */
    [[nodiscard]] static QList<UpdateRule> all();

    /** The classes of models, in the order in which the rules first name them; the other models
     * last. Every model belongs to exactly one. */
    [[nodiscard]] static QList<UpdateModelClass> modelClasses();

    /** The index in modelClasses() of the class of @p model: that of "K40D" is that of "K40"; any
     * text has one, an empty one that of the other models. */
    [[nodiscard]] static int modelClass(const QString &model);
};

} // namespace vn

#endif // VN_VERSION_UPDATERULES_H
