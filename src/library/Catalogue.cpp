#include "library/Catalogue.h"

#include "config/Keys.h"
#include "library/ListFile.h"
#include "platform/Files.h"
#include "platform/Profile.h"

#include <algorithm>

namespace zv {

namespace {

constexpr const char* kScratchName = "$liblist.tmp";
constexpr const NumberKey& kCount = keys::newlib::libnum;

std::string nameKey(std::size_t number)
{
    return "lib" + std::to_string(number);
}

} // namespace

Result<int> libraryCount(const std::string& profileFile)
{
    return readProfileInt(profileFile, kCount.section, kCount.key, kCount.fallback);
}

Result<std::vector<std::string>> tryCatalogue(const std::string& profileFile)
{
    const Result<int> stored = libraryCount(profileFile);
    if (!stored)
        return stored.error();
    const int most = static_cast<int>(kMostListLines);
    const auto count = static_cast<std::size_t>(std::clamp(*stored, 0, most));
    if (count == 0)
        return std::vector<std::string>();
    std::vector<std::string> names;
    names.reserve(count);
    for (std::size_t i = 1; i <= count; ++i)
        names.push_back(nameKey(i));
    return readProfileStrings(profileFile, kCount.section, names);
}

std::vector<std::string> readCatalogue(const std::string& profileFile)
{
    return tryCatalogue(profileFile).valueOr({});
}

std::string libraryName(const std::string& profileFile, int number)
{
    return profileString(profileFile, kCount.section, nameKey(static_cast<std::size_t>(number)), {});
}

Result<void> writeCatalogue(const std::string& masterFolder, const std::vector<std::string>& names, int count)
{
    std::string scratch;
    std::vector<std::string> lines{std::string(kCount.key) + "=" + std::to_string(count)};
    for (const std::string& name : names) {
        scratch += name + "\r\n";
        lines.push_back(nameKey(lines.size()) + "=" + name);
    }
    if (Result<void> written = writeNewFile(joinPath(masterFolder, kScratchName), scratch); !written)
        return written;
    writeProfileSection(joinPath(masterFolder, kProfileName), kCount.section, lines);
    return {};
}

Result<void> removeCatalogueScratch(const std::string& masterFolder)
{
    const Result<void> deleted = deleteFileForced(joinPath(masterFolder, kScratchName));
    return !deleted && deleted.error().code == ErrorCode::NotFound ? Result<void>() : deleted;
}

void markCatalogueChanged(const std::string& masterFolder)
{
    const Profiles profiles(masterFolder, masterFolder, {});
    profiles.write(keys::newlib::LastLoad, " ");
    profiles.write(keys::newlib::writeDel, "1");
}

} // namespace zv
