#pragma once

#include "platform/ProfileText.h"
#include "platform/Result.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Profile files as each system has them, with the reasons that the public calls do not give.
namespace zv {

/// One change of a profile file: the value of a key, or without a key all lines of the section.
struct ProfileChange {
    std::string file;
    std::string section;
    std::optional<std::string> key;
    std::string value;
    std::vector<std::string> lines;
};

/// Makes the change in a profile's text.
void changeText(ProfileText& text, const ProfileChange& change);
/// Carries a change out, at once or not at all. Errors: Busy, another program holds the file; Denied, Failed.
Result<void> changeProfile(const ProfileChange& change);

/// The values of a section's keys, nothing for one that is absent, each cut to the program's buffer. One look
/// at the file serves all of them. An absent file has no keys. Errors: Denied, Failed: the file is there, and
/// what it holds is not known.
Result<std::vector<std::optional<std::string>>>
readProfile(const std::string& file, const std::string& section, const std::vector<std::string>& keys);

/// What the program's buffer takes of a value: 255 bytes, on Windows 255 characters of UTF-16.
std::string cutToBuffer(std::string value);

/// The bytes of a profile; an absent one is an empty one. Errors: Denied, Failed: what it holds is not known.
Result<std::string> loadProfile(const std::string& file);
using ProfileEdit = std::function<std::string(const std::string& bytes)>;
/// A profile that is read, changed and put back in one step; bytes that stay the same leave it untouched.
/// Errors: Busy, another program holds it; Denied, Failed: nothing is changed.
Result<void> rewriteProfile(const std::string& file, const ProfileEdit& edit);
/// Whether an editor has saved the file with two bytes for each character.
bool isWideProfile(std::string_view bytes);

/// The number that a value stands for, as GetPrivateProfileIntA reads it.
unsigned profileNumber(const std::string& value);

} // namespace zv
