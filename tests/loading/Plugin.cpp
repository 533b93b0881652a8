// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "loading/Plugin.h"

#include "base/Exceptions.h"
#include "base/StringUtils.h"

namespace {

// An exception's own text outlives the class, which goes with the library.
void useBase(Kept &kept)
{
    try {
        const vn::ParseException cause(QString::fromLatin1("cause"), 0, 1, 0, 2);
        throw vn::IOException(QString::fromLatin1("no more"), &cause);
    } catch (const vn::ExceptionQt &e) {
        kept.texts << e.message() << e.cause()->message();
    }
}

} // namespace

extern "C" Q_DECL_EXPORT void use(Kept &kept)
{
    useBase(kept);
}
