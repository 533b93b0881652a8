// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_COLORS_H
#define VN_TOOL_CLI_COLORS_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/** What --color says. */
enum class ColorMode {
    Auto,   ///< where it goes to a terminal that has colors, and NO_COLOR is not set
    Always, ///< wherever it goes
    Never,
};

/** What a text is, for those who see colors. */
enum class Style { Error, Warning, Note, Good, Bad, Place, Aside };

/**
 * Puts colors around texts that go to one descriptor, or leaves them as they are. Nothing but the
 * colors depends on it.
 */
class Colors
{
public:
    /** None. */
    Colors() = default;

    Colors(ColorMode mode, int descriptor);

    bool areOn() const { return m_areOn; }

    QString text(Style style, const QString &text) const;

    /** The lines of a diff by their first characters. */
    QByteArray diff(const QByteArray &lines) const;

private:
    bool m_areOn = false;
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_COLORS_H
