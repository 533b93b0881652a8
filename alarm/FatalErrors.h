// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_FATALERRORS_H
#define VN_ALARM_FATALERRORS_H

namespace vn {

/**
 * What an alarm parser does where its scanner cannot go on: no rule matches, standard input cannot
 * be read, or there is no memory.
 * @since 1.0.0
 */
enum class FatalErrors {
    EndProcess, ///< Writes the message to standard error and ends the process with status 2.
    Throw,      ///< Throws a ParseException with the message, at the last token; nothing leaks.
};

} // namespace vn

#endif // VN_ALARM_FATALERRORS_H
