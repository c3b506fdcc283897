#include "platform/Console.h"

#include <algorithm>
#include <cstdio>

namespace zv {

std::vector<std::string> programArguments(int count, char** values)
{
    return std::vector<std::string>(values + std::min(count, 1), values + count);
}

void print(std::string_view text, Output to)
{
    std::fwrite(text.data(), 1, text.size(), to == Output::Errors ? stderr : stdout);
}

} // namespace zv
