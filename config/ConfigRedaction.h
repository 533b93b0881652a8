// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGREDACTION_H
#define VN_CONFIG_CONFIGREDACTION_H

/**
 * @file
 * A configuration that can be shown to others: its text with "***" in the place of secrets.
 *
 * `docs/redaction.md` says what is found, and what cannot be promised: a secret under a harmless
 * name looks like any other value. Read the result before you publish it.
 */

#include "base/Export.h"
#include "base/Finding.h"

#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn {

/**
 * The names of keys whose values are secrets: passwords, user names, tokens, community strings,
 * keys and certificates. "*" stands for any characters; case does not count. A name is compared as
 * it is and by its letters alone, so that "*key" finds "WPA_Key-2", too.
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT QStringList secretKeys();

/**
 * What is to be replaced.
 * @since 1.0.0
 */
struct ConfigRedactionRules
{
    /** Names of keys, as of secretKeys(). They count for keys, for the names of sections (all
     * values of which are then replaced), and for names inside values and comments:
     * `user=admin;password=secret`. */
    QStringList keys = secretKeys();
    /** Patterns of the caller, searched for in each line; of a match the first group is replaced,
     * or all of it where the pattern has no group. */
    QList<QRegularExpression> patterns;
};

/**
 * A place that was replaced, or should have been.
 * @since 1.0.0
 */
struct ConfigRedaction
{
    /** Why it counts as a secret. */
    enum class Reason {
        Key,        ///< The value of a key of this name.
        Section,    ///< A value in a section of this name.
        Assignment, ///< Behind such a name inside a value or comment.
        Url,        ///< User name or password of a URL.
        Shape,      ///< It looks like one: PEM, SSH key, JSON web token, hash of a password.
        Pattern,    ///< A pattern of the caller.
    };

    /** Why it counts as a secret. */
    Reason reason = Reason::Key;
    /** Where it stood in the text given. The result has the same lines, so the line counts there,
     * too. */
    TextRange range;
    /** The section that the line is in; null outside of sections. */
    QString section;
    /** The key of the line; null for comments and lines of sections. */
    QString key;
};

/**
 * A text without its secrets.
 * @since 1.0.0
 */
struct RedactedConfig
{
    /** The text with "***" in the place of each secret; everything else is as it was. */
    QString text;
    /** What was replaced, in the order of the text. Empty values and those that are "***" already
     * are not. */
    QList<ConfigRedaction> replaced;
    /** What looks like a secret but stays, as it is part of a key or the name of a section; in the
     * order of the text. Such as the lines of a certificate that was pasted in: each is a key. */
    QList<ConfigRedaction> left;
};

/**
 * A copy of the configuration text @p text with "***" in the place of its secrets, in values and
 * comments, the header's included.
 *
 * Nothing else changes: VanteroConfigFile::parse() finds the same sections with the same keys in
 * the result, as many values of each, or the same fault.
 * @code
 * const vn::RedactedConfig redacted = vn::redactConfig(FileUtils::readText(path));
 * // login=user=admin;password=secret   becomes   login=***
 * // url=ftp: user=admin;port=21        becomes   url=ftp: user=***;port=21
 * @endcode
 * A line that a pattern cannot be applied to (it is no UTF-16, or takes too many steps) is replaced
 * as if all of it had matched. Takes time in proportion to the text, but for the patterns of the
 * caller. Threads: reentrant.
 * @throws ParseException when a pattern is no regular expression; it holds the pattern and what is
 *         wrong with it, all positions are -1
 * @since 1.0.0
 */
[[nodiscard]] VN_EXPORT RedactedConfig
redactConfig(const QString &text, const ConfigRedactionRules &rules = ConfigRedactionRules());

} // namespace vn

#endif // VN_CONFIG_CONFIGREDACTION_H
