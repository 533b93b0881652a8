// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CAMERAMODELS_H
#define VN_TOOL_FILES_CAMERAMODELS_H

#include <QtCore/QMap>
#include <QtCore/QString>

namespace vn::tool {

/**
 * The models of cameras by their addresses, from the file @p name: a JSON object of address to
 * model (its first character is "{"), or lines "address,model" below a first line that says just
 * that; a field may be quoted, a quote in it doubled.
 * @throws ToolError (bad input) with the place of what is neither, or has an address twice
 */
QMap<QString, QString> readCameraModels(const QString &name);

/** A field as it stands in a line of such a file: quoted where it has to be. */
QString csvField(const QString &text);

} // namespace vn::tool

#endif // VN_TOOL_FILES_CAMERAMODELS_H
