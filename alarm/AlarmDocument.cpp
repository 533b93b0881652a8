// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmDocument.h"

#include "alarm/AlarmDocumentData_p.h"
#include "alarm/AlarmListReader_p.h"

namespace vn {

AlarmDocument::AlarmDocument() = default;

AlarmDocument AlarmDocument::parse(const QByteArray &text)
{
    return onlyThrows<ParseException>([&] {
        internal::AlarmListReader reader(nullptr);
        const auto data = std::make_shared<const internal::AlarmDocumentData>(text, reader);
        AlarmDocument document;
        document.m_root = AlarmValue(data, data->tape.root());
        return document;
    });
}

} // namespace vn
