#pragma once

#include <string>
#include <string_view>
#include <vector>

// What a program without windows shares with whoever has started it.
namespace zv {

/// The words behind the program's name, in the program's own text.
std::vector<std::string> programArguments(int count, char** values);

enum class Output { Normal, Errors };
/// Writes a text, at once where it is for errors. A console shows it in any script; a file or another program
/// gets its bytes.
void print(std::string_view text, Output to = Output::Normal);

} // namespace zv
