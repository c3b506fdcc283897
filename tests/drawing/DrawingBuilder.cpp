#include "DrawingBuilder.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

namespace {

void put(std::string& file, std::size_t at, std::string_view bytes)
{
    if (file.size() < at + bytes.size())
        file.resize(at + bytes.size());
    std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(at));
}

std::string padded(std::string bytes, std::size_t unit)
{
    bytes.resize((bytes.size() + unit - 1) / unit * unit);
    return bytes;
}

std::uint32_t checksum(std::uint32_t seed, std::string_view bytes)
{
    std::uint32_t low = seed & 0xFFFF, high = seed >> 16;
    for (const char c : bytes) {
        low = (low + static_cast<std::uint8_t>(c)) % 0xFFF1;
        high = (high + low) % 0xFFF1;
    }
    return high << 16 | low;
}

/// Packed as one run of literals, which must be 19 bytes or longer.
std::string packedR2004(const std::string& bytes)
{
    std::string packed(1, '\0');
    std::size_t rest = bytes.size() - 18;
    for (; rest > 255; rest -= 255)
        packed += '\0';
    return packed + static_cast<char>(rest) + bytes + '\x11';
}

std::string systemPage(std::uint32_t type, std::string bytes)
{
    bytes.resize(std::max<std::size_t>(bytes.size(), 19));
    const std::string packed = packedR2004(bytes);
    const std::string header = littleEndian(type, 4) + littleEndian(bytes.size(), 4) +
                               littleEndian(packed.size(), 4) + littleEndian(2, 4);
    const std::uint32_t sum = checksum(checksum(0, header + std::string(4, '\0')), packed);
    return padded(header + littleEndian(sum, 4) + packed, 32);
}

std::string dataPage(std::uint64_t position, std::size_t offset, std::string bytes)
{
    bytes.resize(std::max<std::size_t>(bytes.size(), 19));
    const std::string packed = packedR2004(bytes);
    const std::uint32_t mask = 0x4164536B ^ static_cast<std::uint32_t>(position);
    std::string page;
    for (const std::size_t value : {std::size_t{0x4163043B}, std::size_t{1}, packed.size(), bytes.size(),
                                    offset, std::size_t{0}, std::size_t{checksum(0, packed)}, std::size_t{0}})
        page += littleEndian(static_cast<std::uint32_t>(value) ^ mask, 4);
    return padded(page + packed, 32);
}

bool isLeftOut(const BuiltSection& section, std::size_t page)
{
    return std::find(section.leftOut.begin(), section.leftOut.end(), page) != section.leftOut.end();
}

/// Guards blocks of 255 bytes of which `dataBytes` are data.
class Guard {
public:
    Guard(unsigned polynomial, std::size_t dataBytes) : m_polynomial(polynomial), m_data(dataBytes)
    {
        m_generator = {1};
        for (std::size_t root = 1; root <= 255 - dataBytes; ++root) {
            const std::uint8_t inverse = power(255 - static_cast<int>(root));
            std::vector<std::uint8_t> next(m_generator.size() + 1);
            for (std::size_t i = 0; i < m_generator.size(); ++i) {
                next[i] ^= m_generator[i];
                next[i + 1] ^= times(m_generator[i], inverse);
            }
            m_generator = next; // highest power first
        }
    }

    std::string woven(const std::string& bytes) const
    {
        const std::string whole = padded(bytes, m_data);
        const std::size_t blocks = whole.size() / m_data;
        std::string result(blocks * 255, '\0');
        for (std::size_t block = 0; block < blocks; ++block) {
            const std::string coded = whole.substr(block * m_data, m_data) + guards(whole, block * m_data);
            for (std::size_t i = 0; i < 255; ++i)
                result[i * blocks + block] = coded[i];
        }
        return result;
    }

private:
    std::uint8_t times(unsigned a, unsigned b) const
    {
        unsigned result = 0;
        for (; b != 0; b >>= 1) {
            if ((b & 1) != 0)
                result ^= a;
            a = (a & 0x80) != 0 ? (a << 1) ^ m_polynomial : a << 1;
        }
        return static_cast<std::uint8_t>(result);
    }
    std::uint8_t power(int exponent) const
    {
        std::uint8_t result = 1;
        for (int i = 0; i < exponent; ++i)
            result = times(result, 2);
        return result;
    }
    /// The remainder of the data divided by the generator.
    std::string guards(const std::string& whole, std::size_t at) const
    {
        std::vector<std::uint8_t> rest(255 - m_data);
        for (std::size_t i = 0; i < m_data; ++i) {
            const std::uint8_t factor = static_cast<std::uint8_t>(whole[at + i]) ^ rest[0];
            rest.erase(rest.begin());
            rest.push_back(0);
            for (std::size_t j = 0; j < rest.size(); ++j)
                rest[j] ^= times(m_generator[j + 1], factor);
        }
        return {rest.begin(), rest.end()};
    }

    unsigned m_polynomial;
    std::size_t m_data;
    std::vector<std::uint8_t> m_generator;
};

} // namespace

std::string littleEndian(std::uint64_t value, int size)
{
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

std::string buildR13(std::string_view version, const std::vector<BuiltSection>& sections, int codePage)
{
    std::string file(version);
    put(file, 0x13, littleEndian(static_cast<std::uint64_t>(codePage), 2));
    put(file, 0x15, littleEndian(sections.size(), 4));
    std::size_t at = 0x19 + 9 * sections.size() + 18;
    for (const BuiltSection& section : sections) {
        file += static_cast<char>(section.name[0] - '0');
        file += littleEndian(at, 4) + littleEndian(section.bytes.size(), 4);
        at += section.bytes.size();
    }
    file += std::string(18, '\0');
    for (const BuiltSection& section : sections)
        file += section.bytes;
    return file;
}

std::string buildR2004(std::string_view version, const std::vector<BuiltSection>& sections, int codePage)
{
    std::string file(version);
    file.resize(0x100);
    put(file, 0x13, littleEndian(static_cast<std::uint64_t>(codePage), 2));
    std::vector<std::size_t> sizes;
    std::string map = littleEndian(sections.size(), 4) + std::string(16, '\0');
    for (const BuiltSection& section : sections) {
        std::string pages;
        std::size_t stored = 0;
        for (std::size_t offset = 0, page = 0; offset < section.bytes.size();
             offset += section.pageSize, ++page) {
            if (isLeftOut(section, page))
                continue;
            const std::string bytes =
                dataPage(file.size(), offset, section.bytes.substr(offset, section.pageSize));
            file += bytes;
            sizes.push_back(bytes.size());
            pages += littleEndian(sizes.size(), 4) + littleEndian(bytes.size(), 4) + littleEndian(offset, 8);
            ++stored;
        }
        std::string name = section.name;
        name.resize(64);
        map += littleEndian(section.bytes.size(), 8) + littleEndian(stored, 4) +
               littleEndian(section.pageSize, 4) + littleEndian(1, 4) + littleEndian(2, 4) +
               littleEndian(1, 4) + littleEndian(0, 4) + name + pages;
    }
    const std::string sectionMap = systemPage(0x4163003B, map);
    file += sectionMap;
    sizes.push_back(sectionMap.size());
    const std::size_t sectionMapNumber = sizes.size(), pageMapAt = file.size();
    std::string pageMap;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        pageMap += littleEndian(i + 1, 4) + littleEndian(sizes[i], 4);
    file += systemPage(0x41630E3B, pageMap);

    std::string header("AcFssFcAJMB");
    header.resize(0x6C);
    put(header, 0x54, littleEndian(pageMapAt - 0x100, 8) + littleEndian(sectionMapNumber, 4));
    std::uint32_t random = 1;
    for (char& c : header) {
        random = random * 0x343FD + 0x269EC3;
        c = static_cast<char>(c ^ static_cast<char>(random >> 16));
    }
    put(file, 0x80, header);
    return file;
}

std::string buildR2007(const std::vector<BuiltSection>& sections, bool guarded)
{
    const Guard system(0x169, 239), data(0x11D, 251);
    std::string file("AC1021"), pageMap, map;
    file.resize(0x480);
    put(file, 0x13, littleEndian(30, 2));
    std::size_t number = 0;
    const auto addPage = [&](const std::string& bytes) {
        const std::string page = padded(bytes, 32);
        file += page;
        pageMap += littleEndian(page.size(), 8) + littleEndian(++number, 8);
        return page.size();
    };
    for (const BuiltSection& section : sections) {
        std::string pages;
        std::size_t stored = 0;
        for (std::size_t offset = 0, page = 0; offset < section.bytes.size();
             offset += section.pageSize, ++page) {
            if (isLeftOut(section, page))
                continue;
            const std::string bytes = section.bytes.substr(offset, section.pageSize);
            const std::size_t size = addPage(guarded ? data.woven(padded(bytes, 8)) : bytes);
            pages += littleEndian(offset, 8) + littleEndian(size, 8) + littleEndian(number, 8) +
                     littleEndian(bytes.size(), 8) + littleEndian(bytes.size(), 8) + std::string(16, '\0');
            ++stored;
        }
        std::string name;
        for (const char c : section.name + '\0')
            name += {c, '\0'};
        map += littleEndian(section.bytes.size(), 8) + littleEndian(section.pageSize, 8) +
               std::string(16, '\0') + littleEndian(name.size(), 8) + littleEndian(0, 8) +
               littleEndian(guarded ? 4 : 1, 8) + littleEndian(stored, 8) + name + pages;
    }
    addPage(system.woven(padded(map, 8)));
    const std::size_t sectionMapNumber = number, pageMapAt = file.size();
    file += system.woven(padded(pageMap, 8));

    std::string fields(0x110, '\0');
    put(fields, 0x18, littleEndian(1, 8));
    put(fields, 0x38, littleEndian(pageMapAt - 0x480, 8));
    put(fields, 0x50, littleEndian(pageMap.size(), 8) + littleEndian(pageMap.size(), 8));
    put(fields, 0xB0, littleEndian(map.size(), 8));
    put(fields, 0xC0, littleEndian(sectionMapNumber, 8) + littleEndian(map.size(), 8));
    put(fields, 0xD8, littleEndian(1, 8));
    std::string header = std::string(24, '\0') + littleEndian(static_cast<std::uint32_t>(-0x110), 4) +
                         std::string(4, '\0') + fields;
    header.resize(3 * 239);
    put(file, 0x80, system.woven(header));
    return file;
}

} // namespace zv::dwg
