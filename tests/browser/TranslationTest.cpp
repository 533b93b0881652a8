// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "Application.h"

#include <QtCore/QTranslator>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenuBar>

namespace {

class Translation : public FolderTest
{
protected:
    void TearDown() override
    {
        QLocale::setDefault(QLocale::c());
        const auto translators = qApp->findChildren<QTranslator *>();
        for (QTranslator *translator : translators) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
        FolderTest::TearDown();
    }

    static QStringList menus(const QLocale &locale)
    {
        QLocale::setDefault(locale);
        browser::translateApplication(*qApp);
        const browser::MainWindow window;
        QStringList found;
        const auto actions = window.menuBar()->actions();
        for (const QAction *action : actions)
            found += action->text();
        return found;
    }
};

TEST_F(Translation, isChosenByTheLocale)
{
    EXPECT_EQ(menus(QLocale(QLocale::German, QLocale::Austria)),
              (QStringList{"&Datei"_q, "&Bearbeiten"_q, "&Ansicht"_q, "&Hilfe"_q}));
    EXPECT_EQ(QCoreApplication::translate("browser::ConfigEdits", "there is no such key"),
              "es gibt keinen solchen Schlüssel"_q);
    EXPECT_EQ(QCoreApplication::translate("browser::UpdateVerdict", "Safe"), "Sicher"_q);
}

TEST_F(Translation, isEnglishElsewhere)
{
    EXPECT_EQ(menus(QLocale(QLocale::French)),
              (QStringList{"&File"_q, "&Edit"_q, "&View"_q, "&Help"_q}));
}

} // namespace
