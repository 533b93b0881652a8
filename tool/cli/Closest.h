// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_CLOSEST_H
#define VN_TOOL_CLI_CLOSEST_H

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn::tool {

/** The one of @p words that @p word may be a slip of: in other letter case, with few characters
 * wrong, or cut short. Null where there is none. */
QString closest(const QString &word, const QStringList &words);

/** "; did you mean WORD?" with the closest() of @p words. Empty where there is none. */
QString didYouMean(const QString &word, const QStringList &words);

} // namespace vn::tool

#endif // VN_TOOL_CLI_CLOSEST_H
