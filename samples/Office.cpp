#include "Office.h"

#include "config/Keys.h"
#include "drawing/Writer.h"
#include "library/Catalogue.h"
#include "library/ListFile.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "platform/Text.h"

namespace zv::samples {

namespace fs = std::filesystem;

namespace {
/// A library of the catalogue: its name and the lines of its list.
struct Listed {
    std::string name;
    std::vector<fs::path> drawings;
};

dwg::Properties propertiesOf(const Sample& sample)
{
    dwg::Properties properties;
    properties.title = wide(sample.title);
    properties.subject = u"Sample office";
    properties.author = u"Zelvora";
    properties.comments = wide(sample.comments);
    properties.keywords = wide(sample.keywords);
    properties.lastSavedBy = u"Zelvora";
    // The first custom property is the scale that an automatic insertion asks for.
    properties.custom = {{u"Scale", wide(numberText(sample.draft.scale()))},
                         {u"Units", sample.draft.units() == Units::Inches ? u"in" : u"mm"}};
    return properties;
}

/// The path of a drawing of the office as Windows machines spell it.
std::string windowsPath(const fs::path& drawing, const fs::path& office, const std::string& windowsName)
{
    std::string path = windowsName;
    for (const fs::path& part : drawing.lexically_relative(office))
        path += "\\" + part.string();
    return path;
}

std::string listText(const Listed& library, const fs::path& office, const std::string& windowsName)
{
    std::string text;
    for (const fs::path& drawing : library.drawings) {
        text += windowsName.empty() ? drawing.string() : windowsPath(drawing, office, windowsName);
        text += ";" + upper(drawing.stem().string()) + "\r\n";
    }
    return text;
}

Result<void> makeDrawings(const Library& library, const fs::path& office, const Painter& painter,
                          std::vector<Listed>& catalogue)
{
    const fs::path folder = office / library.name;
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    Listed listed{library.name, {}};
    for (const Sample& sample : library.samples) {
        const auto file = drawingFile(sample, painter);
        if (!file)
            return Error{file.error().code, sample.name + ": " + file.error().text};
        const fs::path path = folder / (sample.name + ".dwg");
        if (auto written = writeFile(path.string(), *file); !written)
            return written;
        listed.drawings.push_back(path);
    }
    catalogue.push_back(std::move(listed));
    return {};
}

/// Every `step`-th drawing of the libraries so far, so that a project's list shares the office's drawings.
std::vector<fs::path> gathered(const std::vector<Listed>& catalogue, std::size_t step)
{
    std::vector<fs::path> drawings;
    for (const Listed& library : catalogue)
        for (std::size_t i = step / 2; i < library.drawings.size(); i += step)
            drawings.push_back(library.drawings[i]);
    return drawings;
}

/// Libraries as they are met in offices: one that lists a drawing which is gone, one with a damaged file,
/// one without any.
Result<void> addTroubled(const fs::path& office, std::vector<Listed>& catalogue)
{
    Listed project{"Project Details", gathered(catalogue, 19)};
    project.drawings.insert(project.drawings.begin() + 2, office / "Project Details" / "Lobby Column.dwg");
    Listed vendor{"Vendor Details", gathered(catalogue, 37)};
    const auto whole = readFile(vendor.drawings.front().string());
    if (!whole)
        return whole.error();
    const fs::path folder = office / vendor.name;
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    const fs::path damaged = folder / "Canopy Bracket.dwg";
    // As a copy that stopped in its first part leaves it.
    if (auto written = writeFile(damaged.string(), whole->substr(0, 150)); !written)
        return written;
    vendor.drawings.insert(vendor.drawings.begin() + 1, damaged);
    catalogue.push_back(std::move(project));
    catalogue.push_back(std::move(vendor));
    catalogue.push_back({"New Library", {}});
    return {};
}
} // namespace

Result<std::string> drawingFile(const Sample& sample, const Painter& painter)
{
    const dwg::Document document = sample.draft.document();
    dwg::WriteOptions options;
    options.properties = propertiesOf(sample);
    if (sample.preview && painter)
        options.preview = painter(document);
    return dwg::writeDocument(document, options);
}

Result<void> makeOffice(const fs::path& installation, const fs::path& office, const Painter& painter,
                        const std::string& windowsName)
{
    std::error_code error;
    fs::create_directories(office, error);
    fs::copy(installation, office, fs::copy_options::recursive | fs::copy_options::overwrite_existing, error);
    if (error)
        return Error{ErrorCode::Failed, installation.string() + ": " + error.message()};
    std::vector<Listed> catalogue;
    for (const Library& library : allLibraries())
        if (auto made = makeDrawings(library, office, painter, catalogue); !made)
            return made;
    if (auto added = addTroubled(office, catalogue); !added)
        return added;
    // An office that is made anew keeps nothing of an earlier one.
    if (auto emptied = writeFile((office / kProfileName).string(), ""); !emptied)
        return emptied;
    if (!windowsName.empty())
        Profiles(office.string(), office.string(), {}).write(keys::zelvora::ZVRpath, windowsName);
    std::vector<std::string> names;
    for (const Listed& library : catalogue) {
        names.push_back(library.name);
        const std::string list = listFilePath(office.string(), library.name);
        if (auto written = writeFile(list, listText(library, office, windowsName)); !written)
            return written;
    }
    if (auto written = writeCatalogue(office.string(), names, static_cast<int>(names.size())); !written)
        return written;
    if (auto removed = removeCatalogueScratch(office.string()); !removed)
        return removed;
    if (readCatalogue((office / kProfileName).string()) != names)
        return Error{ErrorCode::Failed, "the catalogue of the sample office cannot be written"};
    return {};
}

namespace {
void set(const fs::path& file, const char* section, const char* key, const char* value)
{
    WritePrivateProfileStringA(section, key, value, file.string().c_str());
}
} // namespace

Result<void> makeUser(const fs::path& office)
{
    const fs::path data = office / "user" / "data" / "zelvora",
                   config = office / "user" / "config" / "zelvora";
    std::error_code error;
    for (const fs::path& folder : {data, config}) {
        fs::create_directories(folder, error);
        if (error)
            return Error{ErrorCode::Failed, folder.string() + ": " + error.message()};
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    std::string login = systemLoginName();
    if (login.empty())
        login = "User";
    const fs::path profile = data / (login + kProfileEnding), store = config / "Zelvora.ini";
    if (!fs::exists(profile)) {
        const Profiles profiles(office.string(), office.string(), profile.string());
        profiles.write(keys::zelvora::LastLoad, kFirstLibrary);
        profiles.write(keys::zelvora::del, "0");
        profiles.write(keys::zelvora::writeProjectPath, "");
        // A first double-click places a block, at the size at which it is drawn.
        profiles.write(keys::zelvora::writeFirstInsertmode, "0");
        profiles.write(keys::zelvora::writeAutoScale, "0");
        profiles.write(keys::zelvora::AOT, "1");
    }
    if (!fs::exists(store)) {
        set(store, "Settings", "MainLeft", "1000");
        set(store, "Settings", "MainTop", "1000");
        set(store, "Settings", "MainWidth", "10695");
        set(store, "Settings", "MainHeight", "9090");
    }
    if (!fs::exists(profile) || !fs::exists(store))
        return Error{ErrorCode::Failed, "the sample user's settings cannot be written"};
    return {};
}

} // namespace zv::samples
