#include "config/Profiles.h"

#include "platform/Files.h"
#include "platform/Profile.h"

#include <utility>

namespace zv {

Profiles::Profiles(const std::string& installationFolder, const std::string& masterFolder,
                   std::string userProfile)
    : m_installation(joinPath(installationFolder, kProfileName)),
      m_master(joinPath(masterFolder, kProfileName)), m_user(std::move(userProfile))
{
}

Profiles::Profiles(const std::string& installationFolder, const PublicValues& values)
    : Profiles(installationFolder, values.MasterPath, values.UserProfilePath)
{
}

const std::string& Profiles::path(ProfileFile file) const
{
    switch (file) {
    case ProfileFile::Installation:
        return m_installation;
    case ProfileFile::Master:
        return m_master;
    case ProfileFile::User:
        return m_user;
    case ProfileFile::None:
        break;
    }
    return m_none;
}

std::string Profiles::text(const TextKey& key) const
{
    return profileString(path(key.file), key.section, key.key, key.fallback);
}

int Profiles::number(const NumberKey& key) const
{
    return profileInt(path(key.file), key.section, key.key, key.fallback);
}

Result<std::string> Profiles::stored(const TextKey& key) const
{
    return readProfileString(path(key.file), key.section, key.key, key.fallback);
}

Result<int> Profiles::storedNumber(const NumberKey& key) const
{
    return readProfileInt(path(key.file), key.section, key.key, key.fallback);
}

// Nobody looks at the outcome of a write: a folder that cannot be written keeps its old settings.
void Profiles::write(const ProfileKey& key, const std::string& value) const
{
    writeProfileString(path(key.file), key.section, key.key, value);
}

void Profiles::writeFlag(const ProfileKey& key, bool value) const
{
    write(key, value ? "1" : "0");
}

void Profiles::clear(ProfileFile file, const std::string& section) const
{
    writeProfileSection(path(file), section, {" "});
}

} // namespace zv
