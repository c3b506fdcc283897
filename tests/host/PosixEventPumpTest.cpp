#include "host/QtEventPump.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace zv {
namespace {

TEST(QtEventPump, AnswerOfTheHostEndsTheWait)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
    QtEventPump().wait(ends[0], -1);
    char read = 0;
    EXPECT_EQ(::read(ends[0], &read, 1), 1);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace zv
