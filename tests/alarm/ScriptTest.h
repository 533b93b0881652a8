// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_SCRIPTTEST_H
#define VN_TESTS_ALARM_SCRIPTTEST_H

#include <QtCore/QCoreApplication>
#include <QtScript/QScriptEngine>

#include <gtest/gtest.h>

/** A test with a script engine, which needs an application around it. */
class ScriptTest : public testing::Test
{
private:
    int m_argc = 1;
    char m_name[5] = "test";
    char *m_argv[2] = {m_name, nullptr};
    QCoreApplication m_application{m_argc, m_argv};

protected:
    QScriptEngine m_engine;
};

#endif // VN_TESTS_ALARM_SCRIPTTEST_H
