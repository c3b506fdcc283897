#include "host/PropertiesProcedure.h"

#include "host/ActionFixture.h"

namespace zv::test {

namespace {

const std::string kDrawing = "C:\\Lib\\Bolt.dwg";

const Events kFound = {kAttach, "App.Version", kAttach};
const Events kOpen = {"hide",
                      "App.ActiveDocument",
                      "ActiveDocument.Application",
                      "Application.Documents",
                      "Documents.Open('C:\\Lib\\Bolt.dwg')",
                      "App.ActiveDocument"};
const Events kType = {"ActiveDocument.SendCommand('.DWGPROPS<CR>')",
                      "ActiveDocument.SendCommand('.qsave<CR>')", "ActiveDocument.GetVariable('SDI')"};
const Events kClose = {"ActiveDocument.Close(False, 'C:\\Lib\\Bolt.dwg')"};
const Events kActivate = {"App.Caption", "activate Scripted Host"};
const Events kBack = {"reread", "show"};
/// Of a host that was started: attached again and brought to the screen.
const Events kVisible = {kAttach, "ActiveDocument.Application", "Application.Visible = True"};
const Events kStart = {kNotRunning,  std::string(kFirstQuestion) + " Yes", "hide", "splash",
                       "splash off", "create AutoCAD.Application.20"};

class PropertiesProcedureTest : public ActionFixture {
protected:
    /// The editor as the procedure sees it.
    class Editor final : public PropertiesWindow {
    public:
        Editor(RecordingWindow& window, Events& events) : m_window(window), m_events(events) {}
        void hideWindow() override { m_window.hideWindow(); }
        void showWindow() override { m_window.showWindow(); }
        void setDefaultPointer() override { m_window.setDefaultPointer(); }
        Messages& messages() override { return m_window; }
        void reread() override { m_events.push_back("reread"); }

    private:
        RecordingWindow& m_window;
        Events& m_events;
    };

    void edit(const std::string& drawing = kDrawing) { editProperties(drawing, editor, services); }
    void installHost(const std::string& script)
    {
        place.install("AutoCAD.Application.20",
                      "listen AutoCAD.Application\nlisten AutoCAD.Application.20\n" + script);
        window.answers = {true};
    }

    Editor editor{window, events};
};

TEST_F(PropertiesProcedureTest, ARunningHostOpensEditsSavesAndClosesTheDrawing)
{
    place.run("");
    edit();
    EXPECT_EQ(events, kFound + kOpen + kActivate + kType + kClose + kBack);
}

TEST_F(PropertiesProcedureTest, AHostThatWasStartedForItKeepsAnEmptyDrawing)
{
    installHost("");
    edit();
    EXPECT_EQ(events, (kStart + Events{"App.Version", kAttach} + kOpen + kVisible + kType +
                       Events{"ActiveDocument.Application", "Application.Documents", "Documents.Add()"} +
                       kClose + kBack));
}

TEST_F(PropertiesProcedureTest, InSingleDocumentModeTheDrawingStaysOpen)
{
    for (const char* value : {"1", "3"}) {
        events.clear();
        place.run(std::string("variable SDI ") + value);
        edit();
        EXPECT_EQ(events, kFound + kOpen + kActivate + kType + kBack) << value;
        place.end();
    }
    events.clear();
    installHost("variable SDI 1");
    edit();
    EXPECT_EQ(events, (kStart + Events{"App.Version", kAttach} + kOpen + kVisible + kType + kBack));
}

TEST_F(PropertiesProcedureTest, TwoCountsAsSeveralDocuments)
{
    place.run("variable SDI 2");
    edit();
    EXPECT_EQ(events, kFound + kOpen + kActivate + kType + kClose + kBack);
}

TEST_F(PropertiesProcedureTest, WithoutADrawingTheUserIsToldAndTheRereadRuns)
{
    place.run("");
    edit({});
    EXPECT_EQ(events, (Events{"information [No File Selected] Please Select a Drawing File"} + kBack));
}

TEST_F(PropertiesProcedureTest, NoReadsThePropertiesOnTheScreenAgain)
{
    edit();
    EXPECT_EQ(events, (Events{kNotRunning, std::string(kFirstQuestion) + " No"} + kBack));
}

TEST_F(PropertiesProcedureTest, WithNoneInstalledTheEditorComesBack)
{
    window.answers = {true};
    edit();
    ASSERT_GE(events.size(), 2u);
    EXPECT_EQ(events[events.size() - 2],
              "critical [] Could not launch AutoCAD! Please try loading AutoCAD first.");
    EXPECT_EQ(events.back(), "show");
}

TEST_F(PropertiesProcedureTest, NamesThatCannotBeTypedAreKeptFromTheHost)
{
    place.run("");
    edit("C:\\a\"b.dwg");
    EXPECT_EQ(events, (Events{"warning [Zelvora] The name of this drawing cannot be sent to AutoCAD: "
                              "C:\\a\"b.dwg"}));
}

TEST_F(PropertiesProcedureTest, ADrawingThatCannotBeOpenedIsNeitherTypedAtNorSavedNorClosed)
{
    place.run("fault Open#1 failed no such file");
    edit();
    Events opening = kOpen;
    opening.pop_back();
    EXPECT_EQ(events, kFound + opening + kBack);
}

TEST_F(PropertiesProcedureTest, AHostWithoutAnyDrawingOpensNone)
{
    place.run("fault ActiveDocument#1 failed");
    edit();
    EXPECT_EQ(events, (kFound + Events{"hide", "App.ActiveDocument"} + kBack));
}

TEST_F(PropertiesProcedureTest, AFailureAtAnyStepBringsTheEditorBackWithoutAWord)
{
    for (const char* fault :
         {"ActiveDocument#2", "Caption#1", "SendCommand#1", "SendCommand#2", "GetVariable#1", "Close#1"}) {
        for (const char* kind : {" failed", " cancelled", " die"}) {
            events.clear();
            place.run(std::string("fault ") + fault + kind);
            edit();
            ASSERT_GE(events.size(), 2u);
            EXPECT_EQ(Events(events.end() - 2, events.end()), kBack) << fault << kind;
            for (const std::string& event : events)
                EXPECT_FALSE(event.starts_with("critical") || event.starts_with("question")) << event;
            place.end();
        }
    }
}

TEST_F(PropertiesProcedureTest, AFailedSaveLeavesTheDrawingOpen)
{
    place.run("fault SendCommand#2 failed");
    edit();
    for (const std::string& event : events)
        EXPECT_FALSE(event.starts_with("ActiveDocument.Close")) << event;
}

} // namespace

} // namespace zv::test
