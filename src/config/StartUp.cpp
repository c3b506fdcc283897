#include "config/StartUp.h"

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

bool createEmpty(const std::string& path)
{
    return writeFile(path, {}).ok();
}

void writeFirstRun(const Profiles& profiles)
{
    profiles.clear(ProfileFile::User, keys::zelvora::LastLoad.section);
    profiles.clear(ProfileFile::User, keys::zelvora::insertmode.section);
    profiles.write(keys::zelvora::LastLoad, "");
    profiles.write(keys::zelvora::del, "1");
    profiles.write(keys::zelvora::writeProjectPath, "");
    profiles.write({ProfileFile::User, "Settings", "Insertmode"}, "1");
    profiles.write(keys::zelvora::AOT, "1");
}

} // namespace

std::string findMasterFolder(const std::string& installationFolder)
{
    const Profiles profiles(installationFolder, installationFolder, {});
    const std::string stored = profiles.text(keys::zelvora::ZVRpath);
    if (!stored.empty())
        return stored;
    profiles.clear(ProfileFile::Installation, keys::zelvora::ZVRpath.section);
    profiles.write(keys::zelvora::ZVRpath, installationFolder);
    return installationFolder;
}

bool probeWriteAccess(const std::string& installationFolder, const std::string& masterFolder)
{
    if (!createEmpty(joinPath(masterFolder, kProbeName)))
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
    values.MyLibPath = joinPath(values.UserFolder, values.LoginName + ".lst");
    values.UserProfilePath = joinPath(values.UserFolder, values.LoginName + ".ini");
}

void createUserFiles(const std::string& installationFolder, const PublicValues& values)
{
    if (!fileExists(values.MyLibPath))
        createEmpty(values.MyLibPath);
    const Profiles profiles(installationFolder, values);
    if (!profileExists(values.UserProfilePath)) {
        createEmpty(values.UserProfilePath);
        writeFirstRun(profiles);
    } else if (profiles.number(keys::zelvora::AOT) == keys::kAbsent) {
        profiles.write(keys::zelvora::AOT, "1");
    }
}

std::string fontFolder(const std::string& installationFolder, const Profiles& profiles)
{
    const std::string stored = profiles.text(keys::zelvora::Fontpath);
    return stored.empty() ? joinPath(installationFolder, "fonts") : stored;
}

void repairLibraryCount(const std::string& profileFile)
{
    const NumberKey& count = keys::zelvora::libnum;
    if (profileInt(profileFile, count.section, count.key, count.fallback) < 0)
        writeProfileString(profileFile, count.section, count.key, "0");
}

} // namespace zv
