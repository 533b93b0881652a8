// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_QTPRINTERS_H
#define VN_TESTS_SUPPORT_QTPRINTERS_H

/** @file Lets GoogleTest print Qt's values readably. */

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <ostream>

QT_BEGIN_NAMESPACE

inline void PrintTo(const QString &text, std::ostream *out)
{
    if (text.isNull())
        *out << "(null)";
    else
        *out << '"' << text.toUtf8().constData() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.constData() << "\" (hex " << bytes.toHex(' ').constData() << ')';
}

inline void PrintTo(const QStringList &list, std::ostream *out)
{
    *out << '[';
    for (int i = 0; i < list.size(); ++i) {
        *out << (i ? ", " : "");
        PrintTo(list.at(i), out);
    }
    *out << ']';
}

QT_END_NAMESPACE

#endif // VN_TESTS_SUPPORT_QTPRINTERS_H
