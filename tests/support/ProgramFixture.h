#pragma once

#include "app/RunningProgram.h"
#include "support/AnsweredMessages.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv {

/// A program without windows, installed in a temporary folder that is its user's as well.
class ProgramFixture : public testing::Test {
protected:
    TemporaryFolder folder;
    AnsweredMessages messages;
    RunningProgram program{Folders{folder.path(), folder.path()}, messages};
};

} // namespace zv
