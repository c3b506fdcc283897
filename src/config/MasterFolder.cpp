#include "config/MasterFolder.h"

#include "config/Keys.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Profile.h"
#include "platform/Text.h"

#include <algorithm>

namespace zv {

namespace {

/// Copies a profile, but over none that another program has made there meanwhile. False when it failed.
bool copyProfile(const std::string& from, const std::string& to)
{
    const Result<std::string> bytes = readFile(from, kMostProfileBytes);
    if (!bytes)
        return bytes.error().code == ErrorCode::NotFound;
    const Result<void> made = createFile(to, *bytes);
    return made || made.error().code == ErrorCode::Busy;
}

/// Copies the profile of the installation folder if it has one. False when there may be one that was not
/// copied.
bool seedProfile(const std::string& installationFolder, const std::string& folder)
{
    const auto profiles = filesIn(installationFolder, kProfileEnding);
    if (!profiles)
        return false;
    for (const std::string& name : *profiles) {
        if (sameName(name, kProfileName))
            return copyProfile(joinPath(installationFolder, name), joinPath(folder, kProfileName));
    }
    return true;
}

// The names come from the old master folder, the files from the installation folder: a library of another
// master folder does not move.
bool seed(const std::string& installationFolder, const std::string& folder)
{
    const bool hasItsProfile = seedProfile(installationFolder, folder);
    for (const std::string& name : filesIn(currentFolder(), kListEnding).valueOr({}))
        static_cast<void>(copyIntoPlace(joinPath(installationFolder, name), joinPath(folder, name)).ok());
    return hasItsProfile;
}

/// Not known of a folder that cannot be listed.
bool lacksProfile(const std::string& folder)
{
    const auto names = filesIn(folder, kProfileEnding);
    return names && std::none_of(names->begin(), names->end(),
                                 [](const std::string& name) { return sameName(name, kProfileName); });
}

} // namespace

void moveMasterFolder(const std::string& installationFolder, const std::string& folder, PublicValues& values)
{
    const bool hasItsProfile = !lacksProfile(folder) || seed(installationFolder, folder);
    values.MasterPath = folder;
    const Profiles profiles(installationFolder, values);
    // A new profile that holds nothing but this would pass for the office's from then on.
    if (hasItsProfile)
        profiles.write(keys::zvypath::writeMasterZVRpath, folder);
    profiles.write(keys::zvypath::writeInstallationZVRpath, folder);
}

} // namespace zv
