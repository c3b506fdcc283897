#include "EditorFixture.h"

#include "drawing/Writer.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include "controls/PathList.h"

#include <functional>

namespace zv {
namespace {

/// A running host in this process: whatever is asked of it leads back to itself.
class OneObjectHost final : public AutomationObject, public std::enable_shared_from_this<OneObjectHost> {
public:
    Result<AutomationValue> get(std::string_view) override
    {
        return AutomationValue(AutomationObjectPtr(shared_from_this()));
    }
    Result<void> set(std::string_view, const AutomationValue&) override { return {}; }
    Result<AutomationValue> call(std::string_view name,
                                 const std::vector<AutomationValue>& arguments) override
    {
        if (name == "GetVariable")
            return AutomationValue(std::int64_t(0));
        const auto* text = arguments.empty() ? nullptr : std::get_if<std::string>(&arguments.front());
        called.push_back(std::string(name) + (text ? " " + *text : std::string()));
        onCall(called.back());
        return AutomationValue();
    }
    Result<std::vector<AutomationValue>> items() override { return std::vector<AutomationValue>(); }

    std::vector<std::string> called;
    std::function<void(const std::string&)> onCall = [](const std::string&) {};
};

class RunningHost final : public Automation {
public:
    explicit RunningHost(AutomationObjectPtr host) : m_host(std::move(host)) {}
    Result<AutomationObjectPtr> attach(const std::string&) override { return m_host; }
    Result<AutomationObjectPtr> create(const std::string&) override { return m_host; }

private:
    AutomationObjectPtr m_host;
};

class EditorPropertiesTest : public EditorFixture {
protected:
    void describe(const std::string& drawing, const std::u16string& comments)
    {
        dwg::Properties properties;
        properties.comments = comments;
        properties.keywords = u"new words";
        const auto bytes = dwg::writeDocument({}, {properties, {}});
        ASSERT_TRUE(bytes);
        ASSERT_TRUE(writeFile(drawing, std::string(bytes->begin(), bytes->end())));
    }
    void runHost() { program->setActionServices(services); }
    void openDoors(int count)
    {
        makeLibrary("Doors", drawings(count));
        open({"Doors"});
        ASSERT_TRUE(chooseIn("Combo2", "Doors"));
    }

    std::shared_ptr<OneObjectHost> host = std::make_shared<OneObjectHost>();
    RunningHost automation{host};
    ActionServices services{{automation, *outside->splash, [](const std::string&) { return true; }}, {}, {}};
};

TEST_F(EditorPropertiesTest, AClickInEitherListShowsCommentsAndKeywords)
{
    openDoors(1);
    const std::string drawing = drawings(1)[0];
    describe(drawing, u"A door");
    for (const bool inFolder : {true, false}) {
        ASSERT_TRUE(inFolder ? pick({"D1.dwg"}) : select(0));
        EXPECT_EQ(shown("Text3"), QString::fromStdString("Drawing Name: " + drawing + "\n\nA door"));
        EXPECT_EQ(shown("Text4"), "new words");
    }
}

TEST_F(EditorPropertiesTest, AChangeMadeInTheHostIsReadAgain)
{
    runHost();
    openDoors(2);
    ASSERT_TRUE(select(1));
    const std::string drawing = drawings(2)[1];
    bool hidden = false;
    host->onCall = [&](const std::string& call) {
        hidden = hidden || !editor().isVisible();
        if (call == "SendCommand .qsave\r")
            describe(drawing, u"Changed");
    };
    ASSERT_TRUE(press("Command12"));
    EXPECT_EQ(host->called, (std::vector<std::string>{"Open " + drawing, "SendCommand .DWGPROPS\r",
                                                      "SendCommand .qsave\r", "Close"}));
    EXPECT_TRUE(hidden);
    EXPECT_TRUE(editor().isVisible());
    EXPECT_EQ(shown("Text3"), QString::fromStdString("Drawing Name: " + drawing + "\n\nChanged"));
    EXPECT_EQ(shown("Text4"), "new words");
}

TEST_F(EditorPropertiesTest, WithoutARowTheMessageComesAndTheTextsAreEmptied)
{
    runHost();
    openDoors(1);
    ASSERT_TRUE(select(0));
    ASSERT_TRUE(press("Command2"));
    ASSERT_EQ(listed(), QStringList());
    ASSERT_TRUE(press("Command12"));
    EXPECT_EQ(lastBox(), "No File Selected [64] Please Select a Drawing File");
    EXPECT_EQ(shown("Text3"), "");
    EXPECT_EQ(shown("Text4"), "");
    EXPECT_TRUE(host->called.empty());
    EXPECT_TRUE(editor().isVisible());
}

TEST_F(EditorPropertiesTest, NoHostAndNoLeavesThePropertiesOnTheScreen)
{
    openDoors(1);
    ASSERT_TRUE(select(0));
    const QString before = shown("Text3");
    ASSERT_TRUE(press("Command12"));
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(shown("Text3"), before);
    EXPECT_TRUE(editor().isVisible());
}

TEST_F(EditorPropertiesTest, AHostThatCannotBeStartedIsToldAndTheEditorComesBack)
{
    openDoors(1);
    ASSERT_TRUE(select(0));
    messages.yes = true;
    ASSERT_TRUE(press("Command12"));
    EXPECT_EQ(lastMessage(), "Could not launch AutoCAD! Please try loading AutoCAD first.");
    EXPECT_TRUE(editor().isVisible());
}

TEST_F(EditorPropertiesTest, TheEditorComesBackOnTopWhereTheUserWantsItThere)
{
    runHost();
    openDoors(1);
    ASSERT_TRUE(select(0));
    program->values().AlwaysOnTop = 1;
    ASSERT_TRUE(press("Command12"));
    EXPECT_TRUE(editor().isTopmost());
}

} // namespace
} // namespace zv
