// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMDOCUMENTDATA_P_H
#define VN_ALARM_ALARMDOCUMENTDATA_P_H

#include "alarm/AlarmPlaces_p.h"
#include "alarm/AlarmTape_p.h"

#include <QtCore/QByteArray>

namespace vn::internal {

/** What all values of a document share; it never changes. */
class AlarmDocumentData
{
    Q_DISABLE_COPY(AlarmDocumentData)

public:
    /** @p bytes with their end mark; @p read makes their tape. */
    template <typename Read>
    AlarmDocumentData(const QByteArray &text, const QByteArray &marked, Read read)
        : bytes(marked)
        , tape(read(bytes.constData(), static_cast<unsigned int>(bytes.size())))
        , places(text)
    {
    }

    const QByteArray bytes; // never copied: the tape points into them
    const AlarmTape tape;
    const AlarmPlaces places;
};

} // namespace vn::internal

#endif // VN_ALARM_ALARMDOCUMENTDATA_P_H
