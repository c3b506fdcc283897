#include "platform/Profile.h"

#include "platform/Files.h"
#include "platform/ProfileFile.h"
#include "platform/ProfileText.h"
#include "platform/Text.h"
#include "platform/posix/Calls.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/WorkingCopy.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>

namespace zv {

namespace {

constexpr const char* kWorkingEnding = ".new";
/// More than any office has settings for. A larger file is none of ours, and is neither read nor written.
constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20;
/// An editor's mark of a file whose characters take two bytes each, low byte first.
constexpr std::string_view kWideMark = "\xFF\xFE";

bool isWideText(std::string_view bytes)
{
    return bytes.starts_with(kWideMark);
}

std::string decoded(std::string bytes)
{
    if (!isWideText(bytes))
        return bytes;
    std::u16string text;
    for (std::size_t i = kWideMark.size(); i + 1 < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    return narrow(text);
}

std::string encoded(const std::string& text, bool asWideText)
{
    if (!asWideText)
        return text;
    std::string bytes(kWideMark);
    for (const char16_t unit : wide(text)) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

std::string folderOf(const std::string& path)
{
    const std::size_t separator = path.rfind('/');
    return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

/// The first name of a folder that differs from `name` only in case; empty when there is none. Errors:
/// Denied, Failed: the folder cannot be read.
Result<std::string> nameInOtherCase(const std::string& folder, const std::string& name)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> open(calls::opendir(folder.empty() ? "." : folder.c_str()),
                                                   ::closedir);
    if (!open)
        return errno == ENOENT || errno == ENOTDIR ? Result<std::string>(std::string()) : systemError(folder);
    std::string best;
    while (const dirent* entry = calls::readdir(open.get())) {
        if (sameName(entry->d_name, name) && (best.empty() || entry->d_name < best))
            best = entry->d_name;
    }
    return errno == 0 ? Result<std::string>(best) : systemError(folder);
}

/// The file that the name means: the one of exactly this name, else the first by name that differs only in
/// case, else the name itself. A link leads to what it names, so that a rewrite leaves the link in place.
/// Errors: Denied, Failed: it cannot be told.
Result<std::string> realFile(const std::string& path)
{
    std::string found = path;
    struct stat status {};
    if (calls::lstat(path.c_str(), &status) != 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            return systemError(path);
        const std::string folder = folderOf(path);
        const Result<std::string> name = nameInOtherCase(folder, path.substr(folder.size()));
        if (!name || name->empty())
            return name ? Result<std::string>(path) : name.error();
        found = folder + *name;
    }
    const std::unique_ptr<char, void (*)(void*)> real(calls::realpath(found.c_str()), std::free);
    if (real)
        return std::string(real.get());
    return errno == ENOENT ? Result<std::string>(found) : systemError(found);
}

/// An absent file is an empty one. Errors: Denied, Failed: what it holds is not known.
Result<std::string> load(const std::string& file)
{
    if (file.empty())
        return std::string();
    const Result<std::string> path = realFile(file);
    if (!path)
        return path.error();
    Result<std::string> bytes = readFile(*path, kMostBytes);
    if (!bytes && bytes.error().code != ErrorCode::NotFound)
        return bytes.error();
    return decoded(std::move(bytes).valueOr({}));
}

/// The same for calls that have no errors.
std::string loadOrEmpty(const char* file)
{
    return load(file ? file : "").valueOr({});
}

/// The text as far as the buffer holds it; the count is without the NUL.
unsigned long copyCut(std::string_view text, char* buffer, unsigned long size)
{
    const std::size_t count = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
    return static_cast<unsigned long>(count);
}

/// Names one after the other, each with a NUL, and a second NUL at the end, also of a list that is cut.
unsigned long copyList(const std::vector<std::string>& names, char* buffer, unsigned long size)
{
    std::string list;
    for (const std::string& name : names)
        list += name + '\0';
    if (size < 2 || list.size() < size)
        return copyCut(list, buffer, size);
    std::memcpy(buffer, list.data(), size - 2);
    buffer[size - 2] = buffer[size - 1] = '\0';
    return size - 2;
}

std::string_view withoutTrailingBlanks(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

using ProfileEdit = std::function<void(ProfileText& profile)>;

std::string edited(const std::string& before, const ProfileEdit& edit)
{
    ProfileText profile(decoded(before));
    edit(profile);
    return encoded(profile.text(), isWideText(before));
}

/// Writes a profile over itself, in one write that leaves a whole file behind wherever the program is ended:
/// line ends fill up what is left of a longer old text until it is cut off.
Result<void> overwrite(const Descriptor& file, const std::string& path, const std::string& before,
                       const std::string& after)
{
    std::string bytes = after;
    while (bytes.size() < before.size())
        bytes += isWideText(before) && bytes.size() % 2 != 0 ? '\0' : '\n';
    if (!calls::reserve(file.number(), static_cast<off_t>(bytes.size())))
        return writingError(path);
    const ssize_t count = calls::overwrite(file.number(), bytes.data(), bytes.size());
    if (count < 0)
        return writingError(path);
    if (static_cast<std::size_t>(count) < bytes.size()) {
        // The room was not there after all.
        if (calls::overwrite(file.number(), before.data(), before.size()) >= 0)
            static_cast<void>(calls::ftruncate(file.number(), static_cast<off_t>(before.size())) == 0);
        return Error{ErrorCode::Failed, path + ": the disk is full"};
    }
    if (after.size() < bytes.size())
        static_cast<void>(calls::ftruncate(file.number(), static_cast<off_t>(after.size())) == 0);
    return calls::fsync(file.number()) == 0 ? Result<void>() : writingError(path);
}

/// For a folder where no second file can be made.
Result<void> rewriteInPlace(const std::string& path, const ProfileEdit& edit)
{
    const Descriptor file(calls::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return writingError(path);
    if (Result<void> locked = lockFile(file, path, {}); !locked)
        return locked;
    // One that has been replaced meanwhile is to be read anew, a little later.
    const Result<bool> stands = standsAt(file, path);
    if (!stands || !*stands)
        return stands ? Error{ErrorCode::Busy, path + ": replaced by another program"} : stands.error();
    const Result<std::string> before = readAll(file, path, kMostBytes);
    if (!before)
        return before.error();
    return overwrite(file, path, *before, edited(*before, edit));
}

/// A profile that is read, changed and put back in one step. Errors: Busy, another process does the same;
/// Denied, Failed: nothing is changed.
Result<void> rewrite(const std::string& file, const ProfileEdit& edit)
{
    const Result<std::string> found = file.empty() ? Error{} : realFile(file);
    if (!found)
        return found.error();
    const std::string& path = *found;
    Result<std::string> before = readFile(path, kMostBytes);
    if (!before && before.error().code != ErrorCode::NotFound)
        return before.error();
    if (before && edited(*before, edit) == *before)
        return {};
    // A file whose owner has marked it read-only stays as it is.
    if (before) {
        if (const Result<Descriptor> writable = openForWriting(path, O_WRONLY); !writable)
            return writable.error();
    }
    Result<WorkingCopy> copy = WorkingCopy::open(path + kWorkingEnding, {});
    if (!copy)
        return copy.error().code == ErrorCode::Denied ? rewriteInPlace(path, edit) : copy.error();
    if (Result<void> held = copy->hold(path, {}); !held)
        return held;
    before = readFile(path, kMostBytes);
    if (!before && before.error().code != ErrorCode::NotFound)
        return before.error();
    const std::string after = edited(before.valueOr({}), edit);
    return before && after == *before ? Result<void>() : copy->replace(path, after);
}

/// The lines of a list that is ended by an empty one.
std::vector<std::string_view> linesOf(const char* text)
{
    std::vector<std::string_view> lines;
    for (const char* line = text; *line; line += std::strlen(line) + 1)
        lines.emplace_back(line);
    return lines;
}

} // namespace

unsigned long GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                                       char* buffer, unsigned long size, const char* file)
{
    if (!buffer || size == 0)
        return 0;
    const ProfileText profile(loadOrEmpty(file));
    if (!section)
        return copyList(profile.sections(), buffer, size);
    if (!key) {
        const std::vector<std::string> keys = profile.keys(section);
        if (!keys.empty())
            return copyList(keys, buffer, size);
    } else if (const std::optional<std::string> value = profile.value(section, key)) {
        return copyCut(*value, buffer, size);
    }
    return copyCut(withoutTrailingBlanks(fallback ? fallback : ""), buffer, size);
}

unsigned GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* file)
{
    char buffer[kProfileBuffer];
    if (GetPrivateProfileStringA(section, key, "", buffer, sizeof buffer, file) == 0)
        return static_cast<unsigned>(fallback);
    return profileNumber(buffer);
}

int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file)
{
    if (!section || !file)
        return 0;
    const Result<void> done = rewrite(file, [&](ProfileText& profile) {
        if (!key)
            profile.removeSection(section);
        else if (!value)
            profile.removeKey(section, key);
        else
            profile.setValue(section, key, value);
    });
    return done.ok();
}

int WritePrivateProfileSectionA(const char* section, const char* text, const char* file)
{
    if (!section || !file)
        return 0;
    const Result<void> done = rewrite(file, [&](ProfileText& profile) {
        if (text)
            profile.setLines(section, linesOf(text));
        else
            profile.removeSection(section);
    });
    return done.ok();
}

Result<void> changeProfile(const ProfileChange& change)
{
    return rewrite(change.file, [&](ProfileText& profile) { changeText(profile, change); });
}

Result<std::vector<std::optional<std::string>>>
readProfile(const std::string& file, const std::string& section, const std::vector<std::string>& keys)
{
    const Result<std::string> text = load(file);
    if (!text)
        return text.error();
    return ProfileText(*text).values(section, keys);
}

bool profileExists(const std::string& file)
{
    const Result<std::string> path = realFile(file);
    if (!path)
        return true;
    const Result<std::uint64_t> length = fileLength(*path);
    return length || length.error().code != ErrorCode::NotFound;
}

Result<void> createProfile(const std::string& file)
{
    const Result<std::string> path = realFile(file);
    if (!path)
        return path.error();
    // A second file is made only where one seems to be missing.
    if (fileExists(*path))
        return Error{ErrorCode::Busy, *path + ": is there already"};
    return createFile(*path, {});
}

} // namespace zv
