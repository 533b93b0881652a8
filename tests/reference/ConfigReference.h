// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_REFERENCE_CONFIGREFERENCE_H
#define VN_TESTS_REFERENCE_CONFIGREFERENCE_H

/** @file Configurations read, and sections of texts spliced and removed, as plainly as it can be
 * put. */

#include <QtCore/QMap>
#include <QtCore/QMultiMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace reference {

using Section = QMultiMap<QString, QString>;

/** What loading a text gives. */
struct Configuration
{
    bool isComplete = false; // both lines of the header were found, and there was no error
    QString error;
    QMap<QString, Section> sections; // those of the header included
};

/** The lines of @p text as a QTextStream reads them: without "\n" or "\r\n". */
QStringList linesOf(const QString &text);

/** Takes the header from the front of @p lines; whether both its lines were there. */
bool readHeader(QStringList &lines, QMap<QString, Section> &sections);

/** A whole configuration, or one without a header. */
Configuration loaded(const QString &text, bool hasHeader = true);

QString replaceSection(const QString &target, const QString &source, const QString &section);

QString removeSections(const QString &text, const QStringList &sections, bool dropOuterComments,
                       bool dropSectionComments, bool dropEmptyLines);

} // namespace reference

#endif // VN_TESTS_REFERENCE_CONFIGREFERENCE_H
