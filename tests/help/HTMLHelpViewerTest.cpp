#include "help/HTMLHelpViewer.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace zv {
namespace {

struct Call {
    std::string file;
    HelpCommand command;
    std::uint32_t contextId;
    bool operator==(const Call&) const = default;
};

struct Record {
    std::vector<Call> calls;
    std::vector<std::int32_t> closed;
    std::set<std::int32_t> windows;
    std::int32_t next = 0;
};

class RecordingSystem : public HelpSystem {
public:
    explicit RecordingSystem(Record& record) : m_record(record) {}
    std::int32_t show(const std::string& path, HelpCommand command, std::uint32_t contextId) override
    {
        m_record.calls.push_back({path, command, contextId});
        return m_record.next;
    }
    bool isWindow(std::int32_t handle) override { return m_record.windows.contains(handle); }
    void close(std::int32_t handle) override { m_record.closed.push_back(handle); }

private:
    Record& m_record;
};

class HTMLHelpViewerTest : public testing::Test {
protected:
    Record record;
    HTMLHelpViewer viewer{std::make_unique<RecordingSystem>(record)};
};

TEST_F(HTMLHelpViewerTest, HelpFileReadsWhatWasWritten)
{
    EXPECT_EQ(viewer.HelpFile(), "");
    viewer.setHelpFile("C:\\Z\\Zelvora.chm");
    EXPECT_EQ(viewer.HelpFile(), "C:\\Z\\Zelvora.chm");
}

TEST_F(HTMLHelpViewerTest, EachShowPassesTheFileAndItsOwnCommand)
{
    viewer.setHelpFile("a.chm");
    viewer.ShowContents();
    viewer.Show();
    viewer.ShowIndex();
    viewer.ShowSearch();
    viewer.ShowContext(-2);
    const std::vector<Call> expected{{"a.chm", HelpCommand(1), 0},
                                     {"a.chm", HelpCommand(0), 0},
                                     {"a.chm", HelpCommand(2), 0},
                                     {"a.chm", HelpCommand(3), 0},
                                     {"a.chm", HelpCommand(15), 0xfffffffe}};
    EXPECT_EQ(record.calls, expected);
}

TEST_F(HTMLHelpViewerTest, EachShowStoresTheWindowHandle)
{
    const std::vector<void (HTMLHelpViewer::*)()> shows{&HTMLHelpViewer::ShowContents, &HTMLHelpViewer::Show,
                                                        &HTMLHelpViewer::ShowIndex,
                                                        &HTMLHelpViewer::ShowSearch};
    for (const auto show : shows) {
        ++record.next;
        (viewer.*show)();
        EXPECT_EQ(viewer.windowHandle(), record.next);
    }
    record.next = 77;
    viewer.ShowContext(1);
    EXPECT_EQ(viewer.windowHandle(), 77);
    record.next = 0;
    viewer.ShowContents();
    EXPECT_EQ(viewer.windowHandle(), 0);
}

TEST_F(HTMLHelpViewerTest, UnloadClosesTheWindowOnlyWhileItIsOne)
{
    record.next = 5;
    viewer.ShowContents();
    viewer.Unload();
    EXPECT_TRUE(record.closed.empty());
    record.windows = {5};
    viewer.Unload();
    EXPECT_EQ(record.closed, std::vector<std::int32_t>{5});
}

TEST(HTMLHelpViewer, ClosesItsWindowWhenItIsDestroyed)
{
    Record record;
    {
        HTMLHelpViewer viewer(std::make_unique<RecordingSystem>(record));
        record.next = 9;
        record.windows = {9};
        viewer.Show();
    }
    EXPECT_EQ(record.closed, std::vector<std::int32_t>{9});
}

} // namespace
} // namespace zv
