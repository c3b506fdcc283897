#include "config/MasterFolder.h"

#include "config/Keys.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Profile.h"
#include "platform/Text.h"

#include <algorithm>

namespace zv {

namespace {

void copyInto(const std::string& folder, const std::string& fromFolder, const std::string& name,
              const std::string& newName)
{
    static_cast<void>(copyFile(joinPath(fromFolder, name), joinPath(folder, newName)).ok());
}

// The names come from the old master folder, the files from the installation folder: a library of another
// master folder does not move.
void seed(const std::string& installationFolder, const std::string& folder)
{
    for (const std::string& name : filesIn(installationFolder, ".ini").valueOr({})) {
        if (sameName(name, kProfileName))
            copyInto(folder, installationFolder, name, kProfileName);
    }
    for (const std::string& name : filesIn(currentFolder(), ".lst").valueOr({}))
        copyInto(folder, installationFolder, name, name);
}

/// Not known of a folder that cannot be listed.
bool lacksProfile(const std::string& folder)
{
    const auto names = filesIn(folder, ".ini");
    return names && std::none_of(names->begin(), names->end(),
                                 [](const std::string& name) { return sameName(name, kProfileName); });
}

} // namespace

void moveMasterFolder(const std::string& installationFolder, const std::string& folder, PublicValues& values)
{
    if (lacksProfile(folder))
        seed(installationFolder, folder);
    values.MasterPath = folder;
    const Profiles profiles(installationFolder, values);
    profiles.write(keys::zvypath::writeMasterZVRpath, folder);
    profiles.write(keys::zvypath::writeInstallationZVRpath, folder);
}

} // namespace zv
