#include "controls/PathList.h"
#include "controls/SortedCombo.h"
#include "window/MessageBoxes.h"
#include "window/OuterGeometry.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace zv {
namespace {

TEST(PathList, ALongPathCanBeScrolledToAndTheExtentNeverShrinks)
{
    PathList list;
    list.resize(100, 100);
    list.show();
    list.addItemWithExtent(QString(200, QLatin1Char('w')));
    const int extent = list.horizontalExtent();
    EXPECT_GE(extent, list.fontMetrics().horizontalAdvance(QString(200, QLatin1Char('w'))));
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.horizontalScrollBar()->maximum() > 0; }));
    list.clear();
    list.addItemWithExtent(QStringLiteral("short"));
    EXPECT_EQ(list.horizontalExtent(), extent);
}

TEST(PathList, WhereTheBarWouldHideTheSecondRowItIsLeftOutUntilThereIsRoom)
{
    PathList list;
    list.resize(100, 100);
    list.addItemsWithExtent({QString(200, QLatin1Char('w')), QStringLiteral("b"), QStringLiteral("c")});
    list.show();
    const auto hasBar = [&] { return list.horizontalScrollBar()->isVisible(); };
    EXPECT_TRUE(QTest::qWaitFor(hasBar));
    list.resize(100, list.heightOfTwoRows() - 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !hasBar(); }));
    EXPECT_GE(list.viewport()->height(), 2 * list.visualItemRect(list.item(0)).height());
    list.resize(100, list.heightOfTwoRows());
    EXPECT_TRUE(QTest::qWaitFor(hasBar));
    EXPECT_GE(list.viewport()->height(), 2 * list.visualItemRect(list.item(0)).height());
}

TEST(PathList, FilledAfreshItHasTheNewRowsAndNoneIsSelected)
{
    const QStringList all{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")};
    QStringList many;
    for (int i = 0; i < 300; ++i)
        many << QString::number(i);
    PathList list;
    list.setItemsWithExtent(all);
    QSignalSpy selected(&list, &PathList::rowSelected);
    for (const QStringList& rows : {all, QStringList(all.mid(1)), QStringList(all.mid(0, 2)), all,
                                    QStringList{all[0], all[2], all[1], all[3]}, many, all, QStringList()}) {
        if (list.count() > 0)
            list.setCurrentRow(list.count() - 1);
        selected.clear();
        list.setItemsWithExtent(rows);
        QStringList shown;
        for (int row = 0; row < list.count(); ++row)
            shown << list.item(row)->text();
        EXPECT_EQ(shown, rows);
        EXPECT_EQ(list.currentRow(), -1);
        EXPECT_TRUE(list.selectedItems().isEmpty());
        EXPECT_EQ(selected.count(), 0);
    }
}

TEST(PathList, ARowThatComesInWhenItIsFilledAfreshWidensIt)
{
    PathList list;
    list.setItemsWithExtent({QStringLiteral("a"), QStringLiteral("b")});
    const QString wide(200, QLatin1Char('w'));
    list.setItemsWithExtent({QStringLiteral("a"), wide, QStringLiteral("b")});
    EXPECT_GE(list.horizontalExtent(), list.fontMetrics().horizontalAdvance(wide));
}

TEST(PathList, TellsARowOnceHoweverItIsSelected)
{
    PathList list;
    list.addItemsWithExtent({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    list.show();
    QSignalSpy selected(&list, &PathList::rowSelected), again(&list, &PathList::rowClickedAgain);
    list.setCurrentRow(1);
    EXPECT_EQ(selected.count(), 1);
    list.setCurrentRow(1);
    EXPECT_EQ(selected.count(), 1);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(2)).center());
    EXPECT_EQ(selected.count(), 2);
    EXPECT_EQ(again.count(), 0);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(2)).center());
    EXPECT_EQ(selected.count(), 2);
    EXPECT_EQ(again.count(), 1);
    list.clear();
    EXPECT_EQ(selected.count(), 2) << "clearing selects nothing";
}

TEST(SortedCombo, SortsWithoutRegardToCaseAndKeepsItsText)
{
    SortedCombo combo;
    combo.setShownText(QStringLiteral("No row"));
    QSignalSpy activated(&combo, &QComboBox::activated);
    combo.add({QStringLiteral("beta"), QStringLiteral("Alpha")});
    combo.add({QStringLiteral("ALBERT"), QString()});
    QStringList rows;
    for (int row = 0; row < combo.count(); ++row)
        rows << combo.itemText(row);
    EXPECT_EQ(rows, (QStringList{QString(), QStringLiteral("ALBERT"), QStringLiteral("Alpha"),
                                 QStringLiteral("beta")}));
    EXPECT_EQ(combo.currentText(), QStringLiteral("No row"));
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(activated.count(), 0);
}

TEST(SortedCombo, SortsLettersWithMarksBesideTheirOwn)
{
    SortedCombo combo;
    combo.add({QStringLiteral("Zebra"), QString::fromUtf8("\xC3\x84pfel"), QStringLiteral("Anker")});
    EXPECT_EQ(combo.itemText(0), QStringLiteral("Anker"));
    EXPECT_EQ(combo.itemText(1), QString::fromUtf8("\xC3\x84pfel"));
    EXPECT_EQ(combo.itemText(2), QStringLiteral("Zebra"));
}

TEST(SortedCombo, ALongNameIsShownFromItsStart)
{
    SortedCombo combo;
    combo.setShownText(QStringLiteral("Doors and Windows of the North Office"));
    EXPECT_EQ(combo.lineEdit()->cursorPosition(), 0);
}

TEST(SortedCombo, OneChoiceIsToldOnce)
{
    SortedCombo combo;
    combo.add({QStringLiteral("a"), QStringLiteral("b")});
    combo.show();
    QSignalSpy activated(&combo, &QComboBox::activated);
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(activated.count(), 1);
}

TEST(TextBytes, EveryByteComesBack)
{
    std::string bytes;
    for (int value = 1; value < 256; ++value)
        bytes += char(value);
    EXPECT_EQ(toBytes(toText(bytes)), bytes);
}

/// Looks at the message box that stands and presses a button of it.
void answerBox(QMessageBox::StandardButton button, const std::function<void(QMessageBox&)>& look)
{
    QTimer::singleShot(0, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        look(*box);
        box->button(button)->click();
    });
}

TEST(MessageBoxes, ShowTextTitleAndIcon)
{
    MessageBoxes boxes;
    answerBox(QMessageBox::Ok, [](QMessageBox& box) {
        EXPECT_EQ(box.text(), QStringLiteral("<b>one</b>\r\ntwo"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("A title"));
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
    });
    boxes.show({"<b>one</b>\r\ntwo", "A title", MessageIcon::Critical});
    answerBox(QMessageBox::Ok, [](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Zelvora"));
        EXPECT_EQ(box.icon(), QMessageBox::Information);
    });
    boxes.show({"text", {}, MessageIcon::Information});
}

TEST(MessageBoxes, AskYesOrNoAndClosingIsNo)
{
    MessageBoxes boxes;
    answerBox(QMessageBox::Yes, [](QMessageBox& box) { EXPECT_EQ(box.icon(), QMessageBox::Question); });
    EXPECT_TRUE(boxes.ask({"text", "title", MessageIcon::Question}));
    answerBox(QMessageBox::No, [](QMessageBox&) {});
    EXPECT_FALSE(boxes.ask({"text", "title", MessageIcon::Question}));
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    EXPECT_FALSE(boxes.ask({"text", "title", MessageIcon::Question}));
}

TEST(MessageBoxes, AQuestionCanBeLeftOpen)
{
    MessageBoxes boxes;
    answerBox(QMessageBox::Yes, [](QMessageBox& box) { EXPECT_EQ(box.buttons().size(), 2); });
    EXPECT_EQ(boxes.askOrClose({"text", "title", MessageIcon::Question}), true);
    answerBox(QMessageBox::No, [](QMessageBox&) {});
    EXPECT_EQ(boxes.askOrClose({"text", "title", MessageIcon::Question}), false);
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    EXPECT_EQ(boxes.askOrClose({"text", "title", MessageIcon::Question}), std::nullopt);
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(boxes.askOrClose({"text", "title", MessageIcon::Question}), std::nullopt);
}

TEST(MessageBoxes, ConfirmWithOkOrCancel)
{
    MessageBoxes boxes;
    answerBox(QMessageBox::Ok, [](QMessageBox&) {});
    EXPECT_TRUE(boxes.confirm({"text", "title", MessageIcon::Question}));
    answerBox(QMessageBox::Cancel, [](QMessageBox&) {});
    EXPECT_FALSE(boxes.confirm({"text", "title", MessageIcon::Question}));
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    EXPECT_FALSE(boxes.confirm({"text", "title", MessageIcon::Question}));
}

TEST(OuterGeometry, ComesBackAsItWasSet)
{
    QWidget window;
    OuterGeometry geometry(&window);
    geometry.set({40, 50, 300, 200});
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return geometry.get() == QRect(40, 50, 300, 200); }));
}

TEST(OuterGeometry, APlaceOffEveryScreenIsMovedOntoOne)
{
    QWidget window;
    OuterGeometry geometry(&window);
    geometry.set({100000, 100000, 300, 200});
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.screen()->geometry().intersects(geometry.get()); }));
    EXPECT_LT(geometry.get().left(), 10000);
}

TEST(PathList, CtrlClickLeavesTheSelectedRowSelected)
{
    PathList list;
    list.addItemsWithExtent({QStringLiteral("a"), QStringLiteral("b")});
    list.show();
    const QPoint second = list.visualItemRect(list.item(1)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, second);
    EXPECT_TRUE(list.item(1)->isSelected());
    QTest::keyClick(&list, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(list.item(1)->isSelected());
}

} // namespace
} // namespace zv
