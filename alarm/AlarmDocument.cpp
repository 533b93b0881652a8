// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmDocument.h"

#include "alarm/AlarmDocumentData_p.h"
#include "alarm/AlarmListReader_p.h"
#include "alarm/ParserInput_p.h"

namespace vn {

AlarmDocument::AlarmDocument() = default;

AlarmDocument AlarmDocument::parse(const QByteArray &text)
{
    return onlyThrows<ParseException>([&] {
        QByteArray bytes = text;
        internal::appendEndMark(&bytes);
        const auto data = std::make_shared<const internal::AlarmDocumentData>(
            text, bytes, [](const char *marked, unsigned int length) {
                internal::AlarmListReader reader(nullptr);
                reader.read(marked, length);
                return reader.tape();
            });
        AlarmDocument document;
        document.m_root = AlarmValue(data, data->tape.root());
        return document;
    });
}

} // namespace vn
