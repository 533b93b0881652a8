// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMDOCUMENTDATA_P_H
#define VN_ALARM_ALARMDOCUMENTDATA_P_H

#include "alarm/AlarmPlaces_p.h"
#include "alarm/AlarmTape_p.h"
#include "alarm/ParserInput_p.h"

#include <QtCore/QByteArray>

namespace vn::internal {

/** What all values of a document share; it never changes. */
class AlarmDocumentData
{
    Q_DISABLE_COPY(AlarmDocumentData)

public:
    /** Reads @p text by @p reader. */
    template <typename Reader>
    AlarmDocumentData(const QByteArray &text, Reader &reader)
        : bytes(withEndMark(text))
        , tape(read(reader))
        , places(text)
    {
    }

    const QByteArray bytes; // never copied: the tape points into them
    const AlarmTape tape;
    const AlarmPlaces places;

private:
    template <typename Reader>
    AlarmTape read(Reader &reader) const
    {
        reader.read(bytes.constData(), static_cast<unsigned int>(bytes.size()));
        return reader.tape();
    }
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMDOCUMENTDATA_P_H
