#pragma once

#include "config/FileNames.h"
#include "config/PublicValues.h"
#include "platform/Result.h"

#include <string>

namespace zv {

/// The profile files, and none at all: a key that is asked for with an empty file name always gives its
/// default.
enum class ProfileFile { Installation, Master, User, None };

/// One key at one place that reads or writes it: the file that this place uses, and the names as it spells
/// them.
struct ProfileKey {
    ProfileFile file;
    const char* section;
    const char* key;
};

struct TextKey : ProfileKey {
    const char* fallback;
};

struct NumberKey : ProfileKey {
    int fallback;
};

/// Where the three profile files lie now. A missing file gives defaults; a write that fails changes nothing
/// and is not noticed.
class Profiles {
public:
    /// Folders end in no separator. `userProfile` is empty until the user is known.
    Profiles(const std::string& installationFolder, const std::string& masterFolder, std::string userProfile);
    Profiles(const std::string& installationFolder, const PublicValues& values);

    /// The path of a file; empty for None.
    const std::string& path(ProfileFile file) const;
    /// At most 255 bytes.
    std::string text(const TextKey& key) const;
    int number(const NumberKey& key) const;
    /// The same for a place that writes where nothing is stored. Errors: Denied, Failed: the file is there,
    /// and what it holds is not known.
    Result<std::string> stored(const TextKey& key) const;
    Result<int> storedNumber(const NumberKey& key) const;
    void write(const ProfileKey& key, const std::string& value) const;
    /// Writes "1" or "0".
    void writeFlag(const ProfileKey& key, bool value) const;
    /// Deletes all keys of the section.
    void clear(ProfileFile file, const std::string& section) const;

private:
    std::string m_installation;
    std::string m_master;
    std::string m_user;
    std::string m_none;
};

} // namespace zv
