#include "controls/DriveBox.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "support/AnsweredMessages.h"
#include "support/TemporaryFolder.h"
#include "window/TextBytes.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>

namespace zv {
namespace {

QStringList rowsOf(const QListWidget& list)
{
    QStringList rows;
    for (int row = 0; row < list.count(); ++row)
        rows << list.item(row)->text();
    return rows;
}

QListWidgetItem* rowNamed(const QListWidget& list, const QString& name)
{
    const auto found = list.findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    return found.isEmpty() ? nullptr : found.last();
}

void press(QListWidget& list, const QString& name, bool twice = false)
{
    QListWidgetItem* row = rowNamed(list, name);
    ASSERT_NE(row, nullptr) << name.toStdString();
    list.scrollToItem(row);
    const QPoint place = list.visualItemRect(row).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    if (twice)
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
}

class FolderControlsTest : public testing::Test {
protected:
    FolderControlsTest()
    {
        for (const char* name : {"one", "one/inner", "Two"})
            std::filesystem::create_directory(folder.file(name));
        folder.write("a.dwg", "");
        folder.write("b.dwg", "");
        folder.write("one/c.DWG", "");
        folder.write("one/d.txt", "");
        EXPECT_TRUE(folders.setPath(folder.path()));
        folders.show();
    }

    TemporaryFolder folder;
    FolderList folders;
};

TEST_F(FolderControlsTest, TheListStartsAtTheCurrentFolder)
{
    const FolderList fresh;
    EXPECT_EQ(fresh.path(), currentFolder());
    EXPECT_EQ(fresh.chosenPath(), fresh.path());
}

TEST_F(FolderControlsTest, TheListShowsTheFoldersAboveTheOpenOneAndThoseInIt)
{
    const QStringList rows = rowsOf(folders);
    const auto above = foldersDownTo(folder.path());
    ASSERT_EQ(rows.size(), qsizetype(above.size()) + 2);
    EXPECT_EQ(rows.first(), toText(above.front()));
    EXPECT_EQ(rows.mid(rows.size() - 2), (QStringList{"one", "Two"}));
    EXPECT_EQ(folders.currentRow(), int(above.size()) - 1) << "the open one is chosen";
}

TEST_F(FolderControlsTest, OneClickChoosesAndOpensNothing)
{
    QSignalSpy chosen(&folders, &FolderList::folderChosen), changed(&folders, &FolderList::pathChanged);
    press(folders, "one");
    EXPECT_EQ(chosen.count(), 1);
    EXPECT_EQ(folders.chosenPath(), folder.file("one"));
    EXPECT_EQ(folders.path(), folder.path());
    press(folders, "one");
    EXPECT_EQ(chosen.count(), 2) << "once more";
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(FolderControlsTest, ChoosingByTheArrowsCountsAsAClick)
{
    QSignalSpy chosen(&folders, &FolderList::folderChosen);
    QTest::keyClick(&folders, Qt::Key_Down);
    EXPECT_EQ(chosen.count(), 1);
    EXPECT_EQ(folders.chosenPath(), folder.file("one"));
}

TEST_F(FolderControlsTest, ADoubleClickOpens)
{
    QSignalSpy changed(&folders, &FolderList::pathChanged);
    press(folders, "one", true);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(folders.path(), folder.file("one"));
    EXPECT_EQ(rowsOf(folders).last(), "inner");
}

TEST_F(FolderControlsTest, EnterOpensAndBackspaceGoesUp)
{
    folders.setCurrentItem(rowNamed(folders, "Two"));
    QTest::keyClick(&folders, Qt::Key_Return);
    EXPECT_EQ(folders.path(), folder.file("Two"));
    QTest::keyClick(&folders, Qt::Key_Backspace);
    EXPECT_EQ(folders.path(), folder.path());
    QTest::keyClick(&folders, Qt::Key_Enter);
    EXPECT_EQ(folders.path(), folder.path()) << "the open folder is chosen and opens itself";
}

TEST_F(FolderControlsTest, AFolderAboveCanBeOpened)
{
    ASSERT_TRUE(folders.setPath(folder.file("one")));
    press(folders, toText(std::filesystem::path(folder.path()).filename().string()), true);
    EXPECT_EQ(folders.path(), folder.path());
}

TEST_F(FolderControlsTest, APathThatCannotBeReadLeavesTheListAsItWas)
{
    const QStringList before = rowsOf(folders);
    QSignalSpy changed(&folders, &FolderList::pathChanged);
    EXPECT_FALSE(folders.setPath(folder.file("gone")));
    EXPECT_FALSE(folders.setPath(folder.file("a.dwg")));
    EXPECT_EQ(rowsOf(folders), before);
    EXPECT_EQ(folders.path(), folder.path());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(FolderControlsTest, AFolderThatHasGoneLeavesTheListWhenItIsToBeOpened)
{
    std::filesystem::remove(folder.file("Two"));
    press(folders, "Two", true);
    EXPECT_EQ(folders.path(), folder.path());
    EXPECT_EQ(rowNamed(folders, "Two"), nullptr);
}

TEST_F(FolderControlsTest, AFolderThatShowsNothingOpensAndSaysSo)
{
    std::filesystem::permissions(folder.file("Two"), std::filesystem::perms::owner_exec);
    if (foldersIn(folder.file("Two")))
        GTEST_SKIP() << "this user may read every folder";
    press(folders, "Two", true);
    EXPECT_EQ(folders.path(), folder.file("Two"));
    EXPECT_EQ(rowsOf(folders).last(), "(cannot be read)");
    QTest::keyClick(&folders, Qt::Key_Down);
    EXPECT_EQ(folders.chosenPath(), folder.file("Two"));
}

TEST_F(FolderControlsTest, RefreshingShowsANewFolderAndKeepsThePlace)
{
    QSignalSpy chosen(&folders, &FolderList::folderChosen), changed(&folders, &FolderList::pathChanged);
    ASSERT_TRUE(makeFolder(folder.file("a new one")));
    folders.refresh();
    EXPECT_NE(rowNamed(folders, "a new one"), nullptr);
    EXPECT_EQ(folders.path(), folder.path());
    EXPECT_EQ(chosen.count() + changed.count(), 0) << "what the program does to the list is no click";
}

TEST_F(FolderControlsTest, HundredsOfFoldersAreAllThereAndALongNameCanBeScrolledTo)
{
    for (int i = 0; i < 700; ++i)
        ASSERT_TRUE(makeFolder(folder.file("one/" + std::string(60, 'w') + std::to_string(1000 + i))));
    folders.resize(150, 120);
    ASSERT_TRUE(folders.setPath(folder.file("one")));
    EXPECT_EQ(folders.count(), int(foldersDownTo(folder.file("one")).size()) + 701);
    EXPECT_TRUE(QTest::qWaitFor([this] { return folders.horizontalScrollBar()->maximum() > 0; }));
}

TEST_F(FolderControlsTest, NamesOfAnyBytesCanBeOpened)
{
    const std::string strange = joinPath(folder.path(), "\xFC\xE4 ;\xF0\x9F\x93\x81");
    if (!makeFolder(strange))
        GTEST_SKIP() << "a name is a text on this system";
    folders.refresh();
    press(folders, toText("\xFC\xE4 ;\xF0\x9F\x93\x81"), true);
    EXPECT_EQ(folders.path(), strange);
}

TEST_F(FolderControlsTest, NamesInAnyScriptCanBeOpened)
{
    const std::string strange = folder.file("T\u00FCren ;\u9580\U0001F4C1");
    ASSERT_TRUE(makeFolder(strange));
    folders.refresh();
    press(folders, QStringLiteral("T\u00FCren ;\u9580\U0001F4C1"), true);
    EXPECT_EQ(folders.path(), strange);
}

TEST_F(FolderControlsTest, TheFolderListSetsTheFileList)
{
    FileList files(".dwg");
    chainLists(folders, files);
    EXPECT_EQ(rowsOf(files), (QStringList{"a.dwg", "b.dwg"}));
    EXPECT_EQ(files.currentRow(), -1);
    press(folders, "one");
    EXPECT_EQ(rowsOf(files), (QStringList{"a.dwg", "b.dwg"})) << "chosen only";
    press(folders, "one", true);
    EXPECT_EQ(rowsOf(files), (QStringList{"c.DWG"}));
    EXPECT_EQ(files.path(), folder.file("one"));
}

TEST_F(FolderControlsTest, SeveralFilesCanBeSelectedAndARefreshSelectsNone)
{
    FileList files(".dwg");
    chainLists(folders, files);
    files.show();
    QSignalSpy selected(&files, &PathList::rowSelected);
    press(files, "a.dwg");
    EXPECT_EQ(selected.count(), 1);
    QTest::mouseClick(files.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      files.visualItemRect(files.item(1)).center());
    EXPECT_EQ(files.selectedItems().size(), 2);
    files.refresh();
    EXPECT_EQ(files.selectedItems().size(), 0);
    EXPECT_EQ(files.count(), 2);
}

TEST_F(FolderControlsTest, TheDriveOfTheOpenFolderIsShown)
{
    DriveBox drives;
    AnsweredMessages messages;
    chainLists(drives, folders, messages);
    EXPECT_EQ(drives.drive(), toText(driveOf(folder.path(), zv::drives())));
    EXPECT_FALSE(drives.drive().isEmpty());
}

TEST_F(FolderControlsTest, ADriveThatIsChosenPutsTheFolderListThereAlsoTheOneShown)
{
    DriveBox drives;
    AnsweredMessages messages;
    chainLists(drives, folders, messages);
    drives.setFocus();
    drives.show();
    Q_EMIT drives.textActivated(drives.drive());
    EXPECT_EQ(toText(folders.path()), drives.drive());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(FolderControlsTest, ADriveThatCannotBeReadIsToldAndTheListsStay)
{
    DriveBox drives;
    FileList files(".dwg");
    AnsweredMessages messages;
    chainLists(drives, folders, messages);
    chainLists(folders, files);
    const QString drive = drives.drive();
    const QStringList rows = rowsOf(folders);
    drives.addItem(toText(folder.file("gone")));
    drives.setCurrentIndex(drives.count() - 1);
    Q_EMIT drives.textActivated(drives.currentText());
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Error Reading Drive");
    EXPECT_EQ(messages.shown[0].title, "Drive Error");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(drives.drive(), drive);
    EXPECT_EQ(rowsOf(folders), rows);
    EXPECT_EQ(rowsOf(files), (QStringList{"a.dwg", "b.dwg"}));
}

TEST_F(FolderControlsTest, DrivesAreLookedUpAnewWhenTheListDropsDown)
{
    DriveBox drives;
    drives.showDriveOf(folder.path());
    const QString shown = drives.drive();
    const int count = drives.count();
    drives.addItem("/a place that has gone");
    drives.show();
    drives.showPopup();
    EXPECT_EQ(drives.count(), count);
    EXPECT_EQ(drives.drive(), shown);
    drives.hidePopup();
}

} // namespace
} // namespace zv
