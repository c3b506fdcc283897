#include "queue/Cart.h"

#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "support/OfficeFixture.h"
#include "support/OneStepFails.h"

#include <QPlainTextEdit>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class CartTest : public OfficeFixture {
protected:
    CartTest()
    {
        makeDoors(3);
        setKey(User, "Settings", "insertmode", "3");
    }
    void open(const std::string& queue)
    {
        EXPECT_TRUE(writeFile(userFile(".crt"), queue));
        openAsItIs();
    }
    void openAsItIs()
    {
        start();
        EXPECT_TRUE(click("Command24"));
        EXPECT_TRUE(appears("Cart"));
    }
    Cart& cart() { return *static_cast<Cart*>(program->loaded("Cart")); }
    std::string lines(const std::vector<std::string>& held)
    {
        std::string all;
        for (const std::string& path : held)
            all += path + "\r\n";
        return all;
    }
    std::string queue() { return readFile(userFile(".crt")).valueOr("(none)"); }
    static QString shown(const std::string& path) { return QString::fromStdString(path); }

    const std::vector<std::string> paths = drawings(3);
};

TEST_F(CartTest, ShowsTheQueueAsItStandsAboveTheDisabledMainWindow)
{
    open(lines({paths[2], "x", "", paths[0], paths[2]}));
    EXPECT_EQ(rows("List1", "Cart"), (QStringList{shown(paths[2]), shown(paths[0]), shown(paths[2])}));
    EXPECT_EQ(cart().windowTitle(), "Drawing Queue");
    EXPECT_TRUE(cart().isTopmost());
    EXPECT_FALSE(main().isEnabled());
}

TEST_F(CartTest, AQueueThatCannotBeAskedForIsNotBegunAnew)
{
    ASSERT_TRUE(writeFile(userFile(".crt"), lines(paths)));
    start();
    {
        const OneStepFails files(FileStep::Status, 0);
        program->load("Cart");
        ASSERT_TRUE(files.wasReached());
    }
    EXPECT_EQ(queue(), lines(paths));
    EXPECT_EQ(cart().List1->count(), 3);
}

TEST_F(CartTest, HasTheCaptionsAndTipsThatUsersKnow)
{
    open("");
    const struct {
        const char *control, *text, *tip;
    } cases[] = {{"Frame1", "Items in the Drawing Queue", ""},
                 {"Frame2", "Selection", ""},
                 {"Text1", "", "Drawing comments"},
                 {"Command5", "&Remove", "Remove Items from the Drawing Queue"},
                 {"Command1", "Re&set", "Clear All Items in Queue"},
                 {"Command11", "&Copy", "Copy files to Project Folder"},
                 {"Command2", "&Ok", "Save & Close Shopping Cart"},
                 {"Command3", "Ca&ncel", "Quit and Close Shopping Cart"},
                 {"Picture2", "", "Double Click for About Zelvora"}};
    for (const auto& expected : cases) {
        EXPECT_EQ(text(expected.control, "Cart"), expected.text) << expected.control;
        EXPECT_EQ(control(expected.control, "Cart")->toolTip(), expected.tip) << expected.control;
    }
}

TEST_F(CartTest, AMissingQueueIsMadeEmpty)
{
    openAsItIs();
    EXPECT_EQ(queue(), "");
    EXPECT_TRUE(rows("List1", "Cart").isEmpty());
}

TEST_F(CartTest, AQueueThatCannotBeReadEndsTheProgramWithAPlainMessage)
{
    std::filesystem::create_directory(userFile(".crt"));
    start();
    ASSERT_TRUE(click("Command24"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_NE(lastMessage().find(userFile(".crt")), std::string::npos);
}

TEST_F(CartTest, AClickShowsTheDrawingAndItsDescription)
{
    open(lines(paths));
    ASSERT_TRUE(clickRow("List1", 1, "Cart"));
    EXPECT_EQ(text("Text1", "Cart"), shown(paths[1]) + "\n\nAbout D2");
    EXPECT_EQ(cart().DwgThumbnail1->dwgFileName(), shown(paths[1]));
}

TEST_F(CartTest, ChoosingByTheArrowsCountsAsAClick)
{
    open(lines(paths));
    QTest::keyClick(cart().List1, Qt::Key_Down);
    EXPECT_TRUE(text("Text1", "Cart").endsWith("About D1"));
}

TEST_F(CartTest, ADrawingThatCannotBeReadShowsItsPathAloneAndTheWindowStays)
{
    open(lines({"/gone/A.dwg", paths[0]}));
    ASSERT_TRUE(clickRow("List1", 0, "Cart"));
    EXPECT_EQ(text("Text1", "Cart"), "/gone/A.dwg");
    EXPECT_EQ(cart().DwgThumbnail1->dwgFileName(), shown(joinPath(installation, "failed.dwg")));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(endedWith, -1);
}

TEST_F(CartTest, RemoveTakesTheSelectedEntryAndSelectsNone)
{
    open(lines(paths));
    ASSERT_TRUE(clickRow("List1", 1, "Cart"));
    ASSERT_TRUE(click("Command5", "Cart"));
    EXPECT_EQ(rows("List1", "Cart"), (QStringList{shown(paths[0]), shown(paths[2])}));
    EXPECT_EQ(cart().List1->currentRow(), -1);
    EXPECT_EQ(text("Text1", "Cart"), "");
    EXPECT_EQ(cart().DwgThumbnail1->dwgFileName(), "");
    ASSERT_TRUE(click("Command5", "Cart"));
    EXPECT_EQ(rows("List1", "Cart").size(), 2) << "nothing is selected any more";
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(queue(), lines(paths)) << "the file changes on Ok only";
}

TEST_F(CartTest, ResetAsksAndEmptiesTheListOnly)
{
    open(lines(paths));
    ASSERT_TRUE(clickRow("List1", 0, "Cart"));
    ASSERT_TRUE(click("Command1", "Cart"));
    EXPECT_EQ(lastMessage(), "Clear all items in Drawing Queue?");
    EXPECT_EQ(messages.shown.back().title, "Reset Drawing Queue");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Question);
    EXPECT_EQ(rows("List1", "Cart").size(), 3);
    EXPECT_TRUE(cart().isTopmost());
    messages.yes = true;
    ASSERT_TRUE(click("Command1", "Cart"));
    EXPECT_TRUE(rows("List1", "Cart").isEmpty());
    EXPECT_EQ(text("Text1", "Cart"), "");
    EXPECT_EQ(cart().DwgThumbnail1->dwgFileName(), "");
    ASSERT_TRUE(click("Command3", "Cart"));
    EXPECT_EQ(queue(), lines(paths));
}

TEST_F(CartTest, OkWritesTheListFromFirstToLast)
{
    open(lines(paths));
    ASSERT_TRUE(clickRow("List1", 0, "Cart"));
    ASSERT_TRUE(click("Command5", "Cart"));
    ASSERT_TRUE(click("Command2", "Cart"));
    EXPECT_EQ(queue(), lines({paths[1], paths[2]}));
    EXPECT_EQ(program->loaded("Cart"), nullptr);
    EXPECT_TRUE(main().isEnabled());
}

TEST_F(CartTest, OkOnAnEmptyListLeavesAFileOfZeroBytes)
{
    open(lines(paths));
    messages.yes = true;
    ASSERT_TRUE(click("Command1", "Cart"));
    ASSERT_TRUE(click("Command2", "Cart"));
    EXPECT_EQ(queue(), "");
}

TEST_F(CartTest, AQueueThatCannotBeWrittenEndsTheProgramWithAPlainMessage)
{
    open(lines(paths));
    std::filesystem::remove(userFile(".crt"));
    std::filesystem::create_directories(userFile(".crt") + "/in the way");
    ASSERT_TRUE(click("Command2", "Cart"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_NE(lastMessage().find(userFile(".crt")), std::string::npos);
}

TEST_F(CartTest, CancelAndTheCloseBoxLoseTheChangesAndEnableTheMainWindow)
{
    open(lines(paths));
    for (const bool byButton : {true, false}) {
        ASSERT_TRUE(clickRow("List1", 0, "Cart"));
        ASSERT_TRUE(click("Command5", "Cart"));
        if (byButton)
            ASSERT_TRUE(click("Command3", "Cart"));
        else
            cart().close();
        EXPECT_EQ(program->loaded("Cart"), nullptr);
        EXPECT_TRUE(main().isEnabled());
        EXPECT_EQ(queue(), lines(paths));
        if (byButton) {
            ASSERT_TRUE(click("Command24"));
            ASSERT_TRUE(appears("Cart"));
        }
    }
}

TEST_F(CartTest, OpenedOtherwiseItTakesTheSelectedDrawingAlong)
{
    EXPECT_TRUE(writeFile(userFile(".crt"), lines({paths[0]})));
    start();
    main().fields.selectedDrawing = paths[1];
    main().fields.cartFromButton = 0;
    program->show("Cart");
    EXPECT_EQ(rows("List1", "Cart"), (QStringList{shown(paths[0]), shown(paths[1])}));
    EXPECT_EQ(queue(), lines({paths[0]}));
}

TEST_F(CartTest, PathsOfAnyBytesAreSavedAsTheyWere)
{
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "a path is a text on this system";
    open(lines({"/a\xFC;b \xFF.dwg", paths[0]}));
    ASSERT_TRUE(click("Command2", "Cart"));
    EXPECT_EQ(queue(), lines({"/a\xFC;b \xFF.dwg", paths[0]}));
}

} // namespace
} // namespace zv
