// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmUpdateDocument.h"

#include "alarm/AlarmDocumentData_p.h"
#include "alarm/AlarmUpdateReader_p.h"

namespace vn {

AlarmUpdateDocument::AlarmUpdateDocument() = default;

AlarmUpdateDocument AlarmUpdateDocument::parse(const QByteArray &text)
{
    return onlyThrows<ParseException>([&] {
        internal::AlarmUpdateReader reader(nullptr);
        const auto data = std::make_shared<const internal::AlarmDocumentData>(text, reader);
        AlarmUpdateDocument document;
        if (!data->tape.isEmpty()) {
            document.m_root = AlarmValue(data, data->tape.root());
            // Only an error report has its mark before its first key.
            document.m_isErrorReport = text.left(data->tape[data->tape.root()].start).contains('#');
        }
        return document;
    });
}

} // namespace vn
