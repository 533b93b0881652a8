// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_LOADING_PLUGIN_H
#define VN_TESTS_LOADING_PLUGIN_H

/** @file What the test program asks of the plugin, which links the library. */

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QRegExp>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

/** Values of Qt's classes that came from the library and outlive it. */
struct Kept
{
    /** Whether to visit every text that the library can hand out, which takes longer. */
    bool everyText = false;
    QStringList texts;
    QList<QMultiMap<QString, QString>> sections;
    QVariantList variants;
    QList<QRegExp> patterns;
};

/** The plugin's function "use": uses every part of the library once and hands out copies. */
using UseFunction = void (*)(Kept &kept);

/** The plugin's function "useList": @p first becomes the last string of the alarm list @p text. */
using UseListFunction = void (*)(const char *text, QString &first);

#endif // VN_TESTS_LOADING_PLUGIN_H
