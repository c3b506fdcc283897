#include "help/HelpBook.h"

#include "platform/ByteSource.h"
#include "platform/Trial.h"

#include <chm_lib.h>

#include <algorithm>

namespace zv {
namespace {

constexpr std::uint64_t kFileLimit = 16U << 20; ///< Of one file inside a book.
constexpr std::size_t kPageLimit = 10000;       ///< Pages of a book that are searched.
constexpr std::size_t kTrialPart = 1U << 16;
constexpr unsigned kTrialSeconds = 10;
constexpr char kSystemFile[] = "/#SYSTEM";

// Codes of the records of the system file.
constexpr unsigned kContentsRecord = 0;
constexpr unsigned kIndexRecord = 1;
constexpr unsigned kHomeRecord = 2;
constexpr unsigned kTitleRecord = 3;

unsigned number16(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

bool endsWith(std::string_view name, std::string_view ending)
{
    return name.size() > ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), name.rbegin(),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
}

int addName(chmFile*, chmUnitInfo* info, void* names)
{
    auto& list = *static_cast<std::vector<std::string>*>(names);
    list.emplace_back(info->path);
    return list.size() < kPageLimit ? CHM_ENUMERATOR_CONTINUE : CHM_ENUMERATOR_SUCCESS;
}

void flatten(const std::vector<HelpEntry>& entries, std::vector<HelpEntry>& out)
{
    for (const HelpEntry& entry : entries) {
        out.push_back({entry.title, entry.page, {}});
        flatten(entry.children, out);
    }
}

} // namespace

struct HelpBook::File {
    explicit File(const std::string& path) : handle(chm_open(path.c_str())) {}
    ~File()
    {
        if (handle != nullptr)
            chm_close(handle);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        chm_enumerate(handle, CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, addName, &all);
        return all;
    }

    /// Reads every file of the book once and keeps none. False when a part of one is not there.
    bool readAll() const
    {
        std::string part(kTrialPart, '\0');
        for (const std::string& name : names()) {
            chmUnitInfo unit{};
            if (chm_resolve_object(handle, name.c_str(), &unit) != CHM_RESOLVE_SUCCESS)
                return false;
            const LONGUINT64 length = std::min<LONGUINT64>(unit.length, kFileLimit);
            for (LONGUINT64 at = 0; at < length; at += kTrialPart) {
                const LONGINT64 got = chm_retrieve_object(
                    handle, &unit, reinterpret_cast<unsigned char*>(part.data()), at, kTrialPart);
                if (got != static_cast<LONGINT64>(std::min<LONGUINT64>(kTrialPart, unit.length - at)))
                    return false;
            }
        }
        return true;
    }

    chmFile* handle;
};

Result<std::unique_ptr<HelpBook>> HelpBook::open(const std::string& path)
{
    // The library would wait for ever at a pipe in the file's place.
    if (!openByteSource(path))
        return Error{ErrorCode::NotFound, "there is no help file"};
    const auto readAll = [&path] {
        const File trial(path);
        return trial.handle != nullptr && trial.readAll();
    };
    // The library believes what a file says of itself and may fall over a damaged one, so the whole of it is
    // read first where that does no harm.
    if (!endsWell(readAll, kTrialSeconds))
        return Error{ErrorCode::Damaged, "this is no help file"};
    auto file = std::make_unique<File>(path);
    if (file->handle == nullptr)
        return Error{ErrorCode::Damaged, "this is no help file"};
    std::unique_ptr<HelpBook> book(new HelpBook(std::move(file)));
    if (!book->load())
        return Error{ErrorCode::Damaged, "the help file has no page to open with"};
    return book;
}

HelpBook::HelpBook(std::unique_ptr<File> file) : m_file(std::move(file)) {}

HelpBook::~HelpBook() = default;

bool HelpBook::load()
{
    std::string contentsName;
    std::string indexName;
    readSystemFile(contentsName, indexName);
    for (const std::string& name : m_file->names()) {
        if (contentsName.empty() && endsWith(name, ".hhc"))
            contentsName = name;
        if (indexName.empty() && endsWith(name, ".hhk"))
            indexName = name;
    }
    if (const Result<std::string> contents = file(contentsName))
        m_contents = readSiteMap(*contents);
    if (const Result<std::string> index = file(indexName))
        flatten(readSiteMap(*index), m_index);
    std::stable_sort(m_index.begin(), m_index.end(),
                     [](const HelpEntry& a, const HelpEntry& b) { return a.title < b.title; });
    if (m_home.empty() && !m_contents.empty())
        m_home = m_contents.front().page;
    // Half a book is as good as none.
    return file(m_home).ok() && hasPagesOf(m_contents) && hasPagesOf(m_index);
}

bool HelpBook::hasPagesOf(const std::vector<HelpEntry>& entries) const
{
    return std::all_of(entries.begin(), entries.end(), [this](const HelpEntry& entry) {
        return (entry.page.empty() || file(entry.page).ok()) && hasPagesOf(entry.children);
    });
}

void HelpBook::readSystemFile(std::string& contentsName, std::string& indexName)
{
    const Result<std::string> bytes = file(kSystemFile);
    if (!bytes)
        return;
    std::string_view rest(*bytes);
    rest.remove_prefix(std::min<std::size_t>(rest.size(), 4)); // the version
    while (rest.size() >= 4) {
        const unsigned code = number16(rest, 0);
        const std::size_t size = number16(rest, 2);
        if (size > rest.size() - 4)
            return;
        const std::string_view body = rest.substr(4, size);
        const std::string text(body.substr(0, body.find('\0')));
        if (code == kContentsRecord)
            contentsName = text;
        else if (code == kIndexRecord)
            indexName = text;
        else if (code == kHomeRecord)
            m_home = text;
        else if (code == kTitleRecord)
            m_title = text;
        rest.remove_prefix(4 + size);
    }
}

Result<std::string> HelpBook::file(std::string_view name) const
{
    std::string path(name.substr(0, name.find('#', 2)));
    if (path.empty() || path.front() != '/')
        path.insert(path.begin(), '/');
    chmUnitInfo info{};
    if (path.size() > CHM_MAX_PATHLEN || path.size() < 2 ||
        chm_resolve_object(m_file->handle, path.c_str(), &info) != CHM_RESOLVE_SUCCESS)
        return Error{ErrorCode::NotFound, "the help file has no " + path};
    if (info.length > kFileLimit)
        return Error{ErrorCode::TooLarge, path + " is too large"};
    std::string bytes(info.length, '\0');
    const auto got =
        chm_retrieve_object(m_file->handle, &info, reinterpret_cast<unsigned char*>(bytes.data()), 0,
                            static_cast<LONGINT64>(info.length));
    if (got != static_cast<LONGINT64>(info.length))
        return Error{ErrorCode::Damaged, path + " cannot be unpacked"};
    return bytes;
}

void HelpBook::readPages() const
{
    if (!m_pages.empty())
        return;
    for (const std::string& name : m_file->names()) {
        if (!endsWith(name, ".html") && !endsWith(name, ".htm"))
            continue;
        const Result<std::string> html = file(name);
        if (html)
            m_pages.push_back({name.substr(1), titleOfPage(*html), wordsOfPage(*html)});
    }
}

std::vector<HelpFinding> HelpBook::search(std::string_view words) const
{
    readPages();
    std::vector<HelpFinding> found;
    const std::vector<std::string> wanted = wordsOfPage(words);
    for (const Page& page : m_pages) {
        int total = 0;
        bool all = !wanted.empty();
        for (const std::string& word : wanted) {
            const auto hits = std::count_if(page.words.begin(), page.words.end(),
                                            [&](const std::string& w) { return w.starts_with(word); });
            total += static_cast<int>(hits);
            all = all && hits > 0;
        }
        if (all)
            found.push_back({page.title.empty() ? page.name : page.title, page.name, total});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const HelpFinding& a, const HelpFinding& b) { return a.count > b.count; });
    return found;
}

} // namespace zv
