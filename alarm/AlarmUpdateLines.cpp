// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateLines.h"

#include "base/ExceptionBoundary_p.h"
#include "base/FileUtils.h"

namespace vn {

AlarmUpdateLines::AlarmUpdateLines(QIODevice *device)
    : m_device(device)
{
}

bool AlarmUpdateLines::next()
{
    return onlyThrows<IOException>([&] {
        m_update = AlarmUpdateDocument();
        m_error.reset();
        do {
            if (!FileUtils::readLine(m_device, &m_line))
                return false;
            ++m_lineNumber;
        } while (m_line.isEmpty());
        try {
            m_update = AlarmUpdateDocument::parse(m_line);
        } catch (const ParseException &e) {
            m_error = e;
        }
        return true;
    });
}

} // namespace vn
