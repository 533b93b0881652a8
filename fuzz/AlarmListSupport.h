// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_ALARMLISTSUPPORT_H
#define VN_FUZZ_ALARMLISTSUPPORT_H

/** @file Alarm lists parsed by the library, in the words of AlarmReference.h. */

#include "AlarmReference.h"
#include "Support.h"

#include "alarm/AlarmListParser.h"
#include "base/Exceptions.h"

#include <QtCore/QVariant>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

inline QString textOf(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return reference::ofNull();
    case QMetaType::Bool:
        return reference::ofBool(value.toBool());
    case QMetaType::Double:
        return reference::ofNumber(value.toDouble());
    case QMetaType::QString:
        return reference::ofText(value.toString());
    case QMetaType::QVariantList: {
        QStringList values;
        const QVariantList list = value.toList();
        for (const QVariant &element : list)
            values += textOf(element);
        return reference::ofList(values);
    }
    case QMetaType::QVariantMap: {
        QList<QPair<QString, QString>> entries;
        const QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            entries.append({it.key(), textOf(it.value())});
        return reference::ofMap(entries);
    }
    default:
        return QStringLiteral("a value of another type");
    }
}

/** Runs @p parse and compares how it ends with @p expected. */
inline void checkOutcome(const std::function<QString()> &parse, const reference::Outcome &expected)
{
    try {
        const QString value = parse();
        FUZZ_EQUAL(expected.message, QString());
        FUZZ_EQUAL(value, expected.value);
    } catch (const vn::ParseException &e) {
        FUZZ_CHECK(!expected.isAccepted);
        FUZZ_EQUAL(e.message(), expected.message);
        FUZZ_CHECK(e.startLine() == 0 && e.endLine() == 0);
        FUZZ_CHECK(e.startColumn() == expected.start);
        FUZZ_CHECK(e.endColumn() == expected.end);
    }
}

/** Runs @p parse in a process of its own, which must end with exit status 2 and the message. */
inline void checkEndsProcess(const std::function<void()> &parse)
{
    int ends[2];
    FUZZ_CHECK(::pipe(ends) == 0);
    const pid_t child = ::fork();
    FUZZ_CHECK(child >= 0);
    if (child == 0) {
        ::dup2(ends[1], STDERR_FILENO);
        // The fuzzer takes an exit for a failure; this is asked before it.
        ::on_exit([](int status, void *) { ::_exit(status); }, nullptr);
        ::alarm(5);
        parse();
        ::_exit(99);
    }
    ::close(ends[1]);
    QByteArray message;
    char buffer[256];
    ssize_t count = 0;
    do { // the fuzzer's timer interrupts
        count = ::read(ends[0], buffer, sizeof buffer);
        message.append(buffer, int(std::max<ssize_t>(count, 0)));
    } while (count > 0 || (count < 0 && errno == EINTR));
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        FUZZ_CHECK(errno == EINTR);
    // A thread of the fuzzer may have held a lock when the process was made.
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return;
    FUZZ_CHECK(WIFEXITED(status) && WEXITSTATUS(status) == 2);
    FUZZ_CHECK(message == "flex scanner jammed\n");
}

/** Processes are slow to make: one in eight inputs that call for one gets it. */
inline bool isChosen(const std::uint8_t *data, std::size_t size)
{
    return qHashBits(data, size) % 8 == 0;
}

#endif // VN_FUZZ_ALARMLISTSUPPORT_H
