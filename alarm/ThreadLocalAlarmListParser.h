// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_THREADLOCALALARMLISTPARSER_H
#define VN_ALARM_THREADLOCALALARMLISTPARSER_H

#include "base/Export.h"

namespace vn {

class AlarmListParser;

/**
 * One AlarmListParser for each thread, so that code on any thread can parse without making one.
 * @code
 * const QVariant list = ThreadLocalAlarmListParser::instance()->parse(text);
 * @endcode
 * A parser lives until its thread ends, deleteInstance() is called there, or the library is
 * unloaded. While a thread other than the one that loaded the library has used it, the library
 * stays in memory until that thread has ended. The thread that loaded it does not keep it: what it
 * has goes with the library, on whatever thread that is closed.
 *
 * Threads: thread-safe; but mind what AlarmListParser says of quoted strings.
 * @since 1.0.0
 */
class VN_EXPORT ThreadLocalAlarmListParser
{
public:
    ThreadLocalAlarmListParser() = delete; // a name for functions only

    /** The parser of the calling thread, made (without a parent) on the first call. The store owns
     * it. */
    static AlarmListParser *instance();

    /** Deletes the parser of the calling thread, if it has one; instance() makes a new one. */
    static void deleteInstance();
};

} // namespace vn

#endif // VN_ALARM_THREADLOCALALARMLISTPARSER_H
