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

/// Over no profile that another program has made there meanwhile.
void copyProfile(const std::string& from, const std::string& to)
{
    if (const Result<std::string> bytes = readFile(from))
        static_cast<void>(createFile(to, *bytes).ok());
}

// The profile comes last: a folder that has one is taken as it is, so that until then a move that was cut
// off is begun anew. The names come from the old master folder, the files from the installation folder: a
// library of another master folder does not move.
void seed(const std::string& installationFolder, const std::string& folder)
{
    for (const std::string& name : filesIn(currentFolder(), ".lst").valueOr({}))
        static_cast<void>(copyIntoPlace(joinPath(installationFolder, name), joinPath(folder, name)).ok());
    for (const std::string& name : filesIn(installationFolder, ".ini").valueOr({})) {
        if (sameName(name, kProfileName))
            copyProfile(joinPath(installationFolder, name), joinPath(folder, kProfileName));
    }
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
