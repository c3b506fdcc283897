#include "faults/Operations.h"

#include <gtest/gtest.h>

#include <ostream>

namespace zv {

static void PrintTo(const FileOperation& operation, std::ostream* out)
{
    *out << operation.name;
}

namespace {

class FileFaultsTest : public testing::TestWithParam<FileOperation> {};

TEST_P(FileFaultsTest, CutOffAnywhereItLeavesAWholeFileOldOrNew)
{
    const FaultReport report = tryEveryFault(GetParam());
    for (const std::string& broken : report.broken)
        ADD_FAILURE() << broken;
    EXPECT_GT(report.steps, 0);
}

std::string nameOf(const testing::TestParamInfo<FileOperation>& info)
{
    std::string name = info.param.name;
    for (char& c : name)
        c = c == ' ' ? '_' : c;
    return name;
}

INSTANTIATE_TEST_SUITE_P(EveryOperation, FileFaultsTest, testing::ValuesIn(fileOperations()), nameOf);

} // namespace
} // namespace zv
