#include "EditorFixture.h"

#include "controls/CaptionFrame.h"
#include "controls/DriveBox.h"
#include "controls/DwgThumbnail.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/LibraryCombo.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>

namespace zv {
namespace {

using enum ProfileFile;

constexpr auto kSource = {"Drive1", "Dir1", "File1", "List1"};
constexpr auto kCommands = {"Command5", "Command4", "Command6", "Command1", "Command2", "Command3"};
const QColor kPaleYellow(255, 255, 192);

class EditorModesTest : public EditorFixture {
protected:
    void isAtRest()
    {
        for (const char* command : kCommands)
            EXPECT_FALSE(usable(command)) << command;
        EXPECT_FALSE(inPlay("Text5"));
        for (const char* control : kSource)
            EXPECT_FALSE(inPlay(control)) << control;
        for (const char* control : {"Text1", "Text2", "Combo1", "Combo2", "Combo3"})
            EXPECT_TRUE(inPlay(control)) << control;
    }
};

TEST_F(EditorModesTest, TheEditorOpensAtRestOnTheMasterFoldersCatalogue)
{
    open({"gamma", "Alpha", "beta"});
    EXPECT_EQ(editor().windowTitle(), "Library Editor");
    EXPECT_EQ(program->loaded("Zelvora"), nullptr);
    isAtRest();
    EXPECT_EQ(editor().EditMode, Newlib::ModeIdle);
    for (const char* combo : {"Combo1", "Combo2", "Combo3"}) {
        EXPECT_EQ(rows(combo, "Newlib"), (QStringList{"Alpha", "beta", "gamma"}));
        EXPECT_EQ(shown(combo), "");
    }
    for (const char* command : {"Command7", "Command10", "Command12"})
        EXPECT_FALSE(usable(command)) << command;
    EXPECT_EQ(editor().Command6->picture(), "D4");
    EXPECT_EQ(QApplication::focusWidget(), editor().Text1);
    EXPECT_EQ(editor().ListPath, listPath(""));
    EXPECT_FALSE(editor().isTopmost());
}

TEST_F(EditorModesTest, TheEditorStandsOnTopWhereTheUserWantsIt)
{
    setKey(User, "Settings", "AOT", "1");
    open({});
    EXPECT_TRUE(editor().isTopmost());
    program->unload("Newlib");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_TRUE(main().isTopmost());
}

TEST_F(EditorModesTest, ACatalogueWithoutItsCountIsRepaired)
{
    start();
    ASSERT_TRUE(click("Command1"));
    ASSERT_TRUE(appears("Newlib"));
    EXPECT_EQ(key(Master, "Library", "libnum"), "0");
    EXPECT_EQ(rows("Combo1", "Newlib"), QStringList());
}

TEST_F(EditorModesTest, TypingANameTakesTheOtherWaysOutOfPlay)
{
    open({"Doors"});
    typeIn("Text1", "N");
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_TRUE(usable("Command5"));
    EXPECT_TRUE(inPlay("Text5"));
    for (const char* control : kSource)
        EXPECT_TRUE(inPlay(control)) << control;
    for (const char* control : {"Combo1", "Combo2", "Combo3", "Text2"})
        EXPECT_FALSE(inPlay(control)) << control;
    EXPECT_FALSE(usable("Command4"));
    EXPECT_FALSE(usable("Command6"));
    EXPECT_FALSE(usable("Command1"));
}

TEST_F(EditorModesTest, TypingAfterTheFirstAddBeginsAnotherLibrary)
{
    drawings(2);
    open({});
    typeIn("Text1", "New");
    ASSERT_TRUE(add({"D1.dwg"}));
    EXPECT_EQ(editor().EditMode, Newlib::ModeNewStarted);
    typeIn("Text1", "er");
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_EQ(listed(), QStringList());
    EXPECT_TRUE(exists("New.lst")) << "the earlier name's list stays behind";
    EXPECT_EQ(editor().Dirty, 1);
}

TEST_F(EditorModesTest, TheFocusInTheSecondBoxTakesTheNameOutOfPlay)
{
    open({"Doors"});
    QTest::keyClick(editor().Text1, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), editor().Combo2);
    EXPECT_FALSE(inPlay("Text1"));
    EXPECT_EQ(editor().EditMode, Newlib::ModeIdle) << "there was no name to empty";
}

TEST_F(EditorModesTest, ChoosingALibraryShowsItsDrawings)
{
    makeLibrary("Doors", drawings(3));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    EXPECT_EQ(editor().EditMode, Newlib::ModeExisting);
    EXPECT_EQ(editor().ListPath, listPath("Doors"));
    EXPECT_EQ(listed(), texts(drawings(3)));
    EXPECT_EQ(shown("Text7"), "3");
    EXPECT_TRUE(usable("Text5") && usable("Command5"));
    EXPECT_EQ(groundOf("Text5"), QApplication::palette().color(QPalette::Button))
        << "no row has a label to show yet";
    for (const char* control : kSource)
        EXPECT_TRUE(inPlay(control)) << control;
    for (const char* control : {"Text1", "Text2", "Combo1", "Combo3"})
        EXPECT_FALSE(inPlay(control)) << control;
    EXPECT_FALSE(usable("Command4") || usable("Command6"));
    EXPECT_EQ(selectedRow(), -1);
    EXPECT_FALSE(usable("Command12"));
}

TEST_F(EditorModesTest, ChoosingAnotherLibraryBlanksTheDrawingInHandAndTheOtherNames)
{
    makeLibrary("Doors", drawings(2));
    open({"Doors", "Windows"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    ASSERT_TRUE(select(1));
    ASSERT_TRUE(chooseIn("Combo2", "Windows"));
    EXPECT_EQ(listed(), QStringList());
    EXPECT_EQ(shown("Text7"), "0");
    EXPECT_EQ(shown("Text8"), "0 KB");
    for (const char* text : {"Text1", "Text2", "Text3", "Text4"})
        EXPECT_EQ(shown(text), "") << text;
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), "");
    EXPECT_TRUE(editor().Combo2->isLocked());
}

TEST_F(EditorModesTest, WhatIsSeenOfTheDrawingsBeginsBehindTheirCommonFolder)
{
    const std::string far = "/office/" + std::string(200, 'f') + "/";
    makeLibrary("One", {far + "Door.dwg", far + "Window.dwg"});
    makeLibrary("Two", {far + "Door.dwg", "/office/Window.dwg"});
    makeLibrary("None", {far + "Door.dwg", "Window.dwg"});
    makeLibrary("Short", {"/a/Door.dwg", "/a/Window.dwg"});
    open({"One", "Two", "None", "Short"});
    const auto seenFrom = [this](const char* library) {
        EXPECT_TRUE(chooseIn("Combo2", library));
        return editor().List1->horizontalScrollBar()->value();
    };
    const QFontMetrics letters = editor().List1->fontMetrics();
    EXPECT_GT(editor().List1->width(), letters.horizontalAdvance("Window.dwg"));
    EXPECT_GT(seenFrom("One"), letters.horizontalAdvance(QString::fromStdString(far)) / 2);
    EXPECT_EQ(seenFrom("Two"), letters.horizontalAdvance("/office/"));
    EXPECT_EQ(seenFrom("None"), 0);
    EXPECT_LE(seenFrom("Short"), letters.horizontalAdvance("/a/"));
}

TEST_F(EditorModesTest, TheDrawingsNamesStayInSightUntilTheUserScrollsElsewhere)
{
    const std::string far = "/" + std::string(60, 'f') + "/";
    makeLibrary("Far", {far + "Door.dwg", far + "Window.dwg"});
    open({"Far"});
    editor().resize(1400, 1000);
    ASSERT_TRUE(waitUntil([&] { return editor().width() == 1400; }));
    ASSERT_TRUE(chooseIn("Combo2", "Far"));
    QScrollBar* const bar = editor().List1->horizontalScrollBar();
    const int names = editor().List1->fontMetrics().horizontalAdvance(QString::fromStdString(far));
    ASSERT_LT(bar->value(), names) << "the list is too wide to be scrolled that far";
    editor().resize(433, 433);
    EXPECT_TRUE(waitUntil([&] { return bar->value() == names; })) << bar->value();
    bar->setValue(5);
    editor().resize(713, 606);
    ASSERT_TRUE(waitUntil([&] { return editor().width() == 713; }));
    QApplication::processEvents();
    EXPECT_EQ(bar->value(), 5);
}

TEST_F(EditorModesTest, ALibrarysSizeIsRoundedAtEveryDrawing)
{
    std::vector<std::string> paths;
    for (const std::size_t size : {1536u, 512u, 512u, 1024u})
        paths.push_back(
            folder.write("drawings/s" + std::to_string(paths.size()) + ".dwg", std::string(size, 'x')));
    paths.push_back("/no/such.dwg");
    makeLibrary("Sizes", paths);
    open({"Sizes"});
    ASSERT_TRUE(chooseIn("Combo2", "Sizes"));
    // 1.5 is 2, 2.5 is 2, 2.5 is 2, 3.
    EXPECT_EQ(shown("Text8"), "3 KB");
    EXPECT_EQ(editor().AddedKB, 0);
}

TEST_F(EditorModesTest, ManySmallDrawingsAddUpToNothing)
{
    const std::string small = folder.write("drawings/small.dwg", std::string(512, 'x'));
    makeLibrary("Sizes", std::vector<std::string>(20, small));
    open({"Sizes"});
    ASSERT_TRUE(chooseIn("Combo2", "Sizes"));
    EXPECT_EQ(shown("Text8"), "0 KB");
}

TEST_F(EditorModesTest, ALibraryWhoseListIsGoneEndsTheProgram)
{
    open({"Doors"});
    std::filesystem::remove(listPath("Doors"));
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_NE(lastMessage().find(listPath("Doors")), std::string::npos);
    EXPECT_NE(lastMessage().find("Nothing was changed"), std::string::npos);
    EXPECT_EQ(program->loaded("Zelvora"), nullptr) << "no window comes back";
}

TEST_F(EditorModesTest, ALineWithoutASeparatorIsShownWhole)
{
    EXPECT_FALSE(folder.write("office/Odd.lst", "loose\r\n" + drawings(1)[0] + ";ONE\r\n").empty());
    open({"Odd"});
    ASSERT_TRUE(chooseIn("Combo2", "Odd"));
    EXPECT_EQ(listed(), (QStringList{"loose", QString::fromStdString(drawings(1)[0])}));
    ASSERT_TRUE(select(0));
    EXPECT_EQ(shown("Text5"), "loose");
}

TEST_F(EditorModesTest, ALibraryThatIsTooLongIsToldAndLeft)
{
    std::string bytes;
    for (int i = 0; i < 32768; ++i)
        bytes += "/d.dwg;D\r\n";
    folder.write("office/Long.lst", bytes);
    open({"Long"});
    ASSERT_TRUE(chooseIn("Combo2", "Long"));
    EXPECT_EQ(lastBox(),
              "Library Too Long [16] " + listPath("Long") + ": a library holds at most 32767 drawings");
    EXPECT_EQ(endedWith, -1);
    EXPECT_EQ(listBytes("Long"), bytes);
}

TEST_F(EditorModesTest, ChoosingALibraryToRenameLeadsToItsNewName)
{
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo1", "Doors"));
    EXPECT_TRUE(waitUntil([&] { return QApplication::focusWidget() == editor().Text2; }));
    EXPECT_TRUE(usable("Command4"));
    for (const char* command : {"Command5", "Command6", "Command1", "Command2", "Command3"})
        EXPECT_FALSE(usable(command)) << command;
    for (const char* control : {"Text1", "Combo3", "Drive1", "Dir1", "File1", "List1"})
        EXPECT_FALSE(inPlay(control)) << control;
    EXPECT_TRUE(usable("Combo2"));
    EXPECT_EQ(groundOf("Combo2"), QApplication::palette().color(QPalette::Button));
    EXPECT_EQ(editor().EditMode, Newlib::ModeIdle);
    EXPECT_EQ(editor().ListPath, listPath("Doors"));
}

TEST_F(EditorModesTest, ChoosingALibraryToDeleteLeavesTheNamesEnabled)
{
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo3", "Doors"));
    EXPECT_TRUE(usable("Command6"));
    for (const char* command : {"Command4", "Command5", "Command1", "Command2", "Command3"})
        EXPECT_FALSE(usable(command)) << command;
    for (const char* control : {"Combo1", "Combo2", "Drive1", "Dir1", "File1", "List1"})
        EXPECT_FALSE(inPlay(control)) << control;
    for (const char* control : {"Text1", "Text2"}) {
        EXPECT_TRUE(usable(control));
        EXPECT_EQ(groundOf(control), QApplication::palette().color(QPalette::Button));
    }
}

TEST_F(EditorModesTest, ALockedBoxTakesNoKeyUntilItsListDropsDown)
{
    open({"Alpha", "beta"});
    LibraryCombo& combo = *editor().Combo3;
    combo.setFocus();
    for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_B, Qt::Key_PageDown, Qt::Key_Return})
        QTest::keyClick(&combo, Qt::Key(key));
    QWheelEvent turn({5, 5}, combo.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                     false);
    QApplication::sendEvent(&combo, &turn);
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(combo.currentText(), "");
    QTest::keyClick(&combo, Qt::Key_F4);
    EXPECT_TRUE(combo.view()->isVisible());
    EXPECT_FALSE(combo.isLocked());
    combo.hidePopup();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(combo.currentText(), "Alpha");
    EXPECT_TRUE(combo.isLocked()) << "choosing locks it again";
    EXPECT_TRUE(usable("Command6")) << "a row chosen by a key is chosen";
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(combo.currentText(), "Alpha");
    QTest::keyClick(&combo, Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(combo.view()->isVisible());
    combo.hidePopup();
}

TEST_F(EditorModesTest, AClickOnALockedBoxDropsItsListDown)
{
    open({"Alpha"});
    QTest::mouseClick(editor().Combo2->lineEdit(), Qt::LeftButton);
    EXPECT_TRUE(editor().Combo2->view()->isVisible());
    editor().Combo2->hidePopup();
}

TEST_F(EditorModesTest, ResetIsTheWayBackAndTouchesNoFile)
{
    drawings(1);
    open({"Doors"});
    const std::string before = profileBytes();
    typeIn("Text1", "New");
    ASSERT_TRUE(add({"D1.dwg"}));
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command8"));
    isAtRest();
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_EQ(editor().Dirty, 0);
    for (const char* text : {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6", "Text7", "Text8", "Combo1",
                             "Combo2", "Combo3"})
        EXPECT_EQ(shown(text), "") << text;
    EXPECT_EQ(listed(), QStringList());
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), "");
    EXPECT_FALSE(usable("Command7") || usable("Command10"));
    EXPECT_EQ(listBytes("New"), linesOf(drawings(1)));
    EXPECT_EQ(profileBytes(), before);
    EXPECT_EQ(rows("Combo1", "Newlib"), QStringList{"Doors"});
}

TEST_F(EditorModesTest, ResetEndsInModeNewAlsoFromAnOpenLibrary)
{
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    ASSERT_TRUE(press("Command8"));
    EXPECT_EQ(editor().EditMode, Newlib::ModeNew);
    EXPECT_EQ(shown("Combo2"), "");
}

TEST_F(EditorModesTest, ADriveThatCannotBeReadIsTold)
{
    open({});
    typeIn("Text1", "N");
    const std::string before = editor().Dir1->path();
    Q_EMIT editor().Drive1->driveChosen("/no/such/drive");
    EXPECT_EQ(lastBox(), "Drive Error [16] Error Reading Drive");
    EXPECT_EQ(editor().Dir1->path(), before);
}

TEST_F(EditorModesTest, AClickOnAFileShowsTheDrawing)
{
    const std::string path = drawings(1)[0];
    open({});
    typeIn("Text1", "N");
    ASSERT_TRUE(pick({"D1.dwg"}));
    EXPECT_TRUE(usable("Command1") && usable("Command3"));
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(), QString::fromStdString(path));
    EXPECT_EQ(shown("Text3"), QString::fromStdString("Drawing Name: " + path + "\n\nAbout D1"));
    const auto size = std::filesystem::file_size(path);
    EXPECT_EQ(shown("Text6"), QString("%1 KB").arg((size + 500) / 1000));
    EXPECT_NE(editor().Text3->palette().color(QPalette::Text), QColor(Qt::red));
}

TEST_F(EditorModesTest, OnlyDrawingsAreOfferedAndTheKeysSelectThemAll)
{
    std::filesystem::remove(folder.file("drawings/Placeholder.dwg"));
    const auto paths = drawings(2);
    folder.write("drawings/notes.txt", "no drawing");
    open({});
    typeIn("Text1", "N");
    ASSERT_TRUE(pick({}));
    EXPECT_EQ(rows("File1", "Newlib"), (QStringList{"D1.dwg", "D2.dwg"}));
    EXPECT_FALSE(usable("Command1"));
    QTest::keyClick(editor().File1, Qt::Key_A, Qt::ControlModifier);
    ASSERT_TRUE(press("Command1"));
    EXPECT_EQ(listBytes("N"), linesOf(paths));
}

TEST_F(EditorModesTest, OneDrawingIsToldInUnitsOfAThousandRoundedHalfToEven)
{
    const std::string path = drawings(1)[0];
    makeLibrary("Doors", {path});
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    for (const auto& [length, told] : {std::pair(10500, "10 KB"), std::pair(11500, "12 KB")}) {
        std::filesystem::resize_file(path, length);
        ASSERT_TRUE(select(0));
        EXPECT_EQ(shown("Text6"), told);
        ASSERT_TRUE(pick({"D1.dwg"}));
        EXPECT_EQ(shown("Text6"), told);
    }
}

TEST_F(EditorModesTest, AFileThatIsNoDrawingShowsThePlaceholderInRed)
{
    const std::string path = folder.write("drawings/bad.dwg", "no drawing");
    drawings(1);
    open({});
    typeIn("Text1", "N");
    ASSERT_TRUE(pick({"D1.dwg"}));
    const QString size = shown("Text6");
    ASSERT_TRUE(pick({"bad.dwg"}));
    EXPECT_EQ(shown("Text3"), QString::fromStdString("Error Loading: " + path));
    EXPECT_EQ(shown("Text4"), "NA");
    EXPECT_EQ(shown("Text6"), size) << "the size stays as it was";
    EXPECT_EQ(editor().Text3->palette().color(QPalette::Text), QColor(Qt::red));
    EXPECT_EQ(editor().Text4->palette().color(QPalette::Text), QColor(Qt::red));
    EXPECT_EQ(editor().DwgThumbnail1->dwgFileName(),
              QString::fromStdString(joinPath(installation, "failed.dwg")));
    ASSERT_TRUE(pick({"D1.dwg"}));
    EXPECT_NE(editor().Text3->palette().color(QPalette::Text), QColor(Qt::red));
}

TEST_F(EditorModesTest, SetPathDisablesTheEditorForTheOtherWindow)
{
    class OtherWindow final : public Window {
    public:
        explicit OtherWindow(Program& program) : Window(program, "ZVYpath", "ZVYpath") {}
    };
    program->add("ZVYpath", [this] { return new OtherWindow(*program); });
    open({});
    program->values().AlwaysOnTop = 1;
    editor().setTopmost(true);
    ASSERT_TRUE(press("Command14"));
    EXPECT_TRUE(appears("ZVYpath"));
    EXPECT_FALSE(editor().isEnabled());
    EXPECT_FALSE(editor().isTopmost());
    program->unload("ZVYpath");
    editor().setEnabled(true);
}

TEST_F(EditorModesTest, EachButtonHasItsCaptionAndTip)
{
    open({});
    const struct {
        PictureButton* button;
        const char* caption;
        const char* tip;
    } buttons[] = {{editor().Command1, "Add", "Add file to list"},
                   {editor().Command2, "Remove", "Remove selected file from list"},
                   {editor().Command3, "Remove All", "Remove all files from list"},
                   {editor().Command4, "OK", "Rename Library"},
                   {editor().Command5, "OK", "Rename Label"},
                   {editor().Command6, "&Delete", "Delete Current Library"},
                   {editor().Command7, "UP", "Move File Up in List"},
                   {editor().Command8, "&Reset", "Discard"},
                   {editor().Command9, "&Save", "Apply Changes"},
                   {editor().Command10, "DN", "Move File Down in List"},
                   {editor().Command11, "&Done", "Close and Save Changes"},
                   {editor().Command12, "&Edit", "Edit AutoCAD DWGPROPS"},
                   {editor().Command14, "&Set Path", "Set Path for Zelvora Libraries (*.lst)"}};
    for (const auto& [button, caption, tip] : buttons) {
        EXPECT_EQ(button->text(), caption);
        EXPECT_EQ(button->toolTip(), tip);
    }
}

TEST_F(EditorModesTest, EachFrameAndLabelHasItsCaption)
{
    open({});
    QStringList captions;
    for (const CaptionFrame* frame :
         {editor().FrameNew, editor().FrameRename, editor().FrameDelete, editor().FramePath,
          editor().FrameFiles, editor().FramePreview, editor().FrameProperties})
        captions << frame->title();
    for (const QLabel* label : {editor().LabelSelect, editor().LabelTo, editor().LabelLabel,
                                editor().LabelFiles, editor().LabelSize, editor().LabelNote})
        captions << label->text();
    EXPECT_EQ(captions,
              (QStringList{"Type New Library Name", "Rename Library", "Delete Library", "Set Library Path",
                           "Add Drawing Files:", "Drawing Preview", "DWG Properties",
                           "Or Select Existing Library", "To", "Drawing Label:", "Total Files:",
                           "Total Size:", "Select the Edit button to modify DWGPROPS"}));
}

TEST_F(EditorModesTest, EveryLabelIsReadWholeAtEverySize)
{
    open({"Doors"});
    labelsAreReadWhole(editor());
}

TEST_F(EditorModesTest, EveryControlCanBeReachedAndSaysWhatItIs)
{
    makeLibrary("Doors", drawings(2));
    open({"Doors"});
    ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    for (QWidget* widget : editor().findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() || widget->focusProxy() ||
            widget->objectName().startsWith("qt_"))
            continue;
        const auto* button = qobject_cast<QAbstractButton*>(widget);
        EXPECT_TRUE(!widget->accessibleName().isEmpty() || (button && !button->text().isEmpty()))
            << widget->objectName().toStdString();
    }
}

} // namespace
} // namespace zv
