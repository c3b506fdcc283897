#include "config/StartUp.h"

#include "config/FileNames.h"
#include "config/Keys.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"

#include <algorithm>
#include <limits>

namespace zv {

namespace {

constexpr const char* kProbeName = "$write.tmp";

std::int16_t value16(int value)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

bool isFlag(int value)
{
    return value == 0 || value == 1;
}

void readFlag(const Profiles& profiles, const NumberKey& key, std::int16_t& value)
{
    if (const int stored = profiles.number(key); isFlag(stored))
        value = value16(stored);
}

void writeFirstRun(const Profiles& profiles)
{
    profiles.clear(ProfileFile::User, keys::zelvora::LastLoad.section);
    profiles.clear(ProfileFile::User, keys::zelvora::insertmode.section);
    profiles.write(keys::zelvora::LastLoad, "");
    profiles.write(keys::zelvora::del, "1");
    profiles.write(keys::zelvora::writeProjectPath, "");
    profiles.write(keys::zelvora::writeFirstInsertmode, "1");
    profiles.write(keys::zelvora::AOT, "1");
}

} // namespace

std::string findMasterFolder(const std::string& installationFolder)
{
    const Profiles profiles(installationFolder, installationFolder, {});
    // Where nobody can tell what is stored, nothing is stored over it.
    const Result<std::string> stored = profiles.stored(keys::zelvora::ZVRpath);
    if (!stored)
        return installationFolder;
    if (!stored->empty())
        return *stored;
    profiles.clear(ProfileFile::Installation, keys::zelvora::ZVRpath.section);
    profiles.write(keys::zelvora::ZVRpath, installationFolder);
    return installationFolder;
}

bool probeWriteAccess(const std::string& installationFolder, const std::string& masterFolder)
{
    if (!writeNewFile(joinPath(masterFolder, kProbeName), {}))
        return false;
    const std::string probe = joinPath(installationFolder, kProbeName);
    return !fileExists(probe) || deleteFileForced(probe).ok();
}

int readMasterKeys(const Profiles& profiles, PublicValues& values)
{
    values.XbCheck = value16(profiles.number(keys::zelvora::xbcheck));
    values.Fds = value16(profiles.number(keys::zelvora::fds));
    readFlag(profiles, keys::zelvora::forcecopy, values.ForceCopy);
    readFlag(profiles, keys::zelvora::acad2002, values.Acad2002);
    const int cartOnly = profiles.number(keys::zelvora::CartOnly);
    if (isFlag(cartOnly))
        values.CartOnly = value16(cartOnly);
    const std::string logPath = profiles.text(keys::zelvora::LogPath);
    if (profiles.number(keys::zelvora::WriteLog) == 1) {
        values.LogEnabled = true;
        if (!logPath.empty())
            values.LogPath = logPath;
    }
    return cartOnly;
}

std::string loginName()
{
    const std::string name = systemLoginName();
    return name.empty() ? "User" : name;
}

void formUserPaths(PublicValues& values)
{
    values.MyLibPath = joinPath(values.UserFolder, values.LoginName + kListEnding);
    values.UserProfilePath = joinPath(values.UserFolder, values.LoginName + kProfileEnding);
}

void createUserFiles(const std::string& installationFolder, const PublicValues& values)
{
    // Another program of the same user may make them at this moment.
    if (!fileExists(values.MyLibPath))
        static_cast<void>(createFile(values.MyLibPath, {}).ok());
    const Profiles profiles(installationFolder, values);
    const Result<void> made = createProfile(values.UserProfilePath);
    if (made)
        return writeFirstRun(profiles);
    const NumberKey& aot = keys::zelvora::AOT;
    if (made.error().code == ErrorCode::Busy && profiles.storedNumber(aot).valueOr(0) == keys::kAbsent)
        profiles.write(aot, "1");
}

std::string fontFolder(const std::string& installationFolder, const Profiles& profiles)
{
    const std::string stored = profiles.text(keys::zelvora::Fontpath);
    return stored.empty() ? joinPath(installationFolder, "fonts") : stored;
}

void repairLibraryCount(const std::string& profileFile)
{
    const NumberKey& count = keys::zelvora::libnum;
    if (readProfileInt(profileFile, count.section, count.key, count.fallback).valueOr(0) < 0)
        writeProfileString(profileFile, count.section, count.key, "0");
}

} // namespace zv
