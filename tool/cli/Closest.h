// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_CLOSEST_H
#define VN_TOOL_CLI_CLOSEST_H

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vn::tool {

/** "; did you mean WORD?" with the one of @p words that @p word may be a slip of: in other letter
 * case, or with few characters wrong. Empty where there is none. */
QString didYouMean(const QString &word, const QStringList &words);

} // namespace vn::tool

#endif // VN_TOOL_CLI_CLOSEST_H
