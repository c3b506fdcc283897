#include "print/PrintLib.h"

#include "controls/Clip.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "support/OfficeFixture.h"
#include "support/PdfFacts.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

const QString kWindow = QStringLiteral("PrintLib");

class PrintLibTest : public OfficeFixture {
protected:
    PrintLibTest()
    {
        makeLibrary("Doors", drawings(3));
        makeLibrary("Stairs", {makeDrawing("S1"), makeDrawing("S2")});
        makeCatalogue({"Doors", "Stairs"});
        setKey(User, "Settings", "AOT", "0");
        setKey(User, "Settings", "RibSet", "2");
        std::filesystem::create_directory(folder.file("out"));
    }

    PrintLib& window() { return *static_cast<PrintLib*>(program->loaded(kWindow)); }
    /// Opens the window from the main window. The user chooses a file when asked for the printer.
    void open()
    {
        start();
        ASSERT_TRUE(click("Command7"));
        ASSERT_TRUE(appears(kWindow));
        window().DwgViewX1->setPrinterChooser([this](QPrinter& printer, QWidget*) {
            ++asked;
            if (whileAsked)
                whileAsked();
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QString::fromStdString(folder.file("out/first.pdf")));
            return true;
        });
    }
    /// The user says no from now on.
    void refuse()
    {
        window().DwgViewX1->setPrinterChooser([this](QPrinter&, QWidget*) {
            ++asked;
            return false;
        });
    }
    bool select(std::initializer_list<int> chosen)
    {
        for (const int row : chosen)
            if (!clickRow("List1", row, kWindow))
                return false;
        return true;
    }
    bool print() { return click("Command7", kWindow); }
    QStringList printed()
    {
        return QDir(QString::fromStdString(folder.file("out"))).entryList({QStringLiteral("*.pdf")});
    }
    QString said(const char* control) { return text(QLatin1String(control), kWindow); }
    /// A helper that leaves a line with the count of its arguments each time it is started.
    void makeHelper()
    {
        std::filesystem::copy_file(ZELVORA_PRINT_HELPER, joinPath(installation, "Plotmute") + kProgramEnding);
    }
    std::string helped() { return readFile(joinPath(installation, "helped")).valueOr({}); }

    int asked = 0;
    std::function<void()> whileAsked;
};

TEST_F(PrintLibTest, OffersTheUsersOwnListAndTheCatalogueOfTheInstallationFolder)
{
    master = folder.file("master");
    std::filesystem::create_directory(master);
    setKey(Installation, "Path", "ZVRpath", master);
    makeCatalogue({"Elsewhere"});
    open();
    EXPECT_EQ(rows("List1", kWindow), (QStringList{toText(program->values().LoginName), "Doors", "Stairs"}));
    EXPECT_EQ(window().windowTitle(), "Output Libraries");
    EXPECT_FALSE(main().isVisible());
}

TEST_F(PrintLibTest, ACatalogueWithoutACountIsRepairedBeforeItIsRead)
{
    start();
    writeProfileSection(joinPath(installation, "Zelvora.ini"), "Library", {"lib1=Doors"});
    ASSERT_TRUE(click("Command7"));
    ASSERT_TRUE(appears(kWindow));
    EXPECT_EQ(rows("List1", kWindow).size(), 1);
    EXPECT_EQ(key(Installation, "Library", "libnum"), "0");
}

TEST_F(PrintLibTest, NothingSelectedIsTheOneThingWithAMessage)
{
    open();
    bool topmost = true;
    messages.whileShown = [&] { topmost = window().isTopmost(); };
    ASSERT_TRUE(print());
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Please Select Library to Print");
    EXPECT_EQ(messages.shown[0].title, "No Library Selected");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Warning);
    EXPECT_FALSE(topmost);
    EXPECT_TRUE(window().isTopmost()) << "whatever the user wants of the program";
    EXPECT_TRUE(window().Command1->hasFocus());
    EXPECT_FALSE(visible("DwgViewX1", kWindow));
    EXPECT_EQ(said("Text1"), "");
    EXPECT_TRUE(enabled("Command7", kWindow));
}

TEST_F(PrintLibTest, EveryDrawingOfTheChosenLibrariesIsPrinted)
{
    makeHelper();
    open();
    ASSERT_TRUE(select({1, 2}));
    ASSERT_TRUE(print());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(printed(), (QStringList{"D2.pdf", "D3.pdf", "first.pdf", "S1.pdf", "S2.pdf"}));
    for (const QString& name : printed()) {
        const PdfFacts page = readPdf(QString::fromStdString(folder.file("out/")) + name);
        EXPECT_TRUE(page.whole);
        EXPECT_EQ(page.pages, 1);
    }
    EXPECT_EQ(said("Text1"), "Printing of Library Complete");
    EXPECT_EQ(said("Text3"), "");
    EXPECT_EQ(said("Label1"), "Printed: \n5 of 5");
    EXPECT_TRUE(waitUntil([this] { return helped() == "0\n0\n0\n0\n"; })) << helped();
    EXPECT_FALSE(visible("DwgViewX1", kWindow));
    EXPECT_FALSE(visible("Animation1", kWindow));
    EXPECT_FALSE(window().DwgViewX1->printSilently());
    EXPECT_TRUE(window().Command1->hasFocus());
    EXPECT_TRUE(enabled("Command7", kWindow) && enabled("Command6", kWindow));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(PrintLibTest, OneDrawingInAllStartsNoHelper)
{
    makeHelper();
    makeLibrary("Doors", drawings(1));
    open();
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(printed(), QStringList{"first.pdf"});
    EXPECT_EQ(helped(), "");
}

TEST_F(PrintLibTest, WhatIsToldWhileADrawingIsInHand)
{
    open();
    QStringList told;
    whileAsked = [&] {
        told << said("Text1") << said("Label1") << said("Text3");
        EXPECT_TRUE(visible("DwgViewX1", kWindow));
        EXPECT_TRUE(visible("Animation1", kWindow));
        EXPECT_EQ(window().DwgViewX1->dwgFileName(), toText(drawings(3)[0]));
        EXPECT_FALSE(enabled("Command7", kWindow) || enabled("Command6", kWindow));
        EXPECT_TRUE(enabled("Command5", kWindow));
    };
    QString drawing;
    QObject::connect(window().Text3, &QPlainTextEdit::textChanged, &window(), [&] {
        if (drawing.isEmpty())
            drawing = said("Text3");
    });
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    EXPECT_EQ(told, (QStringList{"Printing Library \nDoors", "Printing: \n1 of 3", ""}));
    EXPECT_EQ(drawing, "Printing Drawing: \n" + toText(drawings(3)[0]));
}

TEST_F(PrintLibTest, TheLoginNamePrintsTheUsersOwnList)
{
    open();
    ASSERT_TRUE(writeFile(program->values().MyLibPath, drawings(1)[0] + ";Mine\r\n"));
    ASSERT_TRUE(select({0}));
    ASSERT_TRUE(print());
    EXPECT_EQ(printed(), QStringList{"first.pdf"});
    EXPECT_EQ(said("Label1"), "Printed: \n1 of 1");
}

TEST_F(PrintLibTest, MissingAndDamagedDrawingsAreCountedAndPassedOver)
{
    const std::string damaged = folder.write("drawings/bad.dwg", "AC1015 and no more");
    makeLibrary("Doors",
                {folder.file("gone.dwg"), drawings(2)[0], damaged, folder.file("gone2.dwg"), drawings(2)[1]});
    open();
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(printed(), (QStringList{"D2.pdf", "first.pdf"}));
    EXPECT_EQ(said("Label1"), "Printed: \n5 of 5");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PrintLibTest, ANoInTheDialogPrintsNothingAndTheRunGoesToItsEnd)
{
    makeHelper();
    open();
    refuse();
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(printed().isEmpty());
    EXPECT_EQ(said("Label1"), "Printed: \n3 of 3");
    EXPECT_TRUE(waitUntil([this] { return helped() == "0\n0\n"; }));
}

TEST_F(PrintLibTest, ASecondRunAsksAgain)
{
    open();
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    refuse();
    ASSERT_TRUE(print());
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(printed(), (QStringList{"D2.pdf", "D3.pdf", "first.pdf"}))
        << "no yes is left of the run before";
}

TEST_F(PrintLibTest, AListWithoutADrawingIsSoonDone)
{
    makeLibrary("Doors", {});
    open();
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(said("Label1"), "Printed: \n0 of 0");
    EXPECT_EQ(said("Text1"), "Printing of Library Complete");
    EXPECT_GT(window().ProgressBar1->maximum(), 0) << "the bar does not go on as if the count did";
}

TEST_F(PrintLibTest, TheEndByAMissingListLeavesTheWindowToTheProgram)
{
    open();
    ASSERT_TRUE(deleteFileForced(listPath("Stairs")));
    ASSERT_TRUE(select({2}));
    ASSERT_TRUE(print());
    ASSERT_EQ(endedWith, 1);
    QSignalSpy gone(&window(), &QObject::destroyed);
    QCoreApplication::processEvents();
    EXPECT_EQ(gone.count(), 0);
}

TEST_F(PrintLibTest, AMissingListAtTheCountEndsTheProgram)
{
    open();
    ASSERT_TRUE(deleteFileForced(listPath("Stairs")));
    ASSERT_TRUE(select({1, 2}));
    ASSERT_TRUE(print());
    EXPECT_NE(lastMessage().find("Stairs.lst"), std::string::npos) << lastMessage();
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(asked, 0) << "nothing is printed before the count is whole";
}

TEST_F(PrintLibTest, ALibraryOfTheMasterFolderOnlyIsNotFound)
{
    open();
    program->values().MasterPath = user;
    ASSERT_TRUE(writeFile(joinPath(user, "Stairs.lst"), ""));
    ASSERT_TRUE(deleteFileForced(listPath("Stairs")));
    ASSERT_TRUE(select({2}));
    ASSERT_TRUE(print());
    EXPECT_EQ(endedWith, 1);
}

TEST_F(PrintLibTest, CloseBringsTheMainWindowBack)
{
    open();
    ASSERT_TRUE(click("Command5", kWindow));
    EXPECT_EQ(program->loaded(kWindow), nullptr);
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(PrintLibTest, TheCloseBoxBringsTheMainWindowBack)
{
    open();
    window().close();
    EXPECT_EQ(program->loaded(kWindow), nullptr);
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(PrintLibTest, TheMainWindowComesBackOnTopIfTheUserWantsItThere)
{
    setKey(User, "Settings", "AOT", "1");
    open();
    EXPECT_TRUE(window().isTopmost());
    ASSERT_TRUE(click("Command5", kWindow));
    EXPECT_TRUE(main().isTopmost());
}

TEST_F(PrintLibTest, CloseDuringTheRunEndsItWithinTheDrawing)
{
    open();
    bool mainIsBack = false;
    whileAsked = [&] {
        QTest::mouseClick(window().Command5, Qt::LeftButton);
        mainIsBack = main().isVisible();
    };
    ASSERT_TRUE(select({1, 2}));
    ASSERT_TRUE(print());
    EXPECT_TRUE(mainIsBack);
    EXPECT_EQ(printed(), QStringList{"first.pdf"});
    ASSERT_NE(program->loaded(kWindow), nullptr) << "it can still be read";
    EXPECT_EQ(said("Label1"), "Printed: \n5 of 5");
    EXPECT_EQ(said("Text1"), "Printing of Library Complete");
    EXPECT_TRUE(waitUntil([this] { return program->loaded(kWindow) == nullptr; }));
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(PrintLibTest, TheCloseBoxDuringTheRunStopsIt)
{
    open();
    whileAsked = [&] { window().close(); };
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    EXPECT_EQ(printed(), QStringList{"first.pdf"});
    EXPECT_EQ(said("Label1"), "Printed: \n3 of 3");
    EXPECT_TRUE(waitUntil([this] { return program->loaded(kWindow) == nullptr; }));
}

TEST_F(PrintLibTest, AStopDuringTheCountPrintsNothing)
{
    open();
    ASSERT_TRUE(select({1, 2}));
    QTimer::singleShot(0, &window(), [this] { window().Command5->click(); });
    window().Command7->click();
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(printed().isEmpty());
    EXPECT_EQ(said("Label1"), "Printed: \n2 of 2") << "one line of each library was counted";
    EXPECT_TRUE(waitUntil([this] { return program->loaded(kWindow) == nullptr; }));
}

TEST_F(PrintLibTest, AWindowThatIsAskedForAgainAfterAStopStays)
{
    open();
    whileAsked = [&] { window().close(); };
    ASSERT_TRUE(select({1}));
    ASSERT_TRUE(print());
    program->show(kWindow);
    QSignalSpy gone(&window(), &QObject::destroyed);
    EXPECT_FALSE(gone.wait(1500));
    ASSERT_NE(program->loaded(kWindow), nullptr);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PrintLibTest, TheProgramMayEndInTheMiddleOfARun)
{
    open();
    whileAsked = [&] {
        window().close();
        main().close();
        EXPECT_EQ(endedWith, 0);
    };
    ASSERT_TRUE(select({1, 2}));
    QSignalSpy gone(&window(), &QObject::destroyed);
    ASSERT_TRUE(print());
    EXPECT_EQ(printed(), QStringList{"first.pdf"});
    EXPECT_TRUE(gone.count() == 1 || gone.wait());
}

TEST_F(PrintLibTest, TheKeyboardAloneChoosesPrintsAndCloses)
{
    open();
    EXPECT_TRUE(window().List1->hasFocus());
    QTest::keyClick(window().List1, Qt::Key_Down);
    QTest::keyClick(window().List1, Qt::Key_Down);
    QTest::keyClick(window().List1, Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(waitUntil([this] { return window().Command1->hasFocus(); }));
    EXPECT_FALSE(printed().isEmpty());
    QTest::keyClick(window().Command1, Qt::Key_Tab);
    EXPECT_TRUE(window().List1->hasFocus());
    QTest::keyClick(window().List1, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(waitUntil([this] { return program->loaded(kWindow) == nullptr; }));
}

} // namespace
} // namespace zv
