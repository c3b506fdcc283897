#include "platform/windows/ComThread.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace zv {
namespace {

TEST(ComThread, AFailureOfTheLanguageReachesTheOneWhoWaitsWithItsWords)
{
    ComThread thread;
    auto failing = thread.start([]() -> int { throw std::runtime_error("out of everything"); });
    try {
        failing.get();
        FAIL() << "nothing has come";
    } catch (const std::runtime_error& failure) {
        EXPECT_EQ(std::string(failure.what()), "out of everything");
    }
    EXPECT_EQ(thread.start([] { return 7; }).get(), 7) << "the thread goes on";
}

TEST(ComThread, WhatNobodyWaitsForEndsNothing)
{
    ComThread thread;
    thread.post([] { throw std::runtime_error("out of everything"); });
    EXPECT_EQ(thread.start([] { return 7; }).get(), 7);
}

} // namespace
} // namespace zv
