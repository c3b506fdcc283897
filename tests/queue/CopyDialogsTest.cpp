#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "host/HostDialogs.h"
#include "host/Xattach.h"
#include "host/cmode.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "queue/Cart.h"
#include "queue/CartCopy.h"
#include "queue/NewFolder.h"
#include "support/Environment.h"
#include "support/FullDisk.h"
#include "support/OfficeFixture.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTest>

#include <filesystem>
#include <optional>

namespace zv {
namespace {

using enum ProfileFile;
namespace fs = std::filesystem;

/// The current folder, which the dialogs change, is given back; the file manager writes down what it shows.
class CopyDialogsTest : public OfficeFixture {
protected:
    CopyDialogsTest()
    {
        makeDoors(3);
        setKey(User, "Settings", "insertmode", "3");
        for (const char* name : {"to", "bin", "job"})
            fs::create_directory(folder.file(name));
        const std::string manager =
            folder.write("bin/xdg-open", "#!/bin/sh\necho \"$1\" >> '" + folder.file("shown") + "'\n");
        fs::permissions(manager, fs::perms::owner_all);
        EXPECT_TRUE(setCurrentFolder(folder.file("job")));
    }
    ~CopyDialogsTest() override { EXPECT_TRUE(setCurrentFolder(m_before)); }
    void SetUp() override
    {
        if (fs::path::preferred_separator != '/')
            GTEST_SKIP() << "the system's own program shows the folder of a copy, in front of these windows";
    }

    void openCart(const std::vector<std::string>& queue)
    {
        std::string lines;
        for (const std::string& path : queue)
            lines += path + "\r\n";
        EXPECT_TRUE(writeFile(userFile(".crt"), lines));
        start();
        EXPECT_TRUE(click("Command24"));
        EXPECT_TRUE(appears("Cart"));
    }
    void openCartCopy(const std::vector<std::string>& queue)
    {
        openCart(queue);
        EXPECT_TRUE(click("Command11", "Cart"));
        EXPECT_TRUE(appears("CartCopy"));
    }
    void setText(const QString& name, const std::string& value, const QString& window)
    {
        control<QLineEdit>(name, window)->setText(QString::fromStdString(value));
    }
    bool copyTo(const std::string& place)
    {
        setText("Text1", place, "CartCopy");
        return click("Command11", "CartCopy");
    }
    FolderList* folders(const QString& window) { return control<FolderList>("Dir1", window); }
    cmode* openCmodeDialog(OpenedFrom from = OpenedFrom::MainWindow)
    {
        start();
        main().fields.selectedDrawing = paths[0];
        EXPECT_TRUE(openCmode(*program, from, paths[0]));
        return static_cast<cmode*>(program->loaded("cmode"));
    }

    const std::vector<std::string> paths = drawings(3);

private:
    const std::string m_before = currentFolder();
    const Environment m_path{"PATH", folder.file("bin") + ":" + std::getenv("PATH")};
};

TEST_F(CopyDialogsTest, CartCopyStartsAtTheCurrentFolderWhateverIsStored)
{
    setKey(User, "Settings", "projectpath", folder.file("to"));
    openCartCopy(paths);
    EXPECT_EQ(text("Text1", "CartCopy"), QString::fromStdString(folder.file("job")));
    EXPECT_EQ(folders("CartCopy")->path(), folder.file("job"));
    EXPECT_TRUE(program->loaded("CartCopy")->isTopmost());
    EXPECT_FALSE(program->loaded("Cart")->isEnabled());
}

TEST_F(CopyDialogsTest, HaveTheCaptionsAndTipsThatUsersKnow)
{
    openCartCopy({});
    program->load("dwgcopy");
    program->load("xrefcopy");
    const struct {
        const char *window, *title, *frame, *cancel, *ok, *fresh;
    } cases[] = {
        {"CartCopy", "Specify Copy Location", "Copy DWG(s) To: ", "Cancel Copy", "Start Copy",
         "Create new folder"},
        {"dwgcopy", "Specify Copy Location", "Copy DWG To: ", "Discard", "Close and Save Changes", ""},
        {"xrefcopy", "Xref Copy Location", "Copy Xref To: ", "Discard", "Close and Save Changes", ""}};
    for (const auto& expected : cases) {
        const QString window = expected.window;
        EXPECT_EQ(program->loaded(window)->windowTitle(), expected.title);
        EXPECT_EQ(text("Frame1", window), expected.frame);
        EXPECT_EQ(text("Command1", window), "&New");
        EXPECT_EQ(text("Command8", window), "&Cancel");
        EXPECT_EQ(text("Command11", window), "&Ok");
        EXPECT_EQ(control("Command8", window)->toolTip(), expected.cancel);
        EXPECT_EQ(control("Command11", window)->toolTip(), expected.ok);
        EXPECT_EQ(control("Command1", window)->toolTip(), expected.fresh);
    }
}

TEST_F(CopyDialogsTest, Text1FollowsTheFolderThatIsOpenedAndADriveThatFailsIsTold)
{
    openCartCopy({});
    ASSERT_TRUE(folders("CartCopy")->setPath(folder.file("to")));
    EXPECT_EQ(text("Text1", "CartCopy"), QString::fromStdString(folder.file("to")));
    auto* drives = control<DriveBox>("Drive1", "CartCopy");
    Q_EMIT drives->textActivated(QString::fromStdString(folder.file("gone")));
    EXPECT_EQ(lastMessage(), "Error Reading Drive");
    EXPECT_EQ(messages.shown.back().title, "Drive Error");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Critical);
    EXPECT_EQ(folders("CartCopy")->path(), folder.file("to"));
}

TEST_F(CopyDialogsTest, TheQueueIsCopiedShownAndAskedAbout)
{
    openCartCopy(paths);
    ASSERT_TRUE(copyTo(folder.file("to")));
    for (const char* name : {"D1.dwg", "D2.dwg", "D3.dwg"})
        EXPECT_EQ(folder.read(std::string("to/") + name), folder.read(std::string("drawings/") + name));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Copy Completed, Clear Drawing Queue?");
    EXPECT_EQ(messages.shown[0].title, "Clear All Drawing Queue items?");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Question);
    EXPECT_TRUE(waitUntil([this] { return folder.read("shown") == folder.file("to") + "/\n"; }));
    EXPECT_EQ(program->loaded("CartCopy"), nullptr);
    EXPECT_TRUE(program->loaded("Cart")->isEnabled());
    EXPECT_TRUE(program->loaded("Cart")->isTopmost());
    EXPECT_EQ(rows("List1", "Cart").size(), 3);
    EXPECT_EQ(currentFolder(), folder.file("to"));
}

TEST_F(CopyDialogsTest, YesAtTheEndEmptiesTheListAndNotTheFile)
{
    openCartCopy(paths);
    control<QListWidget>("List1", "Cart")->setCurrentRow(0);
    const QString shown = text("Text1", "Cart");
    messages.yes = true;
    ASSERT_TRUE(copyTo(folder.file("to")));
    EXPECT_TRUE(rows("List1", "Cart").isEmpty());
    EXPECT_EQ(text("Text1", "Cart"), shown);
    ASSERT_TRUE(click("Command3", "Cart"));
    EXPECT_NE(readFile(userFile(".crt")).valueOr({}), "");
}

TEST_F(CopyDialogsTest, ReturnInTheDestinationAndOnTheButtonStartsTheCopy)
{
    openCart(paths);
    for (const char* place : {"Text1", "Command11"}) {
        ASSERT_TRUE(click("Command11", "Cart"));
        ASSERT_TRUE(appears("CartCopy"));
        setText("Text1", folder.file("to"), "CartCopy");
        QTest::keyClick(control(place, "CartCopy"), Qt::Key_Return);
        EXPECT_EQ(program->loaded("CartCopy"), nullptr) << place;
        EXPECT_EQ(lastMessage(), "Copy Completed, Clear Drawing Queue?") << place;
        messages.shown.clear();
    }
}

TEST_F(CopyDialogsTest, TheFolderOfTheListIsStoredNotTheTypedOne)
{
    openCartCopy(paths);
    ASSERT_TRUE(copyTo(folder.file("to")));
    EXPECT_EQ(key(User, "Settings", "projectpath"), folder.file("job"));
}

TEST_F(CopyDialogsTest, TheOverwriteQuestionTakesTheDialogOffTheTop)
{
    folder.write("to/D2.dwg", "old");
    openCartCopy(paths);
    bool topmost = true;
    messages.whileShown = [&] {
        if (Window* dialog = program->loaded("CartCopy"))
            topmost = dialog->isTopmost();
    };
    ASSERT_TRUE(copyTo(folder.file("to")));
    ASSERT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(messages.shown[0].text, "File: D2.dwg Already Exists, Would you Like to Overwrite?");
    EXPECT_EQ(messages.shown[0].title, "File Already Exists in Specified Directory");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Question);
    EXPECT_FALSE(topmost) << "and it stays there";
    EXPECT_EQ(folder.read("to/D2.dwg"), "old");
    EXPECT_TRUE(fileExists(folder.file("to/D3.dwg")));
}

TEST_F(CopyDialogsTest, AMissingDrawingEndsTheProgramAndNoneAfterItIsCopied)
{
    openCartCopy({paths[0], "/gone/X.dwg", paths[2]});
    ASSERT_TRUE(copyTo(folder.file("to")));
    EXPECT_EQ(endedWith, 1);
    EXPECT_NE(lastMessage().find("/gone/X.dwg"), std::string::npos);
    EXPECT_TRUE(fileExists(folder.file("to/D1.dwg")));
    EXPECT_FALSE(fileExists(folder.file("to/D3.dwg")));
}

TEST_F(CopyDialogsTest, AFullDiskEndsTheProgramAndLeavesTheOldFileAndNoHalfOne)
{
    if (!FullDisk::canBeMade())
        GTEST_SKIP() << "the size of files cannot be limited on this system";
    folder.write("to/D1.dwg", "old");
    openCartCopy(paths);
    messages.yes = true;
    std::optional<FullDisk> disk;
    messages.whileShown = [this, &disk] {
        disk.emplace(10);
        messages.whileShown = nullptr;
    };
    ASSERT_TRUE(copyTo(folder.file("to")));
    disk.reset();
    EXPECT_EQ(endedWith, 1);
    EXPECT_NE(lastMessage().find(paths[0]), std::string::npos);
    EXPECT_EQ(folder.read("to/D1.dwg"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.file("to")), fs::directory_iterator()), 1);
}

TEST_F(CopyDialogsTest, ABadPathEndsTheProgram)
{
    openCartCopy(paths);
    ASSERT_TRUE(copyTo(folder.file("gone")));
    EXPECT_EQ(endedWith, 1);
    EXPECT_NE(lastMessage().find(folder.file("gone")), std::string::npos);
    EXPECT_EQ(key(User, "Settings", "projectpath"), "(none)");
}

TEST_F(CopyDialogsTest, AnEmptyQueueShowsTheFolderAndAsksAllTheSame)
{
    openCartCopy({});
    ASSERT_TRUE(copyTo(folder.file("to")));
    EXPECT_EQ(lastMessage(), "Copy Completed, Clear Drawing Queue?");
    EXPECT_TRUE(waitUntil([this] { return !folder.read("shown").empty(); }));
}

TEST_F(CopyDialogsTest, CancelDuringTheCopyGivesTheRestUp)
{
    folder.write("to/D1.dwg", "old");
    openCartCopy(paths);
    messages.yes = true;
    messages.whileShown = [this] {
        // The user presses it while the first drawing is asked about.
        QMetaObject::invokeMethod(control<QAbstractButton>("Command8", "CartCopy"), &QAbstractButton::click,
                                  Qt::QueuedConnection);
        messages.whileShown = nullptr;
    };
    ASSERT_TRUE(copyTo(folder.file("to")));
    EXPECT_EQ(messages.shown.size(), 1u) << "nothing is asked of a copy that is not completed";
    EXPECT_FALSE(fileExists(folder.file("to/D2.dwg")));
    EXPECT_EQ(program->loaded("CartCopy"), nullptr);
    EXPECT_TRUE(program->loaded("Cart")->isEnabled());
    EXPECT_EQ(rows("List1", "Cart").size(), 3);
}

TEST_F(CopyDialogsTest, TheCloseBoxDuringTheCopyDoesAsCancel)
{
    folder.write("to/D1.dwg", "old");
    openCartCopy(paths);
    messages.whileShown = [this] {
        program->loaded("CartCopy")->close();
        EXPECT_NE(program->loaded("CartCopy"), nullptr);
        messages.whileShown = nullptr;
    };
    ASSERT_TRUE(copyTo(folder.file("to")));
    EXPECT_FALSE(fileExists(folder.file("to/D2.dwg")));
    EXPECT_EQ(program->loaded("CartCopy"), nullptr);
}

TEST_F(CopyDialogsTest, CancelEscAndTheCloseBoxCopyNothingAndEnableTheQueue)
{
    openCart(paths);
    for (const char* way : {"button", "esc", "box"}) {
        ASSERT_TRUE(click("Command11", "Cart"));
        ASSERT_TRUE(appears("CartCopy"));
        Window* dialog = program->loaded("CartCopy");
        if (*way == 'b' && way[1] == 'u')
            ASSERT_TRUE(click("Command8", "CartCopy"));
        else if (*way == 'e')
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            dialog->close();
        EXPECT_EQ(program->loaded("CartCopy"), nullptr) << way;
        EXPECT_TRUE(program->loaded("Cart")->isEnabled()) << way;
    }
    EXPECT_TRUE(messages.shown.empty());
}

// ---- new folders

TEST_F(CopyDialogsTest, ANewFolderIsMadeUnderTheOpenOneAndOpened)
{
    openCartCopy(paths);
    ASSERT_TRUE(click("Command1", "CartCopy"));
    ASSERT_TRUE(appears("sNewFolder"));
    EXPECT_TRUE(program->loaded("sNewFolder")->isTopmost());
    EXPECT_FALSE(program->loaded("CartCopy")->isEnabled());
    EXPECT_EQ(text("Text1", "sNewFolder"), QString::fromStdString(folder.file("job")));
    type("Text2", "Fresh", "sNewFolder");
    ASSERT_TRUE(click("Command11", "sNewFolder"));
    EXPECT_TRUE(folderExists(folder.file("job/Fresh")));
    EXPECT_EQ(program->loaded("sNewFolder"), nullptr);
    EXPECT_EQ(folders("CartCopy")->path(), folder.file("job/Fresh"));
    EXPECT_EQ(text("Text1", "CartCopy"), QString::fromStdString(folder.file("job/Fresh")));
    EXPECT_TRUE(program->loaded("CartCopy")->isEnabled());
    EXPECT_TRUE(waitUntil([this] { return control("Command11", "CartCopy")->hasFocus(); }));
}

TEST_F(CopyDialogsTest, TheNewFolderDialogGrowsWiderOnly)
{
    openCartCopy({});
    ASSERT_TRUE(click("Command1", "CartCopy"));
    ASSERT_TRUE(appears("sNewFolder"));
    Window* dialog = program->loaded("sNewFolder");
    const int height = dialog->height();
    dialog->resize(1400, 1000);
    EXPECT_EQ(dialog->size(), QSize(1400, height));
}

TEST_F(CopyDialogsTest, ANewFolderWithoutANameIsAskedFor)
{
    openCartCopy({});
    ASSERT_TRUE(click("Command1", "CartCopy"));
    ASSERT_TRUE(click("Command11", "sNewFolder"));
    EXPECT_EQ(lastMessage(), "Please Specify New Folder name");
    EXPECT_EQ(messages.shown.back().title, "No Folder Name Specified");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Information);
    EXPECT_NE(program->loaded("sNewFolder"), nullptr);
    EXPECT_TRUE(program->loaded("sNewFolder")->isTopmost());
}

TEST_F(CopyDialogsTest, EveryFailureOfANewFolderHasTheOneMessage)
{
    fs::create_directory(folder.file("job/Old"));
    openCartCopy({});
    ASSERT_TRUE(click("Command1", "CartCopy"));
    for (const std::string& name :
         {std::string("Old"), std::string("no/such"), std::string("."), std::string(300, 'n')}) {
        setText("Text2", name, "sNewFolder");
        ASSERT_TRUE(click("Command11", "sNewFolder"));
        EXPECT_EQ(lastMessage(), "Folder Name: " + joinPath(folder.file("job"), name) + " Already Exists");
        EXPECT_EQ(messages.shown.back().title, "Folder Already Exists");
        EXPECT_EQ(messages.shown.back().icon, MessageIcon::Information);
        EXPECT_EQ(text("Text2", "sNewFolder"), "");
    }
    ASSERT_TRUE(click("Command4", "sNewFolder"));
    EXPECT_EQ(program->loaded("sNewFolder"), nullptr);
    EXPECT_TRUE(program->loaded("CartCopy")->isEnabled());
}

TEST_F(CopyDialogsTest, TheNewFolderDialogsHaveTheCaptionsThatUsersKnow)
{
    openCartCopy({});
    ASSERT_TRUE(click("Command1", "CartCopy"));
    const QString window = "sNewFolder";
    EXPECT_EQ(program->loaded(window)->windowTitle(), "Create New Folder");
    EXPECT_EQ(text("Frame1", window), "Create New Folder Under:");
    EXPECT_EQ(text("Label1", window), "Type New Folder Name:");
    EXPECT_EQ(text("Command11", window), "&Ok");
    EXPECT_EQ(text("Command4", window), "&Cancel");
    EXPECT_EQ(text("Command3", window), "&Help");
    EXPECT_EQ(control("Command11", window)->toolTip(), "Create New Folder");
    EXPECT_EQ(control("Command4", window)->toolTip(), "Cancel New Folder");
    EXPECT_EQ(control("Command3", window)->toolTip(), "Open Quendar Help");
}

// ---- dwgcopy

TEST_F(CopyDialogsTest, DwgcopyStartsAtTheFolderOfTheCopyAndElseAtTheCurrentOne)
{
    cmode* dialog = openCmodeDialog();
    const struct {
        std::string copy, folder;
    } cases[] = {{folder.file("to/x.dwg"), folder.file("to")},
                 {folder.file("gone/x.dwg"), folder.file("job")},
                 {"", folder.file("job")}};
    for (const auto& expected : cases) {
        dialog->Text1->setText(QString::fromStdString(expected.copy));
        ASSERT_TRUE(click("Command1", "cmode"));
        ASSERT_TRUE(appears("dwgcopy"));
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(folders("dwgcopy")->path(), expected.folder);
        EXPECT_EQ(text("Text1", "dwgcopy"), QString::fromStdString(expected.folder));
        ASSERT_TRUE(click("Command8", "dwgcopy"));
        EXPECT_EQ(program->loaded("dwgcopy"), nullptr);
        ASSERT_TRUE(appears("cmode"));
        EXPECT_EQ(dialog->Text1->text(), QString::fromStdString(expected.copy));
    }
}

TEST_F(CopyDialogsTest, DwgcopyGivesTheTargetToCmodeAndStoresTheFolderOfTheList)
{
    cmode* dialog = openCmodeDialog();
    ASSERT_TRUE(click("Command1", "cmode"));
    setText("Text1", folder.file("to"), "dwgcopy");
    ASSERT_TRUE(click("Command11", "dwgcopy"));
    EXPECT_EQ(dialog->Text1->text(), QString::fromStdString(folder.file("to/D1.dwg")));
    EXPECT_EQ(key(User, "Settings", "projectpath"), folder.file("job"));
    EXPECT_EQ(currentFolder(), folder.file("to"));
    EXPECT_EQ(program->loaded("dwgcopy"), nullptr);
    EXPECT_TRUE(appears("cmode"));
}

TEST_F(CopyDialogsTest, DwgcopyForSearchTakesTheNameThatCmodeHolds)
{
    cmode* dialog = openCmodeDialog(OpenedFrom::Search);
    dialog->Text1->setText("/somewhere/Own name.dwg");
    ASSERT_TRUE(click("Command1", "cmode"));
    setText("Text1", folder.file("to"), "dwgcopy");
    ASSERT_TRUE(click("Command11", "dwgcopy"));
    EXPECT_EQ(dialog->Text1->text(), QString::fromStdString(folder.file("to/Own name.dwg")));
}

TEST_F(CopyDialogsTest, DwgcopyMakesFoldersBelowTheOthers)
{
    openCmodeDialog();
    ASSERT_TRUE(click("Command1", "cmode"));
    ASSERT_TRUE(click("Command1", "dwgcopy"));
    ASSERT_TRUE(appears("cNewFolder"));
    EXPECT_FALSE(program->loaded("cNewFolder")->isTopmost());
    EXPECT_FALSE(program->loaded("dwgcopy")->isEnabled());
    type("Text2", "Fresh", "cNewFolder");
    QTest::keyClick(control("Text2", "cNewFolder"), Qt::Key_Return);
    EXPECT_EQ(folders("dwgcopy")->path(), folder.file("job/Fresh"));
}

TEST_F(CopyDialogsTest, ABadPathInDwgcopyEndsTheProgram)
{
    openCmodeDialog();
    ASSERT_TRUE(click("Command1", "cmode"));
    setText("Text1", "", "dwgcopy");
    ASSERT_TRUE(click("Command11", "dwgcopy"));
    EXPECT_EQ(endedWith, 1);
}

// ---- xrefcopy

TEST_F(CopyDialogsTest, XrefcopyGivesItsFolderToXattachAndStoresNothing)
{
    setKey(Installation, "masterxref", "projectfolder", "1");
    start();
    ASSERT_TRUE(openXattach(*program, OpenedFrom::MainWindow, paths[0], ""));
    auto* dialog = static_cast<Xattach*>(program->loaded("Xattach"));
    ASSERT_TRUE(click("Command1", "Xattach"));
    ASSERT_TRUE(appears("xrefcopy"));
    EXPECT_FALSE(dialog->isVisible());
    ASSERT_TRUE(click("Command8", "xrefcopy"));
    ASSERT_TRUE(appears("Xattach"));
    EXPECT_EQ(dialog->Text8->text(), "");
    ASSERT_TRUE(click("Command1", "Xattach"));
    setText("Text1", folder.file("to"), "xrefcopy");
    ASSERT_TRUE(click("Command11", "xrefcopy"));
    EXPECT_EQ(dialog->Text8->text(), QString::fromStdString(folder.file("to")));
    EXPECT_EQ(key(User, "settings", "projectpath"), "(none)");
    EXPECT_TRUE(appears("Xattach"));
}

TEST_F(CopyDialogsTest, NewInXrefcopyFailsAndEndsTheProgram)
{
    start();
    program->show("xrefcopy");
    ASSERT_TRUE(click("Command1", "xrefcopy"));
    EXPECT_EQ(endedWith, 1);
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
}

} // namespace
} // namespace zv
