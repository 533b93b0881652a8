// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGREDACTIONSHAPES_P_H
#define VN_CONFIG_CONFIGREDACTIONSHAPES_P_H

/** @file What looks like a secret in one line. Each search is one pass over the line: a line may be
 * as long as a text. */

#include "config/ConfigRedaction.h"

#include <QtCore/QStringView>

#include <vector>

namespace vn::internal {

/** A piece of a line, from `begin` up to and without `end`. */
struct SecretSpan
{
    qsizetype begin;
    qsizetype end;
    ConfigRedaction::Reason reason;
};

using SecretSpans = std::vector<SecretSpan>;

/** Names with "*" for any characters. */
class SecretNames
{
public:
    explicit SecretNames(const QStringList &names);

    /** Whether @p name, or its letters alone, are one of the names; case does not count. */
    bool contain(QStringView name) const;

private:
    QStringList m_names; // in lower case
};

/** Values behind such names: `password=…`, `"password": "…"`, `<password>…<`. What findUrls() has
 * put into @p spans is looked over: a user may be called "user". */
void findAssignments(QStringView line, const SecretNames &names, SecretSpans &spans);

/** User names and passwords of URLs. */
void findUrls(QStringView line, SecretSpans &spans);

/** Tokens and hashes that show by how they begin. */
void findShapes(QStringView line, SecretSpans &spans);

/** PEM blocks, which may go on over lines. @p inside tells whether one is open; it is set to what
 * holds at the end of the line. */
void findPem(QStringView line, bool &inside, SecretSpans &spans);

} // namespace vn::internal

#endif // VN_CONFIG_CONFIGREDACTIONSHAPES_P_H
