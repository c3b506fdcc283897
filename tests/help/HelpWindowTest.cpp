#include "help/HelpWindow.h"

#include "help/HTMLHelpViewer.h"
#include "window/Program.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace zv {
namespace {

class HelpWindowTest : public testing::Test {
protected:
    void SetUp() override { viewer.setHelpFile(TEST_BOOK); }

    static QList<QWidget*> windows()
    {
        QList<QWidget*> found;
        const QWidgetList all = QApplication::topLevelWidgets();
        for (QWidget* widget : all)
            if (widget->objectName() == QStringLiteral("HelpWindow") && widget->isVisible())
                found.append(widget);
        return found;
    }

    static QWidget* window() { return windows().isEmpty() ? nullptr : windows().first(); }

    template <class Control> static Control* control(const char* name)
    {
        return window()->findChild<Control*>(QLatin1String(name));
    }

    static QString page() { return control<QTextBrowser>("HelpPage")->source().toString(); }
    static void press(const char* name) { control<QToolButton>(name)->click(); }

    HTMLHelpViewer viewer{makeHelpSystem()};
};

TEST_F(HelpWindowTest, ContentsShowTheTreeBesideTheFirstPage)
{
    viewer.ShowContents();
    ASSERT_NE(window(), nullptr);
    EXPECT_NE(viewer.windowHandle(), 0);
    EXPECT_EQ(window()->windowTitle(), QStringLiteral("A Small Book"));
    EXPECT_EQ(control<QTabWidget>("HelpSides")->currentIndex(), 0);
    auto* tree = control<QTreeWidget>("HelpContents");
    EXPECT_EQ(tree->topLevelItemCount(), 2);
    EXPECT_EQ(tree->topLevelItem(1)->child(0)->text(0), QStringLiteral("Second"));
    EXPECT_EQ(page(), QStringLiteral("book:///start.html"));
}

TEST_F(HelpWindowTest, ASecondCallBringsTheOneWindowForwardAtItsPage)
{
    viewer.ShowContents();
    const std::int32_t handle = viewer.windowHandle();
    static_cast<HelpWindow*>(window())->showPage(QStringLiteral("second.html"));
    window()->showMinimized();
    viewer.ShowContents();
    EXPECT_EQ(windows().size(), 1);
    EXPECT_EQ(viewer.windowHandle(), handle);
    EXPECT_FALSE(window()->isMinimized());
    EXPECT_EQ(page(), QStringLiteral("book:///second.html"));
}

TEST_F(HelpWindowTest, IndexAndSearchComeToTheFront)
{
    viewer.ShowIndex();
    EXPECT_EQ(control<QTabWidget>("HelpSides")->currentIndex(), 1);
    viewer.ShowSearch();
    EXPECT_EQ(control<QTabWidget>("HelpSides")->currentIndex(), 2);
    EXPECT_EQ(control<QLineEdit>("HelpSearchText")->text(), QString());
}

TEST_F(HelpWindowTest, ANumberOfATopicShowsNothing)
{
    viewer.ShowContext(1);
    EXPECT_EQ(viewer.windowHandle(), 0);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(HelpWindowTest, AMissingOrDamagedFileDoesNothing)
{
    const QTemporaryDir folder;
    const QString damaged = folder.filePath(QStringLiteral("damaged.chm"));
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("ITSF and no more");
    file.close();
    for (const std::string& path :
         {std::string("/no such folder/Zelvora.chm"), damaged.toStdString(), std::string()}) {
        viewer.setHelpFile(path);
        viewer.ShowContents();
        EXPECT_EQ(viewer.windowHandle(), 0) << path;
        EXPECT_EQ(window(), nullptr) << path;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

TEST_F(HelpWindowTest, UnloadClosesTheWindowAndAShowOpensItAgain)
{
    viewer.ShowContents();
    viewer.Unload();
    EXPECT_EQ(window(), nullptr);
    viewer.Show();
    EXPECT_NE(window(), nullptr);
}

TEST_F(HelpWindowTest, TheWindowGoesWithTheViewer)
{
    {
        HTMLHelpViewer other(makeHelpSystem());
        other.setHelpFile(TEST_BOOK);
        other.ShowContents();
        EXPECT_EQ(windows().size(), 1);
    }
    EXPECT_EQ(windows().size(), 0);
}

TEST_F(HelpWindowTest, AnEntryOfTheContentsShowsItsPage)
{
    viewer.ShowContents();
    auto* tree = control<QTreeWidget>("HelpContents");
    tree->setCurrentItem(tree->topLevelItem(1)->child(1));
    EXPECT_EQ(page(), QStringLiteral("book:///folder/third.html"));
}

TEST_F(HelpWindowTest, TheContentsFollowThePage)
{
    viewer.ShowContents();
    static_cast<HelpWindow*>(window())->showPage(QStringLiteral("second.html"));
    auto* tree = control<QTreeWidget>("HelpContents");
    ASSERT_NE(tree->currentItem(), nullptr);
    EXPECT_EQ(tree->currentItem()->text(0), QStringLiteral("Second"));
}

TEST_F(HelpWindowTest, BackAndForwardWalkThePagesSeen)
{
    viewer.ShowContents();
    EXPECT_FALSE(control<QToolButton>("HelpBack")->isEnabled());
    static_cast<HelpWindow*>(window())->showPage(QStringLiteral("second.html"));
    press("HelpBack");
    EXPECT_EQ(page(), QStringLiteral("book:///start.html"));
    press("HelpForward");
    EXPECT_EQ(page(), QStringLiteral("book:///second.html"));
    EXPECT_FALSE(control<QToolButton>("HelpForward")->isEnabled());
    press("HelpHome");
    EXPECT_EQ(page(), QStringLiteral("book:///start.html"));
}

TEST_F(HelpWindowTest, LinksLeadInsideTheBookOnly)
{
    viewer.ShowContents();
    auto* browser = control<QTextBrowser>("HelpPage");
    static_cast<HelpWindow*>(window())->showPage(QStringLiteral("second.html"));
    for (const char* nowhere : {"missing.html", "http://localhost:1/none.html", "file:///etc/hostname"}) {
        browser->setSource(QUrl(QLatin1String(nowhere)));
        EXPECT_EQ(page(), QStringLiteral("book:///second.html")) << nowhere;
    }
    browser->setSource(QUrl(QStringLiteral("folder/third.html")));
    EXPECT_EQ(page(), QStringLiteral("book:///folder/third.html"));
    browser->setSource(QUrl(QStringLiteral("../start.html")));
    EXPECT_EQ(page(), QStringLiteral("book:///start.html"));
}

TEST_F(HelpWindowTest, PicturesComeFromTheBook)
{
    viewer.ShowContents();
    static_cast<HelpWindow*>(window())->showPage(QStringLiteral("second.html"));
    auto* browser = control<QTextBrowser>("HelpPage");
    const QVariant picture =
        browser->document()->resource(QTextDocument::ImageResource, QUrl(QStringLiteral("pictures/dot.png")));
    EXPECT_FALSE(picture.isNull());
    EXPECT_TRUE(
        browser->document()
            ->resource(QTextDocument::ImageResource, QUrl(QStringLiteral("file:///usr/share/pixmaps")))
            .isNull());
}

TEST_F(HelpWindowTest, PicturesShrinkWithThePageAndGrowToTheirOwnSize)
{
    viewer.ShowContents();
    static_cast<HelpWindow*>(window())->showPage(QStringLiteral("second.html"));
    const auto* browser = control<QTextBrowser>("HelpPage");
    const auto widths = [browser] {
        QList<int> found;
        for (QTextBlock block = browser->document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                if (part.fragment().charFormat().isImageFormat())
                    found << int(part.fragment().charFormat().toImageFormat().width());
        return found;
    };
    window()->resize(433, 433);
    QApplication::processEvents();
    ASSERT_EQ(widths().size(), 2);
    EXPECT_EQ(widths()[0], 8);
    EXPECT_LT(widths()[1], 433);
    EXPECT_GT(widths()[1], 100);
    EXPECT_FALSE(browser->horizontalScrollBar()->isVisible());
    window()->resize(1500, 1000);
    QApplication::processEvents();
    EXPECT_EQ(widths(), (QList<int>{8, 900}));
}

TEST_F(HelpWindowTest, LinksCanBeReadInADarkPalette)
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, QColor(35, 38, 41));
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Link, Qt::blue);
    QApplication::setPalette(dark);
    viewer.ShowContents();
    QColor link;
    const QTextDocument* document = control<QTextBrowser>("HelpPage")->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().isAnchor())
                link = part.fragment().charFormat().foreground().color();
    ASSERT_TRUE(link.isValid()) << "the first page has a link";
    EXPECT_GT(link.lightness(), 128 - 20);
    EXPECT_NE(link, QColor(Qt::blue));
    QApplication::setPalette(before);
}

TEST_F(HelpWindowTest, TheThreeListsCanBeReachedInASmallWindow)
{
    viewer.ShowContents();
    window()->resize(433, 433);
    QApplication::processEvents();
    const auto* sides = control<QTabWidget>("HelpSides");
    EXPECT_GE(sides->width(), sides->tabBar()->sizeHint().width());
}

TEST_F(HelpWindowTest, AKeywordIsChosenByItsFirstLetters)
{
    viewer.ShowIndex();
    auto* list = control<QListWidget>("HelpIndex");
    ASSERT_EQ(list->count(), 2);
    QTest::keyClicks(control<QLineEdit>("HelpIndexText"), QStringLiteral("DOO"));
    ASSERT_NE(list->currentItem(), nullptr);
    EXPECT_EQ(list->currentItem()->text(), QStringLiteral("doors"));
    EXPECT_EQ(page(), QStringLiteral("book:///second.html#doors"));
}

TEST_F(HelpWindowTest, ASearchListsThePagesAndOpensTheChosenOne)
{
    viewer.ShowSearch();
    auto* text = control<QLineEdit>("HelpSearchText");
    QTest::keyClicks(text, QStringLiteral("wall"));
    QTest::keyClick(text, Qt::Key_Return);
    auto* results = control<QListWidget>("HelpResults");
    ASSERT_EQ(results->count(), 1);
    EXPECT_EQ(results->item(0)->text(), QStringLiteral("Third <3>"));
    results->setCurrentRow(0);
    EXPECT_EQ(page(), QStringLiteral("book:///folder/third.html"));
    text->setText(QStringLiteral("nowhere"));
    QTest::mouseClick(control<QPushButton>("HelpSearchStart"), Qt::LeftButton);
    ASSERT_EQ(results->count(), 1);
    EXPECT_EQ(results->item(0)->flags(), Qt::NoItemFlags);
}

TEST_F(HelpWindowTest, EveryControlThatTakesTheFocusHasAName)
{
    viewer.ShowContents();
    const QList<QWidget*> all = window()->findChildren<QWidget*>();
    for (const QWidget* widget : all) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->objectName().startsWith(QStringLiteral("qt_")))
            continue;
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        EXPECT_FALSE(widget->accessibleName().isEmpty() && (button == nullptr || button->text().isEmpty()))
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
}

} // namespace
} // namespace zv
