// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/FileWork.h"

#include <QtCore/QFileInfo>

#include <algorithm>

namespace vn::tool {

void FileWork::forEach(Output &out, const QStringList &names,
                       const std::function<void(const QString &name)> &use)
{
    begin(names);
    if (out.progress().isPossible())
        for (const QString &name : names)
            out.progress().expect(1, QFileInfo(name).size());
    for (const QString &name : names) {
        if (Interrupt::stopped())
            break;
        attempt(out, [&] { use(name); });
        out.progress().advance(QFileInfo(name).size());
    }
    tellInterruption(out);
}

void FileWork::begin(const QStringList &names)
{
    if (!m_interrupt && !names.contains(QLatin1String("-")))
        m_interrupt.emplace();
}

void FileWork::attempt(Output &out, const std::function<void()> &action)
{
    try {
        action();
        ++m_done;
    } catch (const ToolError &e) {
        fail(out, e);
    }
}

void FileWork::fail(Output &out, const ToolError &error)
{
    out.complain(error);
    m_errors.append(errorToJson(error));
    m_worst = std::max(m_worst, error.code());
}

void FileWork::tellInterruption(Output &out) const
{
    if (Interrupt::isPending())
        out.complain(ToolError(ExitCode::BadInput,
                               QStringLiteral("interrupted; %1 files done").arg(m_done)));
}

void FileWork::tellEmptiness(Output &out, const QString &message)
{
    if (m_done > 0 || m_worst != ExitCode::Done || Interrupt::stopped())
        return;
    m_worst = ExitCode::No;
    out.complain(ToolError(m_worst, message));
}

} // namespace vn::tool
