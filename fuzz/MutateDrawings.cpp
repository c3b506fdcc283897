// Damages real drawings in many ways and reads each one: no crash, no hang, no hoard of memory.
//   mutate-drawings FOLDER COUNT [FIRST]
// The damage follows from its number alone, so that a failure can be repeated: COUNT 1, FIRST its number.

#include "drawing/Reader.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <malloc.h>
#include <new>
#include <random>

#if defined(__SANITIZE_ADDRESS__) || (defined(__has_feature) && __has_feature(address_sanitizer))
#include <sanitizer/common_interface_defs.h>
#define ZELVORA_DEATH_CALLBACK 1
#endif

namespace {

std::size_t held = 0, mostHeld = 0;
std::uint64_t current = 0;

void* counted(std::size_t size)
{
    void* memory = std::malloc(size);
    if (memory == nullptr)
        std::abort();
    held += ::malloc_usable_size(memory);
    mostHeld = std::max(mostHeld, held);
    return memory;
}

void release(void* memory)
{
    if (memory != nullptr)
        held -= ::malloc_usable_size(memory);
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return counted(size);
}
void* operator new[](std::size_t size)
{
    return counted(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return counted(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return counted(size);
}
void operator delete(void* memory) noexcept
{
    release(memory);
}
void operator delete[](void* memory) noexcept
{
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    release(memory);
}

namespace {

constexpr double kLongestSeconds = 1.0;
constexpr std::size_t kMostMemory = std::size_t{256} << 20;

using Random = std::mt19937_64;

std::size_t below(Random& random, std::size_t limit)
{
    return limit == 0 ? 0 : random() % limit;
}

/// A place in the file; half of them near its start, where headers and tables are.
std::size_t place(Random& random, const std::string& file)
{
    return below(random, random() % 2 == 0 ? file.size() : std::min<std::size_t>(file.size(), 0x600));
}

void damageOnce(std::string& file, Random& random)
{
    static constexpr std::uint32_t kHard[] = {
        0, 1, 0x7F, 0x80, 0xFF, 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x10000, 0x100};
    const std::size_t at = place(random, file), length = 1 + below(random, 64);
    switch (random() % 8) {
    case 0:
    case 1:
        file[at] = static_cast<char>(file[at] ^ (1 << random() % 8));
        break;
    case 2:
        file[at] = static_cast<char>(random());
        break;
    case 3:
        for (std::size_t i = 0, value = kHard[random() % std::size(kHard)]; i < 4 && at + i < file.size();
             ++i)
            file[at + i] = static_cast<char>(value >> (8 * i));
        break;
    case 4:
        for (std::size_t i = at; i < std::min(at + length, file.size()); ++i)
            file[i] = static_cast<char>(random());
        break;
    case 5: {
        const std::string piece = file.substr(below(random, file.size()), length);
        file.replace(at, piece.size(), piece);
        break;
    }
    case 6:
        if (random() % 2 == 0)
            file.erase(at, length);
        else
            file.insert(at, std::string(length, static_cast<char>(random())));
        break;
    default:
        if (random() % 4 == 0)
            file.resize(at + 1);
        else
            file[at] = static_cast<char>(file[at] + 1);
        break;
    }
}

std::vector<std::string> drawingsBelow(const char* folder)
{
    std::vector<std::string> paths, files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".dwg")
            paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) {
        if (auto bytes = zv::readFile(path); bytes && !bytes->empty())
            files.push_back(std::move(*bytes));
    }
    return files;
}

/// Reads all that there is to read. Whether that succeeds is not asked.
void readAll(const std::string& file)
{
    const zv::MemorySource source(std::as_bytes(std::span(file)));
    if (const auto previews = zv::dwg::readPreviews(source)) {
        for (const zv::dwg::PreviewImage& image : *previews) {
            if (image.kind == zv::dwg::PreviewKind::Bmp)
                static_cast<void>(zv::dwg::decodeBitmap(image.bytes));
        }
    }
    static_cast<void>(zv::dwg::readProperties(source));
    static_cast<void>(zv::dwg::readDocument(source));
}

void tellNumber()
{
    std::fprintf(stderr, "failed at number %llu\n", static_cast<unsigned long long>(current));
}

} // namespace

int main(int count, char** values)
{
    if (count < 3) {
        std::fprintf(stderr, "usage: mutate-drawings FOLDER COUNT [FIRST]\n");
        return 2;
    }
    const std::vector<std::string> files = drawingsBelow(values[1]);
    const std::uint64_t number = std::strtoull(values[2], nullptr, 10);
    const std::uint64_t first = count > 3 ? std::strtoull(values[3], nullptr, 10) : 0;
    if (files.empty()) {
        std::fprintf(stderr, "no drawings below %s\n", values[1]);
        return 2;
    }
#ifdef ZELVORA_DEATH_CALLBACK
    __sanitizer_set_death_callback(tellNumber);
#endif
    double longest = 0;
    std::size_t most = 0;
    std::uint64_t failures = 0, longestNumber = 0, mostNumber = 0;
    for (current = first; current < first + number; ++current) {
        Random random(current);
        std::string file = files[current % files.size()];
        for (std::size_t damages = 1 + below(random, 8); damages > 0 && !file.empty(); --damages)
            damageOnce(file, random);
        const std::size_t before = held;
        mostHeld = held;
        const std::clock_t start = std::clock();
        readAll(file);
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        const std::size_t memory = mostHeld - before;
        if (seconds > longest) {
            longest = seconds;
            longestNumber = current;
        }
        if (memory > most) {
            most = memory;
            mostNumber = current;
        }
        if (seconds > kLongestSeconds || memory > kMostMemory) {
            ++failures;
            std::printf("number %llu: %.2f s, %zu MiB\n", static_cast<unsigned long long>(current), seconds,
                        memory >> 20);
        }
    }
    std::printf(
        "%llu damaged drawings from %zu: no crash, %llu over the limits; longest %.0f ms (number %llu), most "
        "memory %zu MiB (number %llu)\n",
        static_cast<unsigned long long>(number), files.size(), static_cast<unsigned long long>(failures),
        longest * 1000, static_cast<unsigned long long>(longestNumber), most >> 20,
        static_cast<unsigned long long>(mostNumber));
    return failures == 0 ? 0 : 1;
}
