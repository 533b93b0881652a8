// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_MODELNAMES_H
#define BROWSER_MODELNAMES_H

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QString>

namespace browser {

/**
 * The models of cameras by their factory address, which stays with a camera. No
 * configuration tells them: the user does, or a table; they are remembered from
 * one start to the next.
 */
class ModelNames
{
public:
    ModelNames();

    QString at(const QString &address) const { return m_names.value(address); }
    void set(const QString &address, const QString &model);

    /** Takes them from lines "address,model", also with ";" or a tab between and
     * more columns behind. Lines without an address, a heading for one, are
     * passed over. Returns how many there were. */
    int readCsv(const QByteArray &csv);

private:
    void save() const;

    QHash<QString, QString> m_names;
};

/** Whether the rules of updates name the class of @p model. */
bool isNamedByRules(const QString &model);

} // namespace browser

#endif // BROWSER_MODELNAMES_H
