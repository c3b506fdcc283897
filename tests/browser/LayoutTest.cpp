#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "support/OfficeFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <cmath>

namespace zv {
namespace {

const QSize kSizes[] = {{433, 433}, {713, 606}, {1400, 1000}};

class LayoutTest : public OfficeFixture {
protected:
    void SetUp() override { makeDoors(25); }

    void resizeTo(QSize size)
    {
        main().resize(size);
        QApplication::processEvents();
    }

    /// Every control that a user sees, innermost ones only.
    QList<QWidget*> shownControls()
    {
        QList<QWidget*> shown;
        const QList<QWidget*> all = main().findChildren<QWidget*>();
        for (QWidget* widget : all)
            if (widget->isVisible() && !widget->objectName().isEmpty() &&
                !widget->objectName().startsWith(QStringLiteral("qt_")))
                shown.append(widget);
        return shown;
    }

    void expectGrid()
    {
        const double columns[] = {43, 4.67, 2.465, 1.675, 1.27};
        const double rows[] = {21.5, 3.55, 1.94, 1.334};
        const double width = main().Frame4->width();
        const double height = main().Frame4->height();
        for (int cell = 1; cell <= 20; ++cell) {
            const QRect place = main().DwgThumbnails[std::size_t(cell)]->geometry();
            EXPECT_EQ(place.left(), std::lround(width / columns[(cell - 1) % 5])) << cell;
            EXPECT_EQ(place.top(), std::lround(height / rows[(cell - 1) / 5])) << cell;
            EXPECT_EQ(place.width(), std::lround(width / 5.25)) << cell;
            EXPECT_EQ(place.height(), std::lround(height / 4.3)) << cell;
        }
    }
};

std::string nameOf(const QWidget* widget)
{
    return widget->objectName().toStdString();
}

TEST_F(LayoutTest, TheCellsStandByTheDivisorsAtEverySize)
{
    start();
    for (const QSize size : {QSize(240, 200), QSize(433, 433), QSize(713, 606), QSize(1400, 1000)}) {
        resizeTo(size);
        expectGrid();
    }
}

TEST_F(LayoutTest, TheCellsAreLaidOutBeforeTheFirstShowing)
{
    start();
    expectGrid();
}

TEST_F(LayoutTest, FrameFourScalesWithTheWindow)
{
    start();
    resizeTo({713, 606});
    const QSize before = main().Frame4->size();
    resizeTo({1426, 1212});
    EXPECT_NEAR(main().Frame4->width(), 2 * before.width(), 2);
    EXPECT_NEAR(main().Frame4->height(), 2 * before.height(), 2);
}

TEST_F(LayoutTest, NoControlIsCutOffByItsParent)
{
    start();
    for (const QSize size : kSizes) {
        resizeTo(size);
        const QList<QWidget*> shown = shownControls();
        for (const QWidget* widget : shown)
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
                << nameOf(widget) << " at " << size.width();
    }
}

TEST_F(LayoutTest, NoTwoNeighboursOverlap)
{
    start();
    for (const QSize size : kSizes) {
        resizeTo(size);
        const QList<QWidget*> shown = shownControls();
        for (const QWidget* a : shown)
            for (const QWidget* b : shown)
                if (a < b && a->parentWidget() == b->parentWidget()) {
                    EXPECT_FALSE(a->geometry().intersects(b->geometry()))
                        << nameOf(a) << " and " << nameOf(b) << " at " << size.width();
                }
    }
}

TEST_F(LayoutTest, NoCaptionIsCutInAnyMode)
{
    start();
    for (const QSize size : kSizes) {
        resizeTo(size);
        for (QRadioButton* option : {main().Option1, main().Option2, main().Option3, main().Option4}) {
            option->setChecked(true);
            QApplication::processEvents();
            for (const char* name :
                 {"Option1", "Option2", "Option3", "Option4", "Check1", "Check2", "Check4"}) {
                const auto* button = control<QAbstractButton>(QLatin1String(name));
                EXPECT_GE(button->width(), button->sizeHint().width()) << name << " at " << size.width();
                EXPECT_GE(button->height(), button->fontMetrics().height()) << name;
            }
            for (const char* name : {"Command2", "Command3", "Command4", "Command11", "Command24"}) {
                const auto* button = control<QAbstractButton>(QLatin1String(name));
                if (button->isVisible()) {
                    EXPECT_GE(button->width(), button->minimumSizeHint().width())
                        << name << " at " << size.width();
                }
            }
            EXPECT_GE(main().Label1->width(), main().Label1->sizeHint().width()) << size.width();
            EXPECT_GE(main().x->height(), main().x->fontMetrics().height()) << size.width();
        }
    }
}

TEST_F(LayoutTest, TheWindowCanBeMadeAsSmallAsItMay)
{
    start();
    EXPECT_EQ(main().minimumSize(), QSize(240, 200));
    resizeTo({240, 200});
    EXPECT_EQ(main().size(), QSize(240, 200));
    EXPECT_GT(main().Frame4->height(), 40);
    EXPECT_TRUE(click("Command3"));
    EXPECT_TRUE(click("DwgThumbnail1"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(25)[20]);
}

TEST_F(LayoutTest, FontsStayAsTheyAre)
{
    start();
    const int before = main().Option1->fontInfo().pixelSize();
    for (const QSize size : kSizes) {
        resizeTo(size);
        EXPECT_EQ(main().Option1->fontInfo().pixelSize(), before);
        EXPECT_EQ(main().fontInfo().pixelSize(), before);
    }
}

TEST_F(LayoutTest, ResizingInEnlargeModeShowsTheDrawingWhole)
{
    start();
    ASSERT_TRUE(click("DwgThumbnail1"));
    ASSERT_TRUE(click("Command12"));
    main().DwgViewX1->zoomIn();
    const double zoomed = main().DwgViewX1->unitsPerPixel();
    resizeTo({900, 800});
    EXPECT_NE(main().DwgViewX1->unitsPerPixel(), zoomed);
    EXPECT_TRUE(main().DwgViewX1->isVisible());
    const double whole = main().DwgViewX1->unitsPerPixel();
    main().DwgViewX1->zoomExtents();
    EXPECT_DOUBLE_EQ(main().DwgViewX1->unitsPerPixel(), whole);
}

TEST_F(LayoutTest, ANarrowWindowKeepsEveryActionInReach)
{
    start();
    for (const QSize size : {QSize(300, 800), QSize(400, 400), QSize(260, 700), QSize(240, 400)}) {
        resizeTo(size);
        for (QRadioButton* option : {main().Option1, main().Option4}) {
            option->setChecked(true);
            QApplication::processEvents();
            const QList<QWidget*> inside =
                main().Picture4->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
            for (const QWidget* a : inside) {
                if (!a->isVisible())
                    continue;
                EXPECT_TRUE(main().Picture4->rect().contains(a->geometry()))
                    << nameOf(a) << " at " << size.width();
                EXPECT_GE(a->width(), a->minimumWidth()) << nameOf(a) << " at " << size.width();
                EXPECT_GE(a->height(), a->fontMetrics().height()) << nameOf(a) << " at " << size.width();
                for (const QWidget* b : inside) {
                    if (a < b && b->isVisible()) {
                        EXPECT_FALSE(a->geometry().intersects(b->geometry()))
                            << nameOf(a) << " and " << nameOf(b) << " at " << size.width();
                    }
                }
            }
        }
    }
}

TEST_F(LayoutTest, TheListKeepsTwoRowsInALowWindow)
{
    start();
    for (const QSize size :
         {QSize(713, 265), QSize(713, 200), QSize(433, 240), QSize(300, 300), QSize(240, 200)}) {
        resizeTo(size);
        EXPECT_GE(main().List1->viewport()->height(),
                  2 * main().List1->visualItemRect(main().List1->item(0)).height())
            << size.width() << " by " << size.height();
    }
}

TEST_F(LayoutTest, ANarrowWindowShowsItsTabsAndItsHelpWhole)
{
    start();
    for (const QSize size : {QSize(240, 200), QSize(240, 400), QSize(260, 700), QSize(300, 300)}) {
        resizeTo(size);
        for (const PictureBox* box : {main().Picture5, main().Picture9, main().Picture12})
            EXPECT_GE(box->width(), box->sizeHint().width()) << nameOf(box) << " at " << size.width();
        EXPECT_LE(main().Picture9->geometry().right(), main().Picture13->x()) << size.width();
        EXPECT_LE(main().Picture13->geometry().right(), main().Picture12->x()) << size.width();
        EXPECT_LE(main().Picture12->geometry().right(), main().rect().right()) << size.width();
    }
}

// ---- by keyboard, and for a screen reader

TEST_F(LayoutTest, EveryControlThatTakesTheFocusHasAName)
{
    start();
    const QList<QWidget*> all = main().findChildren<QWidget*>();
    for (const QWidget* widget : all) {
        // A combo box has its name for its parts too, its line and the list that it drops.
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->window() != &main() ||
            qobject_cast<const QComboBox*>(widget->parentWidget()) != nullptr ||
            widget->objectName().startsWith(QStringLiteral("qt_")))
            continue;
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        EXPECT_TRUE(!widget->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty()))
            << widget->metaObject()->className() << " " << nameOf(widget);
    }
}

TEST_F(LayoutTest, TabReachesEveryControlOnceAndComesRound)
{
    start();
    main().Combo1->setFocus();
    QStringList walked;
    const QWidget* at = main().Combo1;
    do {
        at = at->nextInFocusChain();
        if (at->isVisible() && at->isEnabled() && (at->focusPolicy() & Qt::TabFocus) &&
            !at->objectName().isEmpty())
            walked << at->objectName();
    } while (at != main().Combo1 && walked.size() < 200);
    for (const char* name :
         {"Command4", "DwgThumbnail1", "DwgThumbnail20", "Command3", "List1", "Text1", "Command11",
          "Picture5", "Picture9", "Command12", "Command21", "Picture2", "Check2", "Picture12"})
        EXPECT_EQ(walked.count(QLatin1String(name)), 1) << name;
    EXPECT_LT(walked.indexOf("Command4"), walked.indexOf("DwgThumbnail1"));
    EXPECT_LT(walked.indexOf("DwgThumbnail1"), walked.indexOf("DwgThumbnail2"));
    EXPECT_LT(walked.indexOf("List1"), walked.indexOf("Command11"));
}

TEST_F(LayoutTest, TheFocusCanBeSeenOnEveryButtonAndTab)
{
    start();
    resizeTo({713, 606});
    main().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
    for (const char* name :
         {"Command4", "Command11", "Command12", "Command13", "Picture5", "Picture12", "Picture2"}) {
        QWidget* widget = control(QLatin1String(name));
        main().Combo1->setFocus();
        const QImage without = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(widget->hasFocus()) << name;
        EXPECT_NE(widget->grab().toImage(), without) << name;
    }
}

} // namespace
} // namespace zv
