#include "host/CmodeProcedure.h"

#include "host/DialogFixture.h"

#include <algorithm>
#include <filesystem>

namespace zv::test {

namespace {

class Opening : public DialogFixture {
protected:
    Opening()
    {
        order.drawing = folder.write("Bolt.dwg", "drawing");
        std::filesystem::create_directory(folder.file("job"));
    }
    void open() { openDrawing(order, dialog, services, dialogSettings); }
    void copyTo(const std::string& name)
    {
        order.copy = true;
        order.target = folder.file(name);
    }
    Events opened(const std::string& path) const
    {
        return {"ActiveDocument.Application", "Application.Documents", "Documents.Open('" + path + "')",
                kSnap, kFiledia};
    }

    OpenOrder order;
    const Events ended = {"done", kFiledia};
};

TEST_F(Opening, TheDrawingItselfIsOpenedAsADocumentOfItsOwn)
{
    place.run("");
    open();
    EXPECT_EQ(events, (kDialogFound + kHostShown + opened(order.drawing) + ended));
}

TEST_F(Opening, ACopyIsMadeAndOpenedAndItsFolderIsRemembered)
{
    copyTo("job/New.dwg");
    place.run("");
    open();
    EXPECT_EQ(events, (kDialogFound + kActivated + Events{"remember " + folder.file("job")} + kHostShown +
                       opened(order.target) + ended));
    EXPECT_EQ(folder.read("job/New.dwg"), "drawing");
}

TEST_F(Opening, NoToTheOverwriteQuestionOpensWhatIsThere)
{
    copyTo("job/Old.dwg");
    folder.write("job/Old.dwg", "old");
    place.run("");
    open();
    EXPECT_EQ(events, (kDialogFound + kActivated +
                       Events{"question [File Already Exists in Specified Directory] File: " + order.target +
                              " Already Exists, Would you Like to Overwrite? No"} +
                       kHostShown + opened(order.target) + ended));
    EXPECT_EQ(folder.read("job/Old.dwg"), "old");
}

TEST_F(Opening, YesOverwrites)
{
    copyTo("job/Old.dwg");
    folder.write("job/Old.dwg", "old");
    window.answers = {true};
    place.run("");
    open();
    EXPECT_EQ(folder.read("job/Old.dwg"), "drawing");
    EXPECT_EQ(std::count(events.begin(), events.end(), "remember " + folder.file("job")), 1);
}

TEST_F(Opening, ACopyOntoItselfIsPassedOverWithoutAQuestion)
{
    copyTo("job/../Bolt.dwg");
    place.run("");
    open();
    EXPECT_EQ(events, (kDialogFound + kActivated + kHostShown + opened(order.target) + ended));
}

TEST_F(Opening, ACopyThatFailsIsSeenWhenThereIsNothingToOpen)
{
    copyTo("no/such/New.dwg");
    place.run("");
    open();
    EXPECT_EQ(events,
              (kDialogFound + kActivated + Events{"remember " + folder.file("no/such")} + kHostShown +
               Events{"plain [] File " + order.target + " does not exist.", kFiledia, kSnap} + ended));
}

TEST_F(Opening, ADrawingThatIsMissingIsTold)
{
    order.drawing = folder.file("gone.dwg");
    place.run("");
    open();
    EXPECT_EQ(events[events.size() - 5], "plain [] File " + order.drawing + " does not exist.");
    EXPECT_EQ(events[events.size() - 2], "done");
}

TEST_F(Opening, WhatCannotBeSentIsRefusedBeforeTheHostIsTouched)
{
    order.drawing = "/a\"b.dwg";
    open();
    EXPECT_EQ(events,
              (Events{"warning [Zelvora] The name of this drawing cannot be sent to AutoCAD: /a\"b.dwg"}));
    events.clear();
    order.copy = true;
    order.target = "/c\"d.dwg";
    open();
    EXPECT_EQ(events, (Events{"warning [Zelvora] This text cannot be sent to AutoCAD: /c\"d.dwg"}));
}

TEST_F(Opening, NoBringsTheDialogBackAndNothingIsCopied)
{
    copyTo("job/New.dwg");
    open();
    EXPECT_EQ(events, (Events{kNotRunning, std::string(kFirstQuestion) + " No", "again"}));
    EXPECT_FALSE(std::filesystem::exists(order.target));
}

TEST_F(Opening, AHostThatFailsOrDiesAtAnyCallThatMattersBringsTheDialogBack)
{
    for (const char* kind : {"failed", "die"}) {
        for (const char* member :
             {"ActiveDocument", "GetVariable", "SetVariable", "Application", "Documents", "Open"}) {
            events.clear();
            place.run(std::string("fault ") + member + "#1 " + kind);
            open();
            EXPECT_EQ(std::count(events.begin(), events.end(), "again"), 1) << member << " " << kind;
            place.end();
        }
    }
}

} // namespace

} // namespace zv::test
