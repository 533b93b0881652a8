// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "Application.h"
#include "MessageBar.h"

#include <QtCore/QSettings>
#include <QtGui/QClipboard>

namespace {

/** There is one application for all tests, and it goes before main() ends. */
class Application : public testing::Environment
{
public:
    void SetUp() override
    {
        browser::prepareApplication();
        m_application = std::make_unique<QApplication>(m_count, m_arguments);
        ASSERT_EQ(QGuiApplication::platformName(), "xcb"_q);
        browser::nameApplication();
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORMTHEME")) { // which is tried as it is
            QApplication::setStyle(QStringLiteral("Fusion"));
            QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
        }
        // What the style has and the desktop would decide.
        QApplication::setDoubleClickInterval(400);
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }
    void TearDown() override
    {
        // A button in a line that fades in has an animation that nobody else owns: let it end.
        constexpr int kFadingMs = 160;
        QTest::qWait(2 * kFadingMs);
        m_application.reset();
    }

private:
    int m_count = 1;
    char m_name[14] = "browser_tests";
    char *m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

const auto *const s_application = testing::AddGlobalTestEnvironment(new Application);

} // namespace

QList<QStringList> cells(const QAbstractItemModel *model, const QModelIndex &parent)
{
    QList<QStringList> rows;
    for (int row = 0; row < model->rowCount(parent); ++row) {
        QStringList texts;
        for (int column = 0; column < model->columnCount(parent); ++column)
            texts += model->index(row, column, parent).data().toString();
        rows += texts;
    }
    return rows;
}

void WindowTest::SetUp()
{
    FolderTest::SetUp();
    QSettings().clear();
    m_window = std::make_unique<browser::MainWindow>();
    m_window->show();
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get(), kPatienceMs));
}

void WindowTest::TearDown()
{
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    m_window.reset();
}

QString WindowTest::message(const char *name)
{
    return find<browser::MessageBar>(name)->text();
}

void WindowTest::open(const QStringList &paths)
{
    m_window->open(paths);
    waitUntilLoaded();
}

void WindowTest::waitUntilLoaded()
{
    const auto *stop = find<QAbstractButton>("stop");
    ASSERT_TRUE(QTest::qWaitFor([stop] { return stop->isHidden(); }, kPatienceMs));
}

QDialog *WindowTest::waitForDialog()
{
    QDialog *dialog = nullptr;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            return dialog && dialog->isVisible();
        },
        kPatienceMs));
    return dialog;
}

void WindowTest::answerDialog(const std::function<void(QDialog *)> &answer)
{
    QTimer::singleShot(0, m_window.get(), [this, answer] { answer(waitForDialog()); });
}

void WindowTest::answerFileDialog(const QString &path, const QString &button)
{
    answerDialog([path, button](QDialog *dialog) {
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        name->setText(path); // typing would bring up a list to choose from
        click(dialog, button);
    });
}

void WindowTest::click(QDialog *dialog, const QString &button)
{
    ASSERT_NE(dialog, nullptr);
    const auto buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *each : buttons)
        if (each->text().remove(QLatin1Char('&')) == button)
            return QTest::mouseClick(each, Qt::LeftButton);
    ADD_FAILURE() << "no button " << qPrintable(button);
}

void WindowTest::selectCameras(const QList<int> &rows)
{
    QTableView *cameras = table("cameras");
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (const int row : rows) {
        const QRect cell = cameras->visualRect(cameras->model()->index(row, 0));
        QTest::mouseClick(cameras->viewport(), Qt::LeftButton, modifiers, cell.center());
        modifiers = Qt::ControlModifier;
    }
}

void WindowTest::showTab(int number)
{
    press(Qt::Key(Qt::Key_0 + number), Qt::AltModifier);
    ASSERT_EQ(find<QTabWidget>("tabs")->currentIndex(), number - 1);
}

QModelIndex WindowTest::valueOf(const QString &section, const QString &key, int repeated)
{
    const QList<QStringList> rows = cells(table("values")->model());
    int row = 0;
    for (; row < rows.size(); ++row)
        if (rows.at(row).at(0) == section && rows.at(row).at(1) == key && repeated-- == 0)
            break;
    EXPECT_LT(row, rows.size()) << qPrintable(key);
    return table("values")->model()->index(row, 2);
}

void WindowTest::selectValue(const QString &section, const QString &key, int repeated)
{
    QCoreApplication::processEvents(); // a message may have moved the table
    QTableView *values = table("values");
    const QModelIndex index = valueOf(section, key, repeated);
    values->scrollTo(index);
    QTest::mouseClick(values->viewport(), Qt::LeftButton, Qt::NoModifier,
                      values->visualRect(index).center());
}

void WindowTest::edit(const QString &section, const QString &key, const QString &value,
                      int repeated)
{
    selectValue(section, key, repeated);
    QTableView *values = table("values");
    const QModelIndex index = valueOf(section, key, repeated);
    QTest::mouseDClick(values->viewport(), Qt::LeftButton, Qt::NoModifier,
                       values->visualRect(index).center());
    auto *editor = values->viewport()->findChild<QLineEdit *>();
    ASSERT_NE(editor, nullptr) << "no value to edit";
    enter(editor, value);
}

void WindowTest::enter(QLineEdit *editor, const QString &value)
{
    // Keys are Latin-1 at most in tests, so the text is pasted.
    editor->selectAll();
    QGuiApplication::clipboard()->setText(value);
    QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the editor goes
}

void WindowTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (!m_window->isActiveWindow()) { // a dialog has just gone
        m_window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get(), kPatienceMs));
    }
    QTest::keyClick(m_window.get(), key, modifiers);
}
