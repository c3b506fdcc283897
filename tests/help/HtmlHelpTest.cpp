#include "help/HTMLHelpViewer.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

TEST(HtmlHelp, AMissingFileGivesNoWindow)
{
    HTMLHelpViewer viewer(makeHelpSystem());
    viewer.setHelpFile("C:\\no such folder\\Zelvora.chm");
    viewer.ShowContents();
    EXPECT_EQ(viewer.windowHandle(), 0);
    viewer.Unload();
}

TEST(HtmlHelp, NoHandleIsNoWindow)
{
    const std::unique_ptr<HelpSystem> system = makeHelpSystem();
    EXPECT_FALSE(system->isWindow(0));
    EXPECT_FALSE(system->isWindow(0x7fffffff));
}

} // namespace
} // namespace zv
