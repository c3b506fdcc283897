#include "EditorFixture.h"

#include "controls/DwgThumbnail.h"
#include "controls/FileList.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "platform/Files.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include <clocale>

namespace zv {
namespace {

const QColor kPaleYellow(255, 255, 192);

class EditorListTest : public EditorFixture {
protected:
    /// The editor with a library of so many drawings chosen.
    void openDoors(int count)
    {
        makeLibrary("Doors", drawings(count));
        open({"Doors"});
        EXPECT_TRUE(chooseIn("Combo2", "Doors"));
    }
    void relabel(const QString& label)
    {
        editor().Text5->clear();
        typeIn("Text5", label);
        EXPECT_TRUE(press("Command5"));
    }
};

TEST_F(EditorListTest, TheFirstAddMakesTheListAndTheNextOnesAppend)
{
    const auto paths = drawings(3);
    open({});
    typeIn("Text1", "New");
    ASSERT_TRUE(add({"D2.dwg", "D1.dwg"}));
    EXPECT_EQ(listBytes("New"), linesOf({paths[0], paths[1]})) << "in the order of the file list";
    EXPECT_EQ(editor().EditMode, Newlib::ModeNewStarted);
    EXPECT_EQ(editor().Dirty, 1);
    EXPECT_EQ(editor().ListPath, listPath("New"));
    EXPECT_EQ(editor().ScratchPath, joinPath(master, "New.ls$"));
    EXPECT_EQ(shown("Text7"), "2");
    EXPECT_FALSE(usable("Command1"));
    EXPECT_TRUE(editor().File1->selectedItems().isEmpty());
    ASSERT_TRUE(add({"D3.dwg"}));
    ASSERT_TRUE(add({"D3.dwg"}));
    EXPECT_EQ(listBytes("New"), linesOf({paths[0], paths[1], paths[2], paths[2]}));
    EXPECT_EQ(listed(), texts({paths[0], paths[1], paths[2], paths[2]}));
    EXPECT_EQ(shown("Text7"), "4");
}

TEST_F(EditorListTest, DrawingsAndLibrariesInAnyScriptAreListedAddedAndShown)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    const std::string name = "\xE9\x97\xA8\xE6\xA1\x86 \xC3\x9C", library = "\xE9\x97\xA8";
    makeDrawing(name);
    open({});
    editor().Text1->setText(toText(library)); // Keys of a test type ASCII only.
    ASSERT_TRUE(add({name + ".dwg"}));
    EXPECT_TRUE(listBytes(library).ends_with(kPathSeparator + name + ".dwg;" + name + "\r\n"))
        << listBytes(library);
    ASSERT_TRUE(select(0));
    EXPECT_EQ(shown("Text5"), toText(name));
    EXPECT_TRUE(editor().DwgThumbnail1->dwgFileName().endsWith(toText(name + ".dwg")));
    std::setlocale(LC_ALL, "");
}

TEST_F(EditorListTest, ATypedNameOfALibraryThatExistsEmptiesItsList)
{
    makeLibrary("Doors", drawings(3));
    open({"Doors"});
    typeIn("Text1", "Doors");
    ASSERT_TRUE(add({"D2.dwg"}));
    EXPECT_EQ(listBytes("Doors"), linesOf({drawings(3)[1]}));
}

TEST_F(EditorListTest, AddingToALibraryTellsTheSizeOfWhatWasAddedAlone)
{
    const std::string big = folder.write("drawings/big.dwg", std::string(10240, 'x'));
    folder.write("drawings/odd.dwg", std::string(1536, 'x'));
    folder.write("drawings/tiny.dwg", std::string(512, 'x'));
    makeLibrary("Doors", {big});
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    EXPECT_EQ(shown("Text8"), "10 KB");
    ASSERT_TRUE(add({"tiny.dwg"}));
    EXPECT_EQ(shown("Text8"), "0 KB");
    ASSERT_TRUE(add({"odd.dwg"}));
    EXPECT_EQ(shown("Text8"), "2 KB");
    EXPECT_EQ(editor().AddedKB, 2);
    EXPECT_EQ(shown("Text7"), "3");
    EXPECT_EQ(editor().Dirty, 0);
    EXPECT_EQ(editor().EditMode, Newlib::ModeExisting);
    EXPECT_EQ(editor().ScratchPath, joinPath(master, "Doors.ls$"));
}

TEST_F(EditorListTest, LabelsAreTheNamesInCapitalsWithoutTheirEnding)
{
    const std::string twice = folder.write("drawings/a.dwg.dwg", "x");
    open({});
    typeIn("Text1", "New");
    ASSERT_TRUE(add({"a.dwg.dwg"}));
    EXPECT_EQ(listBytes("New"), twice + ";A\r\n");
}

TEST_F(EditorListTest, AnEmptyLabelIsReadAsOne)
{
    const std::string path = drawings(1)[0];
    ASSERT_TRUE(writeFile(listPath("Doors"), path + ";\r\n"));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    EXPECT_EQ(listed(), texts({path}));
    ASSERT_TRUE(select(0));
    EXPECT_EQ(shown("Text5"), "");
}

TEST_F(EditorListTest, AddWithNothingSelectedDoesNothing)
{
    openDoors(2);
    ASSERT_TRUE(pick({"D1.dwg"}));
    editor().File1->clearSelection();
    ASSERT_TRUE(press("Command1"));
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(2)));
}

TEST_F(EditorListTest, AClickOnARowShowsItsLabelAndDrawing)
{
    openDoors(3);
    ASSERT_TRUE(select(0));
    EXPECT_FALSE(usable("Command7"));
    EXPECT_TRUE(usable("Command10") && usable("Command12") && usable("Command2") && usable("Command3"));
    EXPECT_EQ(shown("Text5"), "D1");
    EXPECT_EQ(groundOf("Text5"), kPaleYellow);
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), QString::fromStdString(drawings(3)[0]));
    EXPECT_EQ(shown("Text3"), QString::fromStdString("Drawing Name: " + drawings(3)[0] + "\n\nAbout D1"));
    EXPECT_TRUE(shown("Text6").endsWith(" KB"));
    ASSERT_TRUE(select(2));
    EXPECT_TRUE(usable("Command7"));
    EXPECT_FALSE(usable("Command10"));
    QTest::keyClick(editor().List1, Qt::Key_Up);
    EXPECT_EQ(shown("Text5"), "D2") << "a selection by keys is a click";
}

TEST_F(EditorListTest, ARowWithoutItsDrawingKeepsItsLabelAndTheSizeShown)
{
    makeLibrary("Doors", {drawings(1)[0], "/no/such.dwg"});
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    ASSERT_TRUE(select(0));
    const QString size = shown("Text6");
    ASSERT_TRUE(select(1));
    EXPECT_EQ(shown("Text5"), "SUCH");
    EXPECT_EQ(shown("Text3"), "Error Loading: /NO/SUCH.DWG");
    EXPECT_EQ(shown("Text4"), "NA");
    EXPECT_EQ(shown("Text6"), size);
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(),
              QString::fromStdString(joinPath(installation, "failed.dwg")));
    relabel("gone");
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(1)) + "/no/such.dwg;gone\r\n");
}

TEST_F(EditorListTest, ARowWithoutAPathBlanksThePreviewAndLeavesTheTexts)
{
    const std::string path = drawings(1)[0];
    ASSERT_TRUE(writeFile(listPath("Doors"), linesOf({path}) + ";LOOSE\r\n"));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    EXPECT_EQ(listed(), (QStringList{QString::fromStdString(path), ""}));
    ASSERT_TRUE(select(0));
    const QString comments = shown("Text3"), size = shown("Text6");
    ASSERT_TRUE(select(1));
    EXPECT_EQ(shown("Text5"), "LOOSE");
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), "");
    EXPECT_EQ(shown("Text3"), comments);
    EXPECT_EQ(shown("Text6"), size);
    EXPECT_NE(editor().Text3->palette().color(QPalette::Text), QColor(Qt::red));
}

TEST_F(EditorListTest, RemovingAMiddleRowSelectsTheOneThatMovedIntoTheGap)
{
    const auto paths = drawings(3);
    openDoors(3);
    const QString size = shown("Text8");
    ASSERT_TRUE(select(1));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[0], paths[2]}));
    EXPECT_EQ(selectedRow(), 1);
    EXPECT_EQ(shown("Text5"), "D3");
    EXPECT_EQ(shown("Text7"), "2");
    EXPECT_EQ(shown("Text8"), size);
    EXPECT_EQ(QApplication::focusWidget(), editor().List1);
    EXPECT_FALSE(exists("Doors.ls$"));
}

TEST_F(EditorListTest, RemovingTheFirstOrTheLastRowSelectsNone)
{
    const auto paths = drawings(3);
    openDoors(3);
    ASSERT_TRUE(select(2));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(selectedRow(), -1);
    EXPECT_EQ(shown("Text5"), "");
    EXPECT_EQ(shown("Text3"), "");
    EXPECT_EQ(shown("Text6"), "");
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), "");
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[0], paths[1]}));
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(selectedRow(), -1);
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[1]}));
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(listBytes("Doors"), "");
    EXPECT_TRUE(exists("Doors.lst"));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(lastBox(), "No File Selected! [64] Please Select a File to Remove");
    EXPECT_TRUE(usable("Command2"));
}

TEST_F(EditorListTest, RemovingAllAsksAndEmptiesTheList)
{
    openDoors(2);
    ASSERT_TRUE(select(0));
    messages.yes = false;
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(lastBox(), "Remove Drawing List Confirmation [32] Are you sure you want to remove the drawing "
                         "list from current library?");
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(2)));
    messages.yes = true;
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(listBytes("Doors"), "");
    EXPECT_EQ(listed(), QStringList());
    for (const char* text : {"Text3", "Text4", "Text5", "Text6", "Text7", "Text8"})
        EXPECT_EQ(shown(text), "") << text;
}

TEST_F(EditorListTest, RemovingAllFromANewLibraryEmptiesTheListOfItsName)
{
    drawings(2);
    folder.write("drawings/big.dwg", std::string(10240, 'x'));
    open({"Doors"});
    typeIn("Text1", "New");
    ASSERT_TRUE(add({"D1.dwg", "D2.dwg", "big.dwg"}));
    const std::int32_t added = editor().AddedKB;
    ASSERT_GT(added, 0);
    ASSERT_TRUE(pick({"D1.dwg"}));
    messages.yes = true;
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(listBytes("New"), "");
    EXPECT_EQ(editor().AddedKB, added);
    ASSERT_TRUE(pick({"D2.dwg"}));
    ASSERT_TRUE(press("Command1"));
    EXPECT_EQ(listBytes("New"), linesOf({drawings(2)[1]})) << "the emptied list is the one that grows";
}

TEST_F(EditorListTest, RemovingAllBeforeTheFirstAddMakesAnEmptyListAndTheLibraryStaysNew)
{
    drawings(1);
    open({});
    typeIn("Text1", "New");
    ASSERT_TRUE(pick({"D1.dwg"}));
    messages.yes = true;
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(listBytes("New"), "");
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_EQ(editor().Dirty, 0);
}

TEST_F(EditorListTest, WhatWasAddedIsCountedOnThroughSaveAndReset)
{
    folder.write("drawings/big.dwg", std::string(10240, 'x'));
    open({});
    typeIn("Text1", "One");
    ASSERT_TRUE(add({"big.dwg"}));
    ASSERT_TRUE(press("Command9"));
    typeIn("Text1", "Two");
    ASSERT_TRUE(add({"big.dwg"}));
    EXPECT_EQ(shown("Text8"), "20 KB");
    ASSERT_TRUE(press("Command8"));
    typeIn("Text1", "Three");
    ASSERT_TRUE(add({"big.dwg"}));
    EXPECT_EQ(shown("Text8"), "30 KB");
    EXPECT_EQ(shown("Text7"), "1");
}

TEST_F(EditorListTest, MovesChangeTheOrderInTheFile)
{
    const auto paths = drawings(3);
    openDoors(3);
    ASSERT_TRUE(select(1));
    relabel("second");
    ASSERT_TRUE(press("Command7"));
    EXPECT_EQ(listed(), texts({paths[1], paths[0], paths[2]}));
    EXPECT_EQ(listBytes("Doors"), paths[1] + ";second\r\n" + linesOf({paths[0], paths[2]}));
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_FALSE(usable("Command7"));
    EXPECT_EQ(shown("Text5"), "second");
    EXPECT_EQ(editor().MoveUpPending, 0);
    ASSERT_TRUE(press("Command10"));
    ASSERT_TRUE(press("Command10"));
    EXPECT_EQ(listed(), texts({paths[0], paths[2], paths[1]}));
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[0], paths[2]}) + paths[1] + ";second\r\n");
    EXPECT_EQ(selectedRow(), 2);
    EXPECT_FALSE(usable("Command10"));
    EXPECT_EQ(shown("Text5"), "second");
    EXPECT_EQ(editor().MoveDownPending, 0);
    EXPECT_EQ(editor().Dirty, 0);
    EXPECT_FALSE(exists("Doors.ls$"));
}

TEST_F(EditorListTest, AButtonThatDisablesItselfHandsTheKeysToItsList)
{
    openDoors(3);
    ASSERT_TRUE(pick({"D1.dwg"}));
    editor().Command1->setFocus();
    QTest::keyClick(editor().Command1, Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), editor().File1);
    ASSERT_TRUE(select(1));
    editor().Command7->setFocus();
    QTest::keyClick(editor().Command7, Qt::Key_Space);
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_EQ(QApplication::focusWidget(), editor().List1);
    editor().Command10->setFocus();
    QTest::keyClick(editor().Command10, Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), editor().Command10) << "it can go on";
}

TEST_F(EditorListTest, WhatAnotherUserAddedStaysThroughAMove)
{
    const auto paths = drawings(3);
    makeLibrary("Doors", {paths[0], paths[1]});
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    ASSERT_TRUE(select(1));
    makeLibrary("Doors", paths);
    ASSERT_TRUE(press("Command7"));
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[1], paths[0], paths[2]}));
}

TEST_F(EditorListTest, WhatAnotherUserAddedIsCounted)
{
    const auto paths = drawings(4);
    for (const auto& [command, count] : {std::pair("Command5", "4"), std::pair("Command2", "3")}) {
        makeLibrary("Doors", {paths[0], paths[1], paths[2]});
        if (!program->loaded("Newlib"))
            open({"Doors"});
        ASSERT_TRUE(chooseIn("Combo2", "Doors"));
        ASSERT_TRUE(select(1));
        makeLibrary("Doors", paths);
        ASSERT_TRUE(press(command));
        EXPECT_EQ(shown("Text7"), count) << command;
        EXPECT_EQ(listed().size(), QString(count).toInt()) << command;
    }
}

TEST_F(EditorListTest, AListThatAnotherUserChangedIsFilledAfreshAndNotWritten)
{
    const auto paths = drawings(4);
    for (const char* command : {"Command7", "Command2", "Command5"}) {
        makeLibrary("Doors", {paths[0], paths[1], paths[2]});
        if (!program->loaded("Newlib"))
            open({"Doors"});
        ASSERT_TRUE(chooseIn("Combo2", "Doors"));
        ASSERT_TRUE(select(1));
        const std::string changed = linesOf({paths[3], paths[0], paths[1], paths[2]});
        ASSERT_TRUE(writeFile(listPath("Doors"), changed));
        ASSERT_TRUE(press(command));
        EXPECT_EQ(listBytes("Doors"), changed) << command;
        EXPECT_EQ(listed(), texts({paths[3], paths[0], paths[1], paths[2]})) << command;
        EXPECT_EQ(shown("Text7"), "4") << command;
    }
}

TEST_F(EditorListTest, ALabelIsWrittenAsItStands)
{
    const auto paths = drawings(2);
    openDoors(2);
    ASSERT_TRUE(select(1));
    relabel("Two doors");
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[0]}) + paths[1] + ";Two doors\r\n");
    EXPECT_EQ(selectedRow(), 1);
    EXPECT_EQ(groundOf("Text5"), kPaleYellow);
    EXPECT_EQ(QApplication::focusWidget(), editor().List1);
    relabel("");
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[0]}) + paths[1] + ";\r\n");
    relabel("a;b");
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[0]}) + paths[1] + ";a;b\r\n");
    EXPECT_EQ(listed().last(), QString::fromStdString(paths[1] + ";a")) << "the line splits at the later one";
}

TEST_F(EditorListTest, WithoutARowTheLabelButtonOnlyClearsTheGround)
{
    openDoors(2);
    relabel("x");
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(2)));
    EXPECT_EQ(groundOf("Text5"), QApplication::palette().color(QPalette::Base));
}

TEST_F(EditorListTest, BytesThatAreNoTextSurviveEveryChange)
{
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "what is moved is written as the program's own text on this system";
    const std::string odd = "/caf\xE9/\xFF.dwg;\x80\xE9\r\n";
    const auto paths = drawings(2);
    ASSERT_TRUE(writeFile(listPath("Doors"), odd + linesOf(paths)));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    ASSERT_TRUE(select(2));
    ASSERT_TRUE(press("Command7"));
    EXPECT_EQ(listBytes("Doors"), odd + linesOf({paths[1], paths[0]}));
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command5"));
    EXPECT_EQ(listBytes("Doors"), odd + linesOf({paths[1], paths[0]})) << "its own label, byte for byte";
    ASSERT_TRUE(press("Command10"));
    EXPECT_EQ(listBytes("Doors"), linesOf({paths[1]}) + odd + linesOf({paths[0]}));
}

TEST_F(EditorListTest, AReadOnlyListIsRewrittenToo)
{
    openDoors(2);
    std::filesystem::permissions(listPath("Doors"), std::filesystem::perms::owner_read);
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(listBytes("Doors"), linesOf({drawings(2)[1]}));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(EditorListTest, ARewriteThatFailsEndsTheProgramAndLeavesTheList)
{
    openDoors(2);
    std::filesystem::create_directory(master + "/Doors.ls$");
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Critical);
    EXPECT_NE(lastMessage().find("Nothing was changed"), std::string::npos);
    EXPECT_EQ(listBytes("Doors"), linesOf(drawings(2)));
}

TEST_F(EditorListTest, ALibraryOfTheLargestSizeTakesNoMore)
{
    const std::string path = drawings(1)[0];
    std::string bytes;
    for (int i = 0; i < 32767; ++i)
        bytes += path + ";D\r\n";
    ASSERT_TRUE(writeFile(listPath("Doors"), bytes));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    EXPECT_EQ(shown("Text7"), "32767");
    ASSERT_TRUE(add({"D1.dwg"}));
    EXPECT_EQ(messages.shown.back().title, "Library Too Long");
    EXPECT_EQ(listBytes("Doors"), bytes);
    EXPECT_EQ(endedWith, -1);
}

} // namespace
} // namespace zv
