// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// edit_configuration FILE: sets the image quality in a configuration file.

//! [readme]
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

using vn::VanteroConfigFile;

int main(int argc, char **argv)
try {
    const QString path = argc > 1 ? argv[1] : "gate.cfg";
    const QDateTime now = QDateTime::currentDateTime();
    const QString text = vn::FileUtils::readText(path);

    VanteroConfigFile config;
    config.parse(text, now);
    config.setValue("image", "quality", "85");

    // store() writes the text that was loaded, not the map: put the edited section into the text.
    VanteroConfigFile edited;
    edited.parse(VanteroConfigFile::replaceSection(text, config.toString("image"), "image"), now);
    edited.store(path);
} catch (const vn::ExceptionQt &e) {
    qCritical("%s", e.what());
    return 1;
}
//! [readme]
