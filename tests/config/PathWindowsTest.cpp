#include "config/Fontpath.h"
#include "config/Options.h"
#include "config/ZVYpath.h"
#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "support/OfficeFixture.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

/// The process's current folder is put back at the end.
class PathWindowsTest : public OfficeFixture {
protected:
    PathWindowsTest()
    {
        setKey(User, "Settings", "AOT", "0");
        setKey(User, "Settings", "RibSet", "2");
    }
    ~PathWindowsTest() override { EXPECT_TRUE(setCurrentFolder(before)); }

    /// Clicks a folder of the list by its name.
    bool clickFolder(const QString& name, const QString& window)
    {
        const QStringList names = rows("Dir1", window);
        return names.contains(name) && clickRow("Dir1", int(names.indexOf(name)), window);
    }

    std::string before = currentFolder();
};

class FontpathTest : public PathWindowsTest {
protected:
    const QString kWindow = QStringLiteral("Fontpath");

    FontpathTest()
    {
        std::filesystem::create_directory(folder.file("typefaces"));
        EXPECT_TRUE(setCurrentFolder(folder.path()));
    }
    void open()
    {
        start();
        ASSERT_TRUE(click("Command9"));
        ASSERT_TRUE(appears("Options"));
        control<QLineEdit>("Text1", "Options")->setText("/old");
        ASSERT_TRUE(click("Command1", "Options"));
        ASSERT_TRUE(appears(kWindow));
    }
};

TEST_F(FontpathTest, BeginsAtTheCurrentFolderAndShowsThePresentPath)
{
    open();
    EXPECT_FALSE(program->loaded("Options")->isVisible());
    EXPECT_EQ(program->loaded(kWindow)->windowTitle(), "Font Path");
    EXPECT_EQ(text("Text1", kWindow), "/old");
    EXPECT_EQ(control<FolderList>("Dir1", kWindow)->path(), currentFolder());
}

TEST_F(FontpathTest, OkTakesTheFolderThatWasClicked)
{
    open();
    ASSERT_TRUE(clickFolder("typefaces", kWindow));
    EXPECT_EQ(text("Text1", kWindow), toText(folder.file("typefaces")));
    ASSERT_TRUE(click("Command11", kWindow));
    EXPECT_EQ(program->loaded(kWindow), nullptr);
    ASSERT_TRUE(appears("Options"));
    EXPECT_EQ(text("Text1", "Options"), toText(folder.file("typefaces")));
}

TEST_F(FontpathTest, CancelWithoutAClickGivesTheOldPathBack)
{
    open();
    ASSERT_TRUE(click("Command8", kWindow));
    ASSERT_TRUE(appears("Options"));
    EXPECT_EQ(text("Text1", "Options"), "/old");
}

TEST_F(FontpathTest, CancelAndTheCloseBoxKeepAFolderThatWasClicked)
{
    open();
    ASSERT_TRUE(clickFolder("typefaces", kWindow));
    ASSERT_TRUE(click("Command8", kWindow));
    ASSERT_TRUE(appears("Options"));
    EXPECT_EQ(text("Text1", "Options"), toText(folder.file("typefaces")));
    ASSERT_TRUE(click("Command1", "Options"));
    ASSERT_TRUE(appears(kWindow));
    control<QLineEdit>("Text1", kWindow)->setText("/typed");
    program->loaded(kWindow)->close();
    ASSERT_TRUE(appears("Options"));
    EXPECT_EQ(text("Text1", "Options"), "/typed");
}

TEST_F(FontpathTest, ADriveThatCannotBeReadIsToldAndTheListsStay)
{
    open();
    const std::string path = control<FolderList>("Dir1", kWindow)->path();
    Q_EMIT control<DriveBox>("Drive1", kWindow)->driveChosen(toText(folder.file("no drive")));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Error Reading Drive");
    EXPECT_EQ(messages.shown[0].title, "Drive Error");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(control<FolderList>("Dir1", kWindow)->path(), path);
    EXPECT_EQ(text("Text1", kWindow), "/old");
}

/// The library editor, as far as this window knows it.
class Editor final : public Window {
public:
    explicit Editor(Program& program) : Window(program, QStringLiteral("Newlib"), QStringLiteral("Newlib")) {}
};

class ZVYpathTest : public PathWindowsTest {
protected:
    const QString kWindow = QStringLiteral("ZVYpath");

    ZVYpathTest()
    {
        program->add("Newlib", [this] { return new Editor(*program); });
        makeLibrary("Doors", drawings(1));
        makeCatalogue({"Doors"});
        std::filesystem::create_directory(folder.file("new"));
    }
    /// As the editor opens it.
    void open()
    {
        program->load("Zelvora");
        ASSERT_TRUE(appears("Zelvora"));
        program->show("Newlib");
        ASSERT_TRUE(appears("Newlib"));
        program->unload("Zelvora");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        program->loaded("Newlib")->setEnabled(false);
        program->show(kWindow);
        ASSERT_TRUE(appears(kWindow));
    }
    bool editorIsBack()
    {
        return appears("Newlib") && program->loaded("Newlib")->isEnabled() && !program->loaded(kWindow);
    }
    void typePath(const std::string& path) { control<QLineEdit>("Text1", kWindow)->setText(toText(path)); }
    std::string storedMaster() { return key(Installation, "Path", "ZVRpath"); }
};

TEST_F(ZVYpathTest, BeginsAtTheMasterFolderAndMakesItTheCurrentOne)
{
    open();
    EXPECT_EQ(program->loaded(kWindow)->windowTitle(), "Zelvora Master Libraries Folder");
    EXPECT_EQ(text("Text1", kWindow), toText(installation));
    EXPECT_EQ(control<FolderList>("Dir1", kWindow)->path(), installation);
    EXPECT_EQ(currentFolder(), installation);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ZVYpathTest, AMasterFolderThatIsGoneIsTold)
{
    program->load("Zelvora");
    program->values().MasterPath = folder.file("gone");
    program->show(kWindow);
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Error Reading Drive: " + folder.file("gone"));
    EXPECT_EQ(messages.shown[0].title, "Drive Error");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
}

TEST_F(ZVYpathTest, AnEmptyFolderGetsTheProfileAndTheLists)
{
    open();
    typePath(folder.file("new"));
    ASSERT_TRUE(click("Command11", kWindow));
    EXPECT_TRUE(editorIsBack());
    EXPECT_EQ(program->values().MasterPath, folder.file("new"));
    EXPECT_EQ(storedMaster(), folder.file("new"));
    master = folder.file("new");
    EXPECT_EQ(key(Master, "Path", "ZVRpath"), master);
    EXPECT_EQ(key(Master, "Library", "lib1"), "Doors");
    EXPECT_EQ(readFile(listPath("Doors")).valueOr(""),
              readFile(joinPath(installation, "Doors.lst")).valueOr("none"));
}

TEST_F(ZVYpathTest, AFolderWithAProfileIsTakenAsItIs)
{
    ASSERT_TRUE(writeFile(folder.file("new/zelvora.INI"), "[Library]\r\nlibnum=0\r\n"));
    open();
    typePath(folder.file("new"));
    ASSERT_TRUE(click("Command11", kWindow));
    EXPECT_FALSE(fileExists(folder.file("new/Doors.lst")));
    master = folder.file("new");
    EXPECT_EQ(key(Master, "Library", "libnum"), "0");
    EXPECT_EQ(key(Master, "Path", "ZVRpath"), master);
}

TEST_F(ZVYpathTest, OkOnTheMasterFolderItselfCopiesNothingAndRewritesBothPaths)
{
    open();
    setKey(Installation, "Path", "ZVRpath", "/stale");
    ASSERT_TRUE(click("Command11", kWindow));
    EXPECT_EQ(storedMaster(), installation);
    EXPECT_EQ(readFile(listPath("Doors")).valueOr("").find("D1.dwg") != std::string::npos, true);
}

TEST_F(ZVYpathTest, LibrariesOfAnotherMasterFolderDoNotMove)
{
    const std::string old = folder.file("old");
    std::filesystem::create_directory(old);
    setKey(Installation, "Path", "ZVRpath", old);
    ASSERT_TRUE(writeFile(joinPath(old, "Doors.lst"), "old;old\r\n"));
    ASSERT_TRUE(writeFile(joinPath(old, "Vendor.lst"), "old;old\r\n"));
    open();
    typePath(folder.file("new"));
    ASSERT_TRUE(click("Command11", kWindow));
    EXPECT_EQ(readFile(folder.file("new/Doors.lst")).valueOr(""),
              readFile(joinPath(installation, "Doors.lst")).valueOr("none"));
    EXPECT_FALSE(fileExists(folder.file("new/Vendor.lst")));
}

TEST_F(ZVYpathTest, DefaultFollowedByCancelHoldsForThisRunOnly)
{
    setKey(Installation, "Path", "ZVRpath", folder.file("new"));
    open();
    ASSERT_TRUE(click("Command1", kWindow));
    EXPECT_EQ(text("Text1", kWindow), toText(installation));
    EXPECT_NE(program->loaded(kWindow), nullptr);
    ASSERT_TRUE(click("Command8", kWindow));
    EXPECT_TRUE(editorIsBack());
    EXPECT_EQ(program->values().MasterPath, installation);
    EXPECT_EQ(storedMaster(), folder.file("new"));
}

TEST_F(ZVYpathTest, TheCloseBoxBringsTheEditorBack)
{
    open();
    program->loaded(kWindow)->close();
    EXPECT_TRUE(editorIsBack());
}

TEST_F(ZVYpathTest, AFolderThatCannotBeWrittenIsPassedOverInSilence)
{
    open();
    typePath(folder.file("not there"));
    ASSERT_TRUE(click("Command11", kWindow));
    EXPECT_TRUE(editorIsBack());
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(storedMaster(), folder.file("not there"));
}

} // namespace
} // namespace zv
