#include "host/DialogFixture.h"

#include "host/CommandText.h"
#include "platform/Files.h"
#include "platform/Folders.h"

#include <algorithm>
#include <filesystem>

namespace zv::test {

namespace {

class Attaching : public DialogFixture {
protected:
    Attaching()
    {
        order.drawing = "C:\\Lib\\Bolt.dwg";
        order.askPoint = true;
        order.point = {"0.00", "1.50", "-2"};
        order.scale = {"1.00", "2", "3"};
        order.rotation = "0.00";
    }
    void attach() { attachXref(order, dialog, services, dialogSettings); }
    static std::string typed(const std::string& text) { return "ActiveDocument.SendCommand('" + text + "')"; }

    XrefOrder order;
    const Events ended = {kFiledia, kSnap, "done", kFiledia};
    const Events endedAgain = {kSnap, "again", kFiledia, kFiledia};
};

TEST_F(Attaching, TypesTheCommandBetweenTheBracketsAndGivesTheSnapBack)
{
    place.run("");
    attach();
    EXPECT_EQ(events, (kDialogFound + kHostShown +
                       Events{typed("(command \"._xref\" "
                                    "\"Attach\"\"C:/Lib/"
                                    "Bolt.dwg\"\"X\"\"1.00\"\"Y\"\"2\"\"Z\"\"3\"\"R\"\"0.00\")<CR>")} +
                       ended));
}

TEST_F(Attaching, EachOfTheEightTextsGoesOutInOneCall)
{
    const std::string open = "(command \"._xref\" \"Attach\"\"C:/Lib/Bolt.dwg\"";
    const std::string scale = "\"X\"\"1.00\"\"Y\"\"2\"\"Z\"\"3\"";
    const std::string answered = "._xref<CR>Attach<CR>C:/Lib/Bolt.dwg<CR>0,1.5,-2<CR>XYZ<CR>";
    const struct {
        bool point, scale, rotation;
        std::string text;
    } cases[] = {{true, true, true, open + ")<CR>"},
                 {true, false, false, open + scale + "\"R\"\"0.00\")<CR>"},
                 {true, true, false, open + "pause\"X\"pause pause\"0.00\")<CR>"},
                 {true, false, true, open + scale + ")<CR>"},
                 {false, false, false, answered + "1.00<CR>2<CR>3<CR>0.00<CR>"},
                 {false, true, true, answered + "typed<CR>typed<CR>typed<CR>"},
                 {false, false, true, answered + "1.00<CR>2<CR>3<CR>"},
                 {false, true, false, answered + "typed<CR>typed<CR>typed<CR>0.00<CR>"}};
    place.run("");
    for (const auto& expected : cases) {
        events.clear();
        order.askPoint = expected.point;
        order.askScale = expected.scale;
        order.askRotation = expected.rotation;
        attach();
        EXPECT_EQ(std::count(events.begin(), events.end(), typed(expected.text)), 1) << expected.text;
        EXPECT_EQ(
            std::count_if(events.begin(), events.end(),
                          [](const std::string& event) { return event.find("SendCommand") != event.npos; }),
            1);
        EXPECT_EQ(Events(events.end() - 4, events.end()), ended);
    }
}

TEST_F(Attaching, TheScaleIsAskedInTheHostAndAnEmptyAnswerTakesTheOneBefore)
{
    order.askPoint = false;
    order.askScale = order.askRotation = true;
    order.overlay = true;
    place.run("answer\nanswer 2.5\nanswer");
    attach();
    EXPECT_EQ(events,
              (kDialogFound + kHostShown +
               Events{"ActiveDocument.Utility", "Utility.GetString(False, 'Enter X Scale Factor <1>:')",
                      "Utility.GetString(False, 'Enter Y Scale Factor <use X scale factor>:')",
                      "Utility.GetString(False, 'Enter Z Scale Factor <use Y scale factor>:')",
                      typed("._xref<CR>Overlay<CR>C:/Lib/"
                            "Bolt.dwg<CR>0,1.5,-2<CR>XYZ<CR>1<CR>2.5<CR>2.5<CR>")} +
               ended));
}

TEST_F(Attaching, EscAtAScalePromptTypesNothingAndBringsTheDialogBack)
{
    order.askPoint = false;
    order.askScale = true;
    for (const int prompt : {1, 2, 3}) {
        events.clear();
        place.run("fault GetString#" + std::to_string(prompt) + " cancelled");
        attach();
        EXPECT_TRUE(events[events.size() - 5].starts_with("Utility.GetString"));
        EXPECT_EQ(Events(events.end() - 4, events.end()), endedAgain);
        place.end();
    }
}

TEST_F(Attaching, AutoScaleDividesTheHostsScaleByTheDrawings)
{
    order.autoScale = true;
    order.hostScale = "96";
    order.xrefScale = "48";
    place.run("");
    attach();
    EXPECT_EQ(events[events.size() - 5], typed("(command \"._xref\" \"Attach\"\"C:/Lib/"
                                               "Bolt.dwg\"\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\"\"R\"\"0.00\")<CR>"));
}

TEST_F(Attaching, ATextThatIsNoNumberIsMarkedAndTheHostIsNotTouched)
{
    place.run("");
    const auto marks = [this](const char* field) {
        attach();
        EXPECT_EQ(events, (Events{"again", std::string("mark ") + field}));
        events.clear();
    };
    order.askPoint = false;
    order.point[1] = "here";
    marks("1");
    order.askPoint = true;
    order.scale[2] = "";
    marks("5");
    order.askScale = true;
    order.autoScale = true;
    order.hostScale = "";
    order.xrefScale = "48";
    marks("6");
    order.hostScale = "1";
    order.xrefScale = "0";
    marks("7");
    order.xrefScale = "1/4";
    marks("7");
}

TEST_F(Attaching, FieldsThatAreNotUsedMayHoldAnything)
{
    order.point = {"no", "number", "here"};
    order.askScale = order.askRotation = true;
    order.scale = {"\"", "", "x"};
    order.rotation = "\"";
    order.folder = "\"";
    place.run("");
    attach();
    EXPECT_EQ(events[events.size() - 5], typed("(command \"._xref\" \"Attach\"\"C:/Lib/Bolt.dwg\")<CR>"));
}

TEST_F(Attaching, WhatCannotBeTypedIsRefusedBeforeTheHostIsTouched)
{
    const auto refuses = [this](const std::string& text) {
        attach();
        EXPECT_EQ(events, (Events{"warning [Zelvora] " + text}));
        events.clear();
    };
    order.drawing = "C:\\a\"b.dwg";
    refuses("The name of this drawing cannot be sent to AutoCAD: C:\\a\"b.dwg");
    order.drawing = "C:\\a.dwg";
    order.rotation = "4\"5";
    refuses("This text cannot be sent to AutoCAD: 4\"5");
    order.rotation = "45";
    order.scale[0] = "1\"";
    refuses("This text cannot be sent to AutoCAD: 1\"");
    order.scale[0] = "1";
    order.askPoint = false;
    order.point[2] = "\t";
    refuses("This text cannot be sent to AutoCAD: \t");
    order.askPoint = true;
    order.copy = true;
    order.folder = "C:\\\"";
    refuses("This text cannot be sent to AutoCAD: C:\\\"");
}

// ---- the copy

TEST_F(Attaching, ACopyIsMadeUnderTheNameInCapitalsAndAttached)
{
    order.drawing = folder.write("Bolt.dwg", "drawing");
    order.copy = true;
    order.folder = folder.path();
    place.run("");
    attach();
    EXPECT_EQ(folder.read("BOLT.DWG"), "drawing");
    EXPECT_EQ(events,
              (kDialogFound + kActivated + Events{"remember " + folder.path()} + kHostShown +
               Events{typed("(command \"._xref\" \"Attach\"\"" + withForwardSlashes(folder.file("BOLT.DWG")) +
                            "\"\"X\"\"1.00\"\"Y\"\"2\"\"Z\"\"3\"\"R\"\"0.00\")<CR>")} +
               ended));
}

TEST_F(Attaching, ACopyThatFailsLeavesTheOldTargetAndTheAttachGoesOnWithIt)
{
    order.drawing = folder.file("gone.dwg");
    folder.write("GONE.DWG", "old");
    order.copy = true;
    order.folder = folder.path();
    place.run("");
    attach();
    EXPECT_EQ(folder.read("GONE.DWG"), "old");
    EXPECT_NE(events[events.size() - 5].find(withForwardSlashes(folder.file("GONE.DWG"))), std::string::npos);
}

TEST_F(Attaching, WithoutAFolderItIsToldAndTheDialogComesBackAsItWasCalled)
{
    order.copy = true;
    place.run("");
    attach();
    EXPECT_EQ(events,
              (kDialogFound + Events{"information [Specify Xref Copy Path] Xref Copy Path Not Specfied",
                                     kFiledia, "again as called", kFiledia, kFiledia}));
}

TEST_F(Attaching, AFolderOfThreeCharactersIsCopiedToAndNotRemembered)
{
    const std::string before = currentFolder();
    std::filesystem::create_directory(folder.file("to"));
    ASSERT_TRUE(setCurrentFolder(folder.path()));
    order.drawing = folder.write("Bolt.dwg", "drawing");
    order.copy = true;
    order.folder = "to/";
    place.run("");
    attach();
    EXPECT_TRUE(setCurrentFolder(before));
    EXPECT_EQ(folder.read("to/BOLT.DWG"), "drawing");
    EXPECT_TRUE(std::none_of(events.begin(), events.end(),
                             [](const std::string& event) { return event.starts_with("remember"); }));
}

TEST(XrefCopyTarget, AFolderOfThreeCharactersIsADriveRoot)
{
    EXPECT_EQ(xrefCopyTarget("C:\\", "D:\\a\\Bolt.dwg"), "C:\\BOLT.DWG");
    EXPECT_EQ(xrefCopyTarget("/mn", "/a/Bolt.dwg"), "/mnBOLT.DWG");
    EXPECT_EQ(xrefCopyTarget("/mnt", "/a/Bolt.dwg"), joinPath("/mnt", "BOLT.DWG"));
    EXPECT_TRUE(isDriveRoot("C:\\"));
    EXPECT_FALSE(isDriveRoot("C:\\a"));
}

// ---- a host that is not there, or fails

TEST_F(Attaching, NoBringsTheDialogBack)
{
    attach();
    EXPECT_EQ(events, (Events{kNotRunning, std::string(kFirstQuestion) + " No", "again"}));
}

TEST_F(Attaching, WithNoneInstalledTheHandlerEndsWithTheDialogHidden)
{
    window.answers = {true};
    attach();
    EXPECT_EQ(events,
              (Events{kNotRunning, std::string(kFirstQuestion) + " Yes", "hide", "splash", "splash off",
                      "create AutoCAD.Application.16: none", "create AutoCAD.Application.15: none",
                      "default pointer",
                      "critical [] Could not launch AutoCAD! AutoCAD 2000, 2002, or 2004 not found!"}));
}

TEST_F(Attaching, AHostThatHasGoneIsToldInItsOwnWordsAndTheDialogComesBack)
{
    place.install("AutoCAD.Application.16", "listen AutoCAD.Application.16");
    window.answers = {true};
    attach();
    ASSERT_GE(events.size(), 2u);
    EXPECT_TRUE(events[events.size() - 2].starts_with("plain [] "));
    EXPECT_EQ(events.back(), "again");
}

TEST_F(Attaching, AHostThatFailsOrDiesAtAnyCallThatMattersBringsTheDialogBack)
{
    order.askPoint = false;
    order.askScale = true;
    for (const char* kind : {"failed", "die"}) {
        for (const char* member :
             {"ActiveDocument", "GetVariable", "SetVariable", "Utility", "GetString", "SendCommand"}) {
            events.clear();
            place.run(std::string("fault ") + member + "#1 " + kind);
            attach();
            EXPECT_EQ(std::count(events.begin(), events.end(), "again"), 1) << member << " " << kind;
            EXPECT_EQ(std::count(events.begin(), events.end(), "done"), 0) << member << " " << kind;
            place.end();
        }
    }
}

TEST_F(Attaching, WhatTheHostOnlyShowsMayFail)
{
    for (const char* member : {"Caption", "Visible", "ActiveSpace", "ObjectSnapMode"}) {
        events.clear();
        place.run(std::string("fault ") + member + "#* failed");
        attach();
        EXPECT_EQ(std::count(events.begin(), events.end(), "done"), 1) << member;
        place.end();
    }
}

TEST_F(Attaching, FileDialogsThatAreAlwaysOnAreTurnedOnAroundIt)
{
    dialogSettings.keepFileDialogs = true;
    place.run("variable filedia 0");
    attach();
    EXPECT_EQ(events[4], "ActiveDocument.SetVariable('filedia', 1)");
    EXPECT_EQ(events.back(), kFiledia);
}

// ---- the scale of the running host

TEST_F(Attaching, TheRunningHostIsShownAndTellsItsScale)
{
    place.run("variable dimscale 48.0");
    EXPECT_EQ(runningHostScale(services.automation).valueOr(0), 48);
    EXPECT_EQ(events, (Events{kAttach, "App.Visible = True", "App.ActiveDocument",
                              "ActiveDocument.GetVariable('dimscale')"}));
}

TEST_F(Attaching, AScaleOfZeroIsOneAndNoHostHasNone)
{
    EXPECT_FALSE(runningHostScale(services.automation));
    place.run("variable dimscale 0");
    EXPECT_EQ(runningHostScale(services.automation).valueOr(0), 1);
}

} // namespace

} // namespace zv::test
