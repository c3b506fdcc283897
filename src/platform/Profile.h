#pragma once

#include <string>

namespace zv {

/// The profile-file calls under their platform names; on Windows they are the system's own. Names of
/// sections, keys and profile files meet without regard to case. Texts are bytes in the system's 8-bit code
/// page; a null pointer stands for what the system's calls take one for (all sections, all keys, delete the
/// key, delete the section).

/// Copies the value, or the default without its trailing blanks, into a buffer of `size` bytes, cut to fit
/// and ended by a NUL. Returns the count of characters without that NUL.
unsigned long GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                                       char* buffer, unsigned long size, const char* file);
unsigned GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* file);
int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file);
int WritePrivateProfileSectionA(const char* section, const char* text, const char* file);

/// A string read with the program's buffer of 256 characters.
std::string profileString(const std::string& file, const std::string& section, const std::string& key,
                          const std::string& fallback);
int profileInt(const std::string& file, const std::string& section, const std::string& key, int fallback);

} // namespace zv
