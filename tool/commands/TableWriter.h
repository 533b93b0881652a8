// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_TABLEWRITER_H
#define VN_TOOL_COMMANDS_TABLEWRITER_H

#include "tool/cli/Output.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

namespace vn::tool {

/** A row of `config table`: one configuration. */
struct TableRow
{
    QString address;  ///< null where the header has none
    QString firmware; ///< likewise
    QString source;
    std::vector<QStringList> values; ///< of the columns that were asked for
};

enum class TableFormat {
    Text,      ///< columns for people
    Csv,       ///< RFC 4180
    Json,      ///< {"rows": […], "errors": […], "warnings": […]}
    JsonLines, ///< a row a line
};

/** Prints rows as they come; never holds all of them. */
class TableWriter
{
public:
    virtual ~TableWriter() = default;

    virtual void write(const TableRow &row) = 0;
    /** Hands over what has been printed, where somebody may wait for it. */
    virtual void flush() = 0;
    /** Prints what remains, and where there is a place for them what failed and what deserved a
     * word. */
    virtual void finish(const Json &errors, const Json &warnings) = 0;
};

/** @p cell for people: without what follows the first thousand characters. */
QString cutCell(const QString &cell);

/** As many characters a column has at the most; longer cells stand out. */
constexpr int kWidestColumn = 64;

/** A writer to @p out of rows with @p columns behind address, firmware and source. */
std::unique_ptr<TableWriter> makeTableWriter(TableFormat format, const QStringList &columns,
                                             Output &out);

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_TABLEWRITER_H
