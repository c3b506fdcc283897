#include "EditorFixture.h"

#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "library/LibraryCombo.h"
#include "platform/Files.h"
#include "support/OneStepFails.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class EditorCatalogueTest : public EditorFixture {
protected:
    void combosShow(const QStringList& names)
    {
        for (const char* combo : {"Combo1", "Combo2", "Combo3"})
            EXPECT_EQ(rows(combo, "Newlib"), names) << combo;
    }
    void rename(const QString& from, const QString& to)
    {
        EXPECT_TRUE(chooseIn("Combo1", from));
        typeIn("Text2", to);
        EXPECT_TRUE(press("Command4"));
    }
};

TEST_F(EditorCatalogueTest, TheFirstLibrarySavedGetsTheFirstKey)
{
    const auto paths = drawings(1);
    open({});
    typeIn("Text1", "Doors");
    ASSERT_TRUE(add({"D1.dwg"}));
    ASSERT_TRUE(select(0));
    const QString files = shown("Text7"), size = shown("Text8");
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), profileWith(1, {"Doors"}));
    EXPECT_FALSE(exists("$liblist.tmp"));
    EXPECT_EQ(listBytes("Doors"), linesOf(paths));
    combosShow({"Doors"});
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_EQ(listed(), QStringList());
    for (const char* text : {"Text1", "Text3", "Text4", "Text5", "Text6"})
        EXPECT_EQ(shown(text), "") << text;
    EXPECT_EQ(shown("Text7"), files);
    EXPECT_EQ(shown("Text8"), size);
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), "");
    EXPECT_EQ(editor().Dirty, 1);
    EXPECT_NE(program->loaded("Newlib"), nullptr);
}

/// As where the disk does not give the profile any more.
class UnreadableCatalogueTest : public EditorCatalogueTest {
protected:
    void loseProfile()
    {
        std::filesystem::rename(m_profile, m_profile + ".kept");
        std::filesystem::create_directory(m_profile);
    }
    void findProfile()
    {
        std::filesystem::remove(m_profile);
        std::filesystem::rename(m_profile + ".kept", m_profile);
    }
    void expectToldWithout(const std::string& newList)
    {
        EXPECT_EQ(program->exitStatus(), 0);
        EXPECT_NE(lastBox().find(m_profile), std::string::npos) << lastBox();
        EXPECT_FALSE(exists("$liblist.tmp"));
        EXPECT_FALSE(exists(newList));
        EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)));
    }

    const std::string m_profile = joinPath(master, "Zelvora.ini");
};

TEST_F(UnreadableCatalogueTest, IsNotShownAsAnEmptyOne)
{
    makeCatalogue({"Doors"});
    makeLibrary("Doors", drawings(1));
    start();
    loseProfile();
    click("Command1");
    expectToldWithout("New.lst");
    EXPECT_EQ(program->loaded("Newlib"), nullptr);
    EXPECT_TRUE(main().isVisible() && main().isEnabled());
}

TEST_F(UnreadableCatalogueTest, GetsNoLibraryAdded)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    typeIn("Text1", "New");
    loseProfile();
    press("Command9");
    expectToldWithout("New.lst");
    findProfile();
    press("Command9");
    EXPECT_EQ(profileBytes(), profileWith(2, {"Doors", "New"})) << "what was typed is still there";
}

TEST_F(UnreadableCatalogueTest, HasNoLibraryRenamed)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    EXPECT_TRUE(chooseIn("Combo1", "Doors"));
    typeIn("Text2", "Gates");
    loseProfile();
    press("Command4");
    expectToldWithout("Gates.lst");
    combosShow({"Doors"});
}

TEST_F(UnreadableCatalogueTest, HasNoLibraryDeleted)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    EXPECT_TRUE(chooseIn("Combo3", "Doors"));
    loseProfile();
    messages.yes = true;
    press("Command6");
    expectToldWithout("New.lst");
    combosShow({"Doors"});
}

TEST_F(EditorCatalogueTest, EveryWriteSortsAndRenumbers)
{
    open({});
    for (const char* name : {"beta", "Alpha", "gamma"}) {
        typeIn("Text1", name);
        ASSERT_TRUE(press("Command9"));
    }
    EXPECT_EQ(profileBytes(), profileWith(3, {"Alpha", "beta", "gamma"}));
    for (const char* list : {"beta", "Alpha", "gamma"})
        EXPECT_EQ(listBytes(list), "") << "a library without drawings has an empty list";
}

TEST_F(EditorCatalogueTest, SaveAtRestDoesNothingButTakeTheFocus)
{
    open({"Doors"});
    const std::string before = profileBytes();
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), before);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command9");
}

TEST_F(EditorCatalogueTest, SavingWithoutANameIsNotRefused)
{
    open({"Doors"});
    typeIn("Text1", "x");
    QTest::keyClick(editor().Text1, Qt::Key_Backspace);
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), profileWith(2, {"", "Doors"}));
    EXPECT_EQ(listBytes(""), "");
    combosShow({"", "Doors"});
}

TEST_F(EditorCatalogueTest, SavingAnOpenLibraryRewritesTheSameRowsAndMakesTheNamelessList)
{
    makeLibrary("beta", drawings(1));
    open({"beta", "Alpha"});
    ASSERT_TRUE(chooseIn("Combo2", "beta"));
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), profileWith(2, {"Alpha", "beta"}));
    EXPECT_EQ(listBytes(""), "");
    EXPECT_EQ(listBytes("beta"), linesOf(drawings(1)));
    EXPECT_EQ(editor().EditMode, Newlib::ModeExisting);
}

TEST_F(EditorCatalogueTest, ANameThatStandsInTheCatalogueIsSavedTwice)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    typeIn("Text1", "Doors");
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), profileWith(2, {"Doors", "Doors"}));
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)));
}

TEST_F(EditorCatalogueTest, TheStoredCountIsAdjustedAndNeverRecomputed)
{
    makeLibrary("Doors", {});
    makeCatalogue({"Doors"});
    setKey(Master, "Library", "libnum", "3");
    start();
    ASSERT_TRUE(click("Command1"));
    ASSERT_TRUE(appears("Newlib"));
    typeIn("Text1", "New");
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), profileWith(4, {"", "", "Doors", "New"}));
}

TEST_F(EditorCatalogueTest, ACatalogueThatAnotherUserWroteIsOverwrittenByTheLaterWrite)
{
    open({"Doors"});
    makeCatalogue({"Doors", "Theirs"});
    typeIn("Text1", "Ours");
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(profileBytes(), profileWith(3, {"Doors", "Ours"}));
}

TEST_F(EditorCatalogueTest, AScratchFileThatCannotBeWrittenEndsTheProgramAndKeepsTheCatalogue)
{
    open({"Doors"});
    const std::string before = profileBytes();
    std::filesystem::create_directory(master + "/$liblist.tmp");
    typeIn("Text1", "New");
    ASSERT_TRUE(press("Command9"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(profileBytes(), before);
}

TEST_F(EditorCatalogueTest, RenamingMovesTheNameToWhereItSorts)
{
    makeLibrary("Alpha", drawings(2));
    open({"Alpha", "beta", "gamma"});
    rename("Alpha", "zeta");
    EXPECT_EQ(profileBytes(), profileWith(3, {"beta", "gamma", "zeta"}));
    EXPECT_EQ(listBytes("zeta"), linesOf(drawings(2)));
    EXPECT_FALSE(exists("Alpha.lst") || exists("$liblist.tmp"));
    combosShow({"beta", "gamma", "zeta"});
    EXPECT_EQ(shown("Combo1"), "zeta");
    EXPECT_EQ(editor().Combo1->currentIndex(), 2);
    EXPECT_EQ(shown("Text2"), "");
    EXPECT_EQ(editor().EditMode, Newlib::ModeExisting);
    typeIn("Text2", "Aaa");
    ASSERT_TRUE(press("Command4"));
    EXPECT_EQ(profileBytes(), profileWith(3, {"Aaa", "beta", "gamma"})) << "a second rename works on it";
}

TEST_F(EditorCatalogueTest, RenamingToNothingIsRefused)
{
    open({"Doors"});
    const std::string before = profileBytes();
    rename("Doors", "");
    EXPECT_EQ(lastBox(), "No Library Selected [48] Please Select a Library to Rename");
    EXPECT_EQ(profileBytes(), before);
    EXPECT_EQ(editor().EditMode, Newlib::ModeIdle);
}

TEST_F(EditorCatalogueTest, RenamingOntoANameThatExistsEndsTheProgramAndChangesNothing)
{
    for (const char* target : {"beta", "Alpha"}) {
        makeLibrary("Alpha", drawings(1));
        makeLibrary("beta", drawings(2));
        open({"Alpha", "beta"});
        const std::string before = profileBytes();
        rename("Alpha", target);
        EXPECT_EQ(endedWith, 1) << target;
        EXPECT_NE(lastMessage().find(listPath("Alpha")), std::string::npos);
        EXPECT_EQ(profileBytes(), before);
        EXPECT_EQ(listBytes("Alpha"), linesOf(drawings(1)));
        EXPECT_EQ(listBytes("beta"), linesOf(drawings(2)));
        break;
    }
}

TEST_F(EditorCatalogueTest, ACatalogueThatCannotBeWrittenLeavesTheListItsOldName)
{
    makeLibrary("Alpha", drawings(1));
    open({"Alpha"});
    const std::string before = profileBytes();
    std::filesystem::create_directory(master + "/$liblist.tmp");
    rename("Alpha", "zeta");
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(profileBytes(), before);
    EXPECT_EQ(listBytes("Alpha"), linesOf(drawings(1)));
    EXPECT_FALSE(exists("zeta.lst"));
}

TEST_F(EditorCatalogueTest, RenamingOntoTheOwnNameIsSuchAFailureToo)
{
    open({"Alpha"});
    rename("Alpha", "Alpha");
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(listBytes("Alpha"), "");
}

TEST_F(EditorCatalogueTest, RenamingTheCaseAloneWorksWhereNamesDifferByIt)
{
    open({"Alpha"});
    rename("Alpha", "ALPHA");
    if (fileExists(listPath("alpha")))
        GTEST_SKIP() << "this file system does not tell them apart";
    EXPECT_EQ(endedWith, -1);
    EXPECT_EQ(profileBytes(), profileWith(1, {"ALPHA"}));
}

TEST_F(EditorCatalogueTest, DeletingAsksAndTakesListAndName)
{
    makeLibrary("beta", drawings(2));
    open({"Alpha", "beta", "gamma"});
    ASSERT_TRUE(chooseIn("Combo3", "beta"));
    messages.yes = true;
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(lastBox(),
              "Library Delete Confirmation [32] Are you sure you want to Delete Library :\r\nbeta ? ");
    EXPECT_EQ(profileBytes(), profileWith(2, {"Alpha", "gamma"}));
    EXPECT_FALSE(exists("beta.lst") || exists("$liblist.tmp"));
    for (const std::string& drawing : drawings(2))
        EXPECT_TRUE(fileExists(drawing));
    combosShow({"Alpha", "gamma"});
    EXPECT_EQ(shown("Combo3"), "");
    EXPECT_EQ(editor().EditMode, Newlib::ModeIdle);
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(lastBox(), "No Library Selected [48] Please Select a Library to Delete ");
}

TEST_F(EditorCatalogueTest, NoDeletesNothing)
{
    open({"Doors"});
    const std::string before = profileBytes();
    ASSERT_TRUE(chooseIn("Combo3", "Doors"));
    editor().EditMode = Newlib::ModeNew;
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(profileBytes(), before);
    EXPECT_TRUE(exists("Doors.lst"));
    EXPECT_EQ(editor().EditMode, Newlib::ModeIdle);
}

TEST_F(EditorCatalogueTest, DeletingTheOnlyLibraryLeavesTheCountAlone)
{
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo3", "Doors"));
    messages.yes = true;
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(profileBytes(), profileWith(0, {}));
}

TEST_F(EditorCatalogueTest, ALibraryWhoseListIsGoneIsDeletedFromTheCatalogue)
{
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo3", "Doors"));
    std::filesystem::remove(listPath("Doors"));
    messages.yes = true;
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(profileBytes(), profileWith(0, {}));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(EditorCatalogueTest, AListThatCannotBeDeletedEndsTheDeletionInSilence)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo3", "Doors"));
    editor().EditMode = Newlib::ModeNew;
    messages.yes = true;
    {
        const OneStepFails disk(FileStep::Delete, 0);
        ASSERT_TRUE(press("Command6"));
        ASSERT_TRUE(disk.wasReached());
    }
    EXPECT_EQ(messages.shown.size(), 1u) << "the question alone";
    EXPECT_EQ(endedWith, -1);
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)));
    EXPECT_EQ(key(Master, "Library", "libnum"), "0");
    EXPECT_TRUE(exists("$liblist.tmp"));
    EXPECT_EQ(key(Master, "LibLoad", "del"), "(none)") << "what comes after it is left out";
}

TEST_F(EditorCatalogueTest, TheLibraryThatTheUserHadInViewStaysNotedThroughAWrite)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    setKey(User, "LibLoad", "LastLoad", "Doors");
    rename("Doors", "Gates");
    EXPECT_EQ(key(User, "LibLoad", "LastLoad"), "Doors");
    ASSERT_TRUE(press("Command11"));
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(text("Combo1"), "Doors") << "a name that no library has any more";
    EXPECT_EQ(rows("List1"), QStringList());
    EXPECT_EQ(endedWith, -1);
}

TEST_F(EditorCatalogueTest, DoneInAnOpenLibraryAsksNothingAndKeepsItsList)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    const std::string before = profileBytes();
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    ASSERT_TRUE(press("Command11"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)));
    EXPECT_EQ(profileBytes(), before);
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(EditorCatalogueTest, DoneOnANewNameAsksAndSaves)
{
    open({});
    typeIn("Text1", "Doors");
    messages.yes = true;
    ASSERT_TRUE(press("Command11"));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(lastBox(), "New Library Save Confirmation [32] Save Changes to New Library?");
    EXPECT_EQ(profileBytes(), profileWith(1, {"Doors"}));
    EXPECT_EQ(listBytes("Doors"), "");
    EXPECT_EQ(program->loaded("Newlib"), nullptr);
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_TRUE(main().isEnabled());
    EXPECT_TRUE(rows("Combo1").contains("Doors")) << "the main window has the new catalogue";
}

TEST_F(EditorCatalogueTest, DoneAfterAnAddAsksTheOtherQuestion)
{
    drawings(1);
    open({});
    typeIn("Text1", "Doors");
    ASSERT_TRUE(add({"D1.dwg"}));
    messages.yes = true;
    ASSERT_TRUE(press("Command11"));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(lastBox(), "Library Save Confirmation [32] Save Changes to Library?");
    EXPECT_EQ(profileBytes(), profileWith(1, {"Doors"}));
}

TEST_F(EditorCatalogueTest, DoneRefusedDeletesTheNewList)
{
    drawings(1);
    open({"Windows"});
    const std::string before = profileBytes();
    typeIn("Text1", "Doors");
    ASSERT_TRUE(add({"D1.dwg"}));
    ASSERT_TRUE(press("Command11"));
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_FALSE(exists("Doors.lst"));
    EXPECT_EQ(profileBytes(), before);
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(EditorCatalogueTest, BothQuestionsComeAfterAnAddAndAnotherName)
{
    drawings(1);
    open({});
    typeIn("Text1", "Doors");
    ASSERT_TRUE(add({"D1.dwg"}));
    typeIn("Text1", "s");
    ASSERT_TRUE(press("Command11"));
    ASSERT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(messages.shown[0].title, "Library Save Confirmation");
    EXPECT_EQ(messages.shown[1].title, "New Library Save Confirmation");
    EXPECT_TRUE(exists("Doors.lst"));
}

TEST_F(EditorCatalogueTest, DoneRefusedOnTheNameOfALibraryDeletesItsListAndKeepsItsName)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    const std::string before = profileBytes();
    typeIn("Text1", "Doors");
    ASSERT_TRUE(press("Command11"));
    EXPECT_FALSE(exists("Doors.lst"));
    EXPECT_EQ(profileBytes(), before);
}

TEST_F(EditorCatalogueTest, AQuestionOfDoneThatIsLeftOpenTouchesNoFile)
{
    makeLibrary("Doors", drawings(1));
    open({"Doors"});
    typeIn("Text1", "Doors");
    messages.closes = true;
    ASSERT_TRUE(press("Command11"));
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)));
    EXPECT_TRUE(editor().isVisible());
    EXPECT_EQ(shown("Text1"), "Doors");
}

TEST_F(EditorCatalogueTest, DoneAfterSaveAsksNothingAndDeletesTheNamelessList)
{
    folder.write("office/.lst", "");
    open({});
    typeIn("Text1", "Doors");
    ASSERT_TRUE(press("Command9"));
    ASSERT_TRUE(press("Command11"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(exists(".lst"));
    EXPECT_TRUE(exists("Doors.lst"));
}

TEST_F(EditorCatalogueTest, TheCloseBoxAsksNothingAndTouchesNoFile)
{
    drawings(1);
    open({});
    const std::string before = profileBytes();
    typeIn("Text1", "Doors");
    ASSERT_TRUE(add({"D1.dwg"}));
    editor().close();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(profileBytes(), before);
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)));
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(EditorCatalogueTest, NamesThatAreNoTextSurviveARewriteOfTheCatalogue)
{
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "a file's name is a text on this system";
    open({"caf\xE9", "Doors"});
    typeIn("Text1", "New");
    ASSERT_TRUE(press("Command9"));
    EXPECT_NE(profileBytes().find("=caf\xE9\r\n"), std::string::npos);
}

} // namespace
} // namespace zv
