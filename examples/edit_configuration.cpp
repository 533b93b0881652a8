// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// edit_configuration FILE: sets the image quality in a configuration file.

//! [readme]
#include "base/AtomicFile.h"
#include "base/EncodedText.h"
#include "base/Exceptions.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QFile>

int main(int argc, char **argv)
try {
    const QString path = QFile::decodeName(argc > 1 ? argv[1] : "gate.cfg");
    const vn::EncodedText file = vn::EncodedText::read(path);

    vn::VanteroConfigText config(file.text());
    const auto changed = config.setValue("image", "quality", "85");

    // In the encoding that the file has; what that cannot hold is not written.
    const auto encoded = file.encode(config.text());
    if (!changed || !encoded) {
        qCritical("%s", qPrintable(path + ": " + (changed ? encoded.message : changed.reason)));
        return 1;
    }
    vn::AtomicFile::replace(path, encoded.bytes);
} catch (const vn::ExceptionQt &e) {
    qCritical("%s", e.what());
    return 1;
}
//! [readme]
