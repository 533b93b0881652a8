// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QHeaderView>

namespace {

using Rows = QList<QStringList>;

class Finding : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        open({example("gate.cfg"), example("dock.cfg"), example("entrance.cfg")});
        press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        m_filter = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        ASSERT_NE(m_filter, nullptr);
        ASSERT_EQ(m_filter->objectName(), "cameraFilter"_q);
    }

    /** The addresses that the table shows once @p words are typed. */
    QStringList found(const QString &words)
    {
        m_filter->selectAll();
        QTest::keyClicks(m_filter, words);
        QTest::qWait(50); // values are looked into bit by bit
        QStringList addresses;
        for (const QStringList &row : cells(table("cameras")->model()))
            addresses += row.at(0);
        return addresses;
    }

    QLineEdit *m_filter = nullptr;
};

TEST_F(Finding, partOfAnyColumn)
{
    EXPECT_EQ(found("DOCK"_q), QStringList{"10.14.7.52"_q});
    EXPECT_EQ(labelText("camerasCount"), "1 of 3, 1 selected"_q);
    EXPECT_EQ(found("R"_q), (QStringList{"10.14.7.34"_q, "10.14.7.52"_q})) << "firmware";
    EXPECT_EQ(found("nowhere"_q), QStringList());
    EXPECT_FALSE(table("cameras")->isVisible()) << "words in its place";
}

TEST_F(Finding, value)
{
    EXPECT_EQ(found("ntp=SITE.example"_q), QStringList{"10.14.7.21"_q});
    EXPECT_EQ(found("DNS=10.14.0.3"_q), QStringList{"10.14.7.21"_q}) << "not the first one";
    EXPECT_EQ(found("NTP!=site"_q), (QStringList{"10.14.7.34"_q, "10.14.7.52"_q}));
    EXPECT_EQ(found("text/name="_q).size(), 3);
    EXPECT_EQ(found("audio/name="_q), QStringList());
    EXPECT_EQ(found("head/Factory IP=7.52"_q), QStringList{"10.14.7.52"_q});
}

TEST_F(Finding, whatIsFound_isShownAtOnce)
{
    found("DNS=10.14.0.3"_q);
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south)"_q);
    found("dock"_q);
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.52 (dock)"_q);
    EXPECT_TRUE(table("values")->isVisible());
    EXPECT_EQ(labelText("camerasCount"), "1 of 3, 1 selected"_q);
    found("nowhere"_q);
    EXPECT_FALSE(table("values")->isVisible());
    found("entrance"_q);
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.34 (entrance)"_q);
}

TEST_F(Finding, valueThatIsEdited_comesAndGoes)
{
    // Edited is a copy, not the example.
    const QString copy = fileWith(readFile(example("gate.cfg")), "copy.cfg"_q);
    open({copy});
    EXPECT_EQ(found("HOSTNAME=south"_q).size(), 2);
    for (int row = 0; row < 2; ++row)
        if (table("cameras")->model()->index(row, 3).data() == "copy.cfg"_q)
            selectCameras({row});
    edit("ethernet"_q, "HOSTNAME"_q, "north"_q);
    QTest::qWait(50);
    EXPECT_EQ(table("cameras")->model()->rowCount(), 1);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_filter->text(), QString()) << "what is undone is to be seen";
    EXPECT_EQ(valueOf("ethernet"_q, "HOSTNAME"_q).data(), "gate-south"_q);
}

TEST_F(Finding, tablesAreSortedByAClick_numbersAsNumbers)
{
    open({fileWith("#:1=\n#:VN-3.0\n\nSECTION a\nk=10\nz=9\nm=100\nENDSECTION a\n", "n.cfg"_q)});
    found("n.cfg"_q);
    table("cameras")->selectRow(0);
    QTableView *values = table("values");
    const auto keys = [&] {
        QStringList result;
        for (const QStringList &row : cells(values->model()))
            if (row.at(0) == "a"_q)
                result += row.at(1);
        return result;
    };
    EXPECT_EQ(keys(), (QStringList{"k"_q, "z"_q, "m"_q})) << "as in the text";
    QHeaderView *header = values->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header->sectionViewportPosition(2) + 20, header->height() / 2));
    EXPECT_EQ(keys(), (QStringList{"z"_q, "k"_q, "m"_q}));
    header->actions().first()->trigger();
    EXPECT_EQ(keys(), (QStringList{"k"_q, "z"_q, "m"_q}));
}

} // namespace
