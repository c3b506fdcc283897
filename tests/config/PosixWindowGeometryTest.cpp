#include "config/WindowGeometry.h"

#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

class WindowGeometryTest : public testing::Test {
protected:
    TemporaryFolder folder;
    Environment config{"XDG_CONFIG_HOME", folder.path()};
};

TEST_F(WindowGeometryTest, WhatIsNotRememberedIsTheDefault)
{
    const WindowGeometry geometry = readWindowGeometry();
    EXPECT_EQ(geometry.left, 1000);
    EXPECT_EQ(geometry.top, 1000);
    EXPECT_EQ(geometry.width, 6500);
    EXPECT_EQ(geometry.height, 6500);
}

TEST_F(WindowGeometryTest, WhatIsSavedComesBack)
{
    saveWindowGeometry({-15, 30, 10695, 9090.5});
    const WindowGeometry geometry = readWindowGeometry();
    EXPECT_EQ(geometry.left, -15);
    EXPECT_EQ(geometry.top, 30);
    EXPECT_EQ(geometry.width, 10695);
    EXPECT_EQ(geometry.height, 9090.5);
    EXPECT_EQ(folder.read("zelvora/Zelvora.ini"),
              "[Settings]\r\nMainLeft=-15\r\nMainTop=30\r\nMainWidth=10695\r\nMainHeight=9090.5\r\n");
}

TEST_F(WindowGeometryTest, ATextThatIsNoNumberIsTheDefault)
{
    std::filesystem::create_directory(folder.file("zelvora"));
    folder.write("zelvora/Zelvora.ini", "[Settings]\r\nMainLeft=x\r\nMainTop=7\r\n");
    EXPECT_EQ(readWindowGeometry().left, 1000);
    EXPECT_EQ(readWindowGeometry().top, 7);
}

} // namespace
} // namespace zv
