#include "platform/Trial.h"

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace zv {
namespace {

constexpr unsigned kPatience = 20;

TEST(PosixTrial, TheAnswerOfTheTaskComesBack)
{
    EXPECT_TRUE(endsWell([] { return true; }, kPatience));
    EXPECT_FALSE(endsWell([] { return false; }, kPatience));
}

TEST(PosixTrial, ACrashIsNoGoodEnd)
{
    EXPECT_FALSE(endsWell([] { return std::raise(SIGFPE) != 0; }, kPatience));
}

TEST(PosixTrial, ATaskThatComesToNoEndIsNoGoodEnd)
{
    EXPECT_FALSE(endsWell([] { return ::pause() == 0; }, 1));
}

} // namespace
} // namespace zv
