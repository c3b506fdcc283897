#include "faults/Operations.h"

#include "config/MasterFolder.h"
#include "config/StartUp.h"
#include "library/Catalogue.h"
#include "library/ListFile.h"
#include "log/ActivityLog.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "queue/QueueFile.h"

#include <algorithm>
#include <filesystem>

namespace zv {

namespace {

using Folder = TemporaryFolder;

constexpr const char* kList = "a.lst";
constexpr const char* kProfile = "Zelvora.ini";
constexpr const char* kQueue = "Ann.crt";
constexpr const char* kLog = "Zelvora_Log.csv";
constexpr const char* kThreeLines = "/d/a.dwg;A\r\n/d/b.dwg;B\r\n/d/c.dwg;C\r\n";
constexpr const char* kCatalogue = "[Path]\r\nZVRpath=M\r\n[Library]\r\nlibnum=2\r\nlib1=A\r\nlib2=B\r\n";

auto nothing()
{
    return [](const Folder&) {};
}
auto holds(const char* file, const std::string& bytes)
{
    return [=](const Folder& folder) { folder.write(file, bytes); };
}
/// The bytes of a file, or that it is not there.
auto bytesOf(const char* file)
{
    return [=](const Folder& folder) {
        return std::filesystem::exists(folder.file(file)) ? folder.read(file) : std::string("(no file)");
    };
}

/// The drawings of the queue: none of an empty or missing file.
std::string queued(const Folder& folder)
{
    std::string all;
    for (const std::string& drawing : readQueue(folder.file(kQueue)).valueOr({}))
        all += drawing + "\n";
    return all;
}

void addListOperations(std::vector<FileOperation>& all)
{
    all.push_back({"list made", nothing(),
                   [](const Folder& folder) {
                       return createList(folder.file(kList), {{"/d/a.dwg", "A"}, {"/d/b.dwg", "B"}}).ok();
                   },
                   bytesOf(kList)});
    all.push_back({"list made in place of another", holds(kList, kThreeLines),
                   [](const Folder& folder) {
                       return createList(folder.file(kList), {{"/d/z.dwg", "Z"}}).ok();
                   },
                   bytesOf(kList)});
    all.push_back({"empty list made", nothing(),
                   [](const Folder& folder) { return createFile(folder.file(kList), {}).ok(); },
                   bytesOf(kList)});
    all.push_back({"list emptied", holds(kList, kThreeLines),
                   [](const Folder& folder) { return createList(folder.file(kList), {}).ok(); },
                   bytesOf(kList)});
    const auto add = [](const Folder& folder) {
        return appendToList(folder.file(kList), {{"/d/y.dwg", "Y"}, {"/d/z.dwg", "Z"}}).ok();
    };
    all.push_back({"drawings added to a list", holds(kList, kThreeLines), add, bytesOf(kList)});
    all.push_back({"drawings added behind an open line", holds(kList, "/d/a.dwg;A"), add, bytesOf(kList)});
    all.push_back({"line removed", holds(kList, kThreeLines),
                   [](const Folder& folder) { return removeListLine(folder.file(kList), 2).ok(); },
                   [](const Folder& folder) {
                       // A second removal takes the next line.
                       return folder.read(kList).find("/d/b.dwg") == std::string::npos ? folder.read(kList)
                                                                                       : kThreeLines;
                   }});
    all.push_back(
        {"line moved", holds(kList, kThreeLines),
         [](const Folder& folder) { return moveListLine(folder.file(kList), 3, 1, "/d/c.dwg").ok(); },
         bytesOf(kList)});
    all.push_back(
        {"list renamed", holds(kList, kThreeLines),
         [](const Folder& folder) { return renameFile(folder.file(kList), folder.file("b.lst")).ok(); },
         [](const Folder& folder) { return bytesOf(kList)(folder) + bytesOf("b.lst")(folder); }});
    all.push_back({"list deleted", holds(kList, kThreeLines),
                   [](const Folder& folder) { return deleteFileForced(folder.file(kList)).ok(); },
                   bytesOf(kList)});
    all.push_back({"label changed", holds(kList, kThreeLines),
                   [](const Folder& folder) { return changeListLabel(folder.file(kList), 2, "New").ok(); },
                   bytesOf(kList)});
}

void addProfileOperations(std::vector<FileOperation>& all)
{
    const auto writeKey = [](const Folder& folder) {
        return writeProfileString(folder.file(kProfile), "Path", "ZVRpath", "N");
    };
    all.push_back({"key changed", holds(kProfile, kCatalogue), writeKey, bytesOf(kProfile)});
    all.push_back(
        {"key changed in a profile of another case", holds("ZELVORA.INI", kCatalogue), writeKey,
         [](const Folder& folder) { return bytesOf("ZELVORA.INI")(folder) + bytesOf(kProfile)(folder); }});
    all.push_back({"key written to a new profile", nothing(), writeKey, bytesOf(kProfile)});
    all.push_back(
        {"section cleared", holds(kProfile, kCatalogue),
         [](const Folder& folder) { return writeProfileSection(folder.file(kProfile), "Library", {" "}); },
         bytesOf(kProfile)});
    all.push_back({"profile made", nothing(),
                   [](const Folder& folder) { return createProfile(folder.file(kProfile)).ok(); },
                   bytesOf(kProfile)});
    all.push_back({"count of libraries repaired", holds(kProfile, "[Path]\r\nZVRpath=M\r\n"),
                   [](const Folder& folder) {
                       repairLibraryCount(folder.file(kProfile));
                       return true;
                   },
                   bytesOf(kProfile), false});
}

void addCatalogueOperations(std::vector<FileOperation>& all)
{
    all.push_back({"catalogue written", holds(kProfile, kCatalogue),
                   [](const Folder& folder) {
                       return writeCatalogue(folder.path(), {"A", "B", "C"}, 3).ok();
                   },
                   bytesOf(kProfile), false});
    all.push_back({"scratch of the catalogue removed", holds("$liblist.tmp", "A\r\n"),
                   [](const Folder& folder) { return removeCatalogueScratch(folder.path()).ok(); },
                   bytesOf("$liblist.tmp")});
}

void addFolderOperations(std::vector<FileOperation>& all)
{
    all.push_back({"change of the catalogue noted", holds(kProfile, kCatalogue),
                   [](const Folder& folder) {
                       markCatalogueChanged(folder.path());
                       return true;
                   },
                   [](const Folder& folder) {
                       const std::string bytes = folder.read(kProfile);
                       const bool noted = bytes.find("del=1") != std::string::npos;
                       return bytes.starts_with(kCatalogue) ? std::string(noted ? "noted" : "") : bytes;
                   },
                   false});
    all.push_back({"profile of a new master folder", holds(kProfile, kCatalogue),
                   [](const Folder& folder) {
                       std::filesystem::create_directory(folder.file("new"));
                       PublicValues values;
                       moveMasterFolder(folder.path(), folder.file("new"), values);
                       return true;
                   },
                   [](const Folder& folder) {
                       // Where the master folder lies is written behind this, key by key.
                       const std::string bytes = bytesOf("new/Zelvora.ini")(folder);
                       return bytes.substr(0, bytes.find('[')) +
                              bytes.substr(std::min(bytes.find("[L"), bytes.size()));
                   },
                   false});
    const auto copy = [](const Folder& folder) {
        return copyIntoPlace(folder.file("a.dwg"), folder.file("b.dwg")).ok();
    };
    all.push_back({"drawing copied", holds("a.dwg", "new drawing"), copy, bytesOf("b.dwg")});
    all.push_back({"drawing copied over another",
                   [](const Folder& folder) {
                       folder.write("a.dwg", "new drawing");
                       folder.write("b.dwg", "old");
                   },
                   copy, bytesOf("b.dwg")});
}

void addQueueOperations(std::vector<FileOperation>& all)
{
    const auto add = [](const Folder& folder) { return addToQueue(folder.file(kQueue), "/d/z.dwg").ok(); };
    all.push_back({"queue begun", nothing(), add, queued});
    all.push_back({"drawing queued", holds(kQueue, "/d/a.dwg\r\n"), add, queued});
    all.push_back({"drawing queued behind an open line", holds(kQueue, "/d/a.dwg"), add, queued});
    all.push_back({"queue saved", holds(kQueue, "/d/a.dwg\r\n/d/b.dwg\r\n"),
                   [](const Folder& folder) { return saveQueue(folder.file(kQueue), {"/d/b.dwg"}).ok(); },
                   queued});
}

void addLogOperations(std::vector<FileOperation>& all)
{
    const auto write = [](const Folder& folder) {
        writeLog(folder.file(kLog), "date,Ann,/d/z.dwg,Insert as Block,");
        return true;
    };
    all.push_back({"log begun", nothing(), write, bytesOf(kLog), false});
    all.push_back({"entry logged", holds(kLog, "old,\r\n"), write, bytesOf(kLog), false});
    all.push_back({"entry logged behind an open line", holds(kLog, "old,"), write, bytesOf(kLog), false});
}

} // namespace

std::vector<FileOperation> fileOperations()
{
    std::vector<FileOperation> all;
    addListOperations(all);
    addProfileOperations(all);
    addCatalogueOperations(all);
    addFolderOperations(all);
    addQueueOperations(all);
    addLogOperations(all);
    for (FileOperation& operation : systemFileOperations())
        all.push_back(std::move(operation));
    return all;
}

} // namespace zv
