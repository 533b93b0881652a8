// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_EXPORT_H
#define VN_BASE_EXPORT_H

/** @file
 * Marks the names that the two shared libraries export; everything else stays hidden. */

#include <QtCore/qglobal.h>

/** @def VN_BASE_EXPORT
 * Marks what libVanteroBase exports.
 * @since 1.0.0
 */
#ifdef VANTERO_BASE_BUILD
#define VN_BASE_EXPORT Q_DECL_EXPORT
#else
#define VN_BASE_EXPORT Q_DECL_IMPORT
#endif

/** @def VN_EXPORT
 * Marks what libFileFormatsVantero exports.
 * @since 1.0.0
 */
#ifdef VANTERO_FORMATS_BUILD
#define VN_EXPORT Q_DECL_EXPORT
#else
#define VN_EXPORT Q_DECL_IMPORT
#endif

#endif // VN_BASE_EXPORT_H
