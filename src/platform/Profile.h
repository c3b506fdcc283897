#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zv {

/// The profile-file calls under their platform names. Names of sections, keys and profile files meet without
/// regard to case. A value is read and written as lines of lists are (see FileText.h); a null pointer
/// stands for what the system's calls take one for (all sections, all keys, delete the
/// key, delete the section). A file is read afresh in each call, and a write that fails leaves it as it was.
/// While another program holds the file a write fails at once, without waiting.

/// Copies the value, or the default without its trailing blanks, into a buffer of `size` bytes, cut to fit
/// and ended by a NUL. Returns the count of characters without that NUL.
unsigned long GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                                       char* buffer, unsigned long size, const char* file);
/// The leading digits of the value, with a sign before them; 0 when there are none. The default stands for a
/// key that is absent or has no value.
unsigned GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* file);
/// Sets one value. Nonzero on success.
int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file);
/// Replaces all lines of a section. `text` holds lines "key=value", each ended by a NUL, and one more NUL at
/// the end; lines of blanks are passed over, so that "" and " " clear the section. Nonzero on success.
int WritePrivateProfileSectionA(const char* section, const char* text, const char* file);

/// More than any office has settings for. A larger file is none of ours, and is neither read nor written.
inline constexpr std::uint64_t kMostProfileBytes = std::uint64_t{16} << 20;

/// The size of the program's buffer for one value; the value is cut to one less.
inline constexpr unsigned long kProfileBuffer = 256;

/// A string read with the program's buffer. What cannot be read counts as absent. What this program has
/// written is read as written, also while another program holds the file back (see ProfileWrites).
std::string profileString(const std::string& file, const std::string& section, const std::string& key,
                          const std::string& fallback);
int profileInt(const std::string& file, const std::string& section, const std::string& key, int fallback);

/// The same for those who would write over what is absent. Errors: Denied, Failed: the file is there, and
/// what it holds is not known.
Result<std::string> readProfileString(const std::string& file, const std::string& section,
                                      const std::string& key, const std::string& fallback);
Result<int> readProfileInt(const std::string& file, const std::string& section, const std::string& key,
                           int fallback);
/// Many keys of a section at once, with "" as default. One look at the file serves all of them. Errors:
/// Denied, Failed.
Result<std::vector<std::string>> readProfileStrings(const std::string& file, const std::string& section,
                                                    const std::vector<std::string>& keys);

/// Writes at once or, while another program holds the file, a little later. False when it failed.
bool writeProfileString(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value);
/// Replaces all lines of a section, in the same way. A list of blanks clears it.
bool writeProfileSection(const std::string& file, const std::string& section,
                         const std::vector<std::string>& lines);

/// Whether the file that a profile's name means is there, perhaps in another case. One that cannot be asked
/// for counts as there.
bool profileExists(const std::string& file);
/// Makes an empty file of a profile's name. Errors: Busy, there is one already, perhaps in another case;
/// Denied, Failed.
Result<void> createProfile(const std::string& file);

} // namespace zv
