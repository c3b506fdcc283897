#include "drawing/container/Container.h"

#include "DrawingBuilder.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

std::string text(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>('a' + i % 23);
    return bytes;
}

std::string textOf(const std::vector<std::byte>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// A file in memory, opened.
struct Opened {
    explicit Opened(std::string bytes)
        : file(std::move(bytes)), source(std::as_bytes(std::span(file))), container(Container::open(source))
    {
    }
    std::string section(Section which) const
    {
        const auto bytes = (*container)->section(which);
        return bytes ? textOf(*bytes) : "error: " + bytes.error().text;
    }
    std::string objects(std::uint64_t offset, std::size_t length) const
    {
        const auto bytes = (*container)->objectBytes(offset, length);
        return bytes ? textOf(*bytes) : "error: " + bytes.error().text;
    }
    std::string file;
    MemorySource source;
    Result<std::unique_ptr<Container>> container;
};

const std::vector<BuiltSection> kSections{
    {"AcDb:Header", text(100)}, {"AcDb:AcDbObjects", text(700), 200}, {"AcDb:SummaryInfo", text(300), 0x100}};

struct Kind {
    const char* version;
    std::string file;
};

std::vector<Kind> pagedKinds(const std::vector<BuiltSection>& sections)
{
    return {{"AC1018", buildR2004("AC1018", sections)}, {"AC1021", buildR2007(sections)},
            {"AC1024", buildR2004("AC1024", sections)}, {"AC1027", buildR2004("AC1027", sections)},
            {"AC1032", buildR2004("AC1032", sections)}, {"AC1021", buildR2007(sections, false)}};
}

TEST(Container, GivesSectionsOfEveryPagedVersion)
{
    for (const Kind& kind : pagedKinds(kSections)) {
        const Opened opened(kind.file);
        ASSERT_TRUE(opened.container.ok()) << kind.version << opened.container.error().text;
        EXPECT_EQ((*opened.container)->versionText(), kind.version);
        EXPECT_EQ((*opened.container)->codePage(), 30);
        EXPECT_EQ(opened.section(Section::Header), text(100)) << kind.version;
        EXPECT_EQ(opened.section(Section::Objects), text(700)) << kind.version;
        EXPECT_EQ(opened.section(Section::SummaryInfo), text(300)) << kind.version;
        EXPECT_EQ((*opened.container)->section(Section::Preview).error().code, ErrorCode::NotFound);
        EXPECT_TRUE((*opened.container)->damage().empty()) << kind.version;
    }
}

TEST(Container, CutsRecordsAcrossPages)
{
    for (const Kind& kind : pagedKinds(kSections)) {
        const Opened opened(kind.file);
        ASSERT_TRUE(opened.container.ok()) << kind.version;
        for (int again = 0; again < 2; ++again) {
            EXPECT_EQ(opened.objects(150, 300), text(700).substr(150, 300)) << kind.version;
            EXPECT_EQ(opened.objects(699, 1), text(700).substr(699)) << kind.version;
            EXPECT_EQ(opened.objects(700, 0), "") << kind.version;
        }
        EXPECT_FALSE((*opened.container)->objectBytes(650, 51).ok());
        EXPECT_FALSE((*opened.container)->objectBytes(UINT64_MAX, 2).ok());
    }
}

TEST(Container, PagesThatAreNotStoredAreZeros)
{
    std::vector<BuiltSection> sections = kSections;
    sections[1].leftOut = {1, 3};
    std::string expected = text(700);
    std::fill_n(expected.begin() + 200, 200, '\0');
    std::fill_n(expected.begin() + 600, 100, '\0');
    for (const Kind& kind : pagedKinds(sections)) {
        const Opened opened(kind.file);
        ASSERT_TRUE(opened.container.ok()) << kind.version;
        EXPECT_EQ(opened.section(Section::Objects), expected) << kind.version;
        EXPECT_EQ(opened.objects(190, 20), expected.substr(190, 20)) << kind.version;
    }
}

TEST(Container, GivesSectionsBeforeR2004ByTheirLocators)
{
    for (const char* version : {"AC1012", "AC1014", "AC1015"}) {
        const Opened opened(buildR13(version, {{"0", text(50)}, {"1", text(20)}, {"2", text(30)}}, 29));
        ASSERT_TRUE(opened.container.ok()) << version;
        EXPECT_EQ((*opened.container)->codePage(), 29);
        EXPECT_EQ(opened.section(Section::Header), text(50));
        EXPECT_EQ(opened.section(Section::Classes), text(20));
        EXPECT_EQ(opened.section(Section::ObjectMap), text(30));
        EXPECT_EQ(opened.section(Section::Objects), opened.file);
        EXPECT_EQ((*opened.container)->section(Section::AuxHeader).error().code, ErrorCode::NotFound);
    }
}

TEST(Container, DamagedPageOfObjectsLosesOnlyItsOwnRecords)
{
    std::string file = buildR2004("AC1018", kSections);
    // The first page of objects follows that of the header; its packed bytes begin with a long run of
    // literals.
    const std::size_t page = 0x100 + 160;
    ASSERT_EQ(file[page + 32], '\0');
    file[page + 32] = '\x12';
    const Opened opened(std::move(file));
    ASSERT_TRUE(opened.container.ok());
    const std::string objects = opened.section(Section::Objects);
    ASSERT_EQ(objects.size(), 700u);
    EXPECT_EQ(objects.substr(200), text(700).substr(200));
    ASSERT_EQ((*opened.container)->damage().size(), 1u);
    EXPECT_NE((*opened.container)->damage()[0].find("AcDb:AcDbObjects"), std::string::npos);
    EXPECT_FALSE((*opened.container)->objectBytes(0, 10).ok());
}

TEST(Container, WrongChecksumOfAMapIsToldAndNotRefused)
{
    std::string file = buildR2004("AC1018", kSections);
    const std::size_t map = file.rfind("\x3B\x0E\x63\x41");
    ASSERT_NE(map, std::string::npos);
    file[map + 16] = static_cast<char>(file[map + 16] + 1);
    const Opened opened(std::move(file));
    ASSERT_TRUE(opened.container.ok());
    EXPECT_EQ(opened.section(Section::Header), text(100));
    EXPECT_EQ((*opened.container)->damage().size(), 1u);
}

TEST(Container, R2007SetsWrongBytesRight)
{
    std::string file = buildR2007(kSections);
    for (std::size_t i = 0; i < 8 * 3; ++i)
        file[0x80 + 30 * 3 + i] =
            static_cast<char>(file[0x80 + 30 * 3 + i] ^ 0x55); // eight in each header block
    for (std::size_t i = 0; i < 2; ++i)
        file[0x480 + 7 + i] = '!'; // two in the first data page
    const Opened opened(std::move(file));
    ASSERT_TRUE(opened.container.ok()) << opened.container.error().text;
    EXPECT_EQ(opened.section(Section::Header), text(100));
    EXPECT_EQ(opened.section(Section::Objects), text(700));
}

TEST(Container, EveryTruncationGivesAnAnswer)
{
    for (const Kind& kind : pagedKinds(kSections)) {
        for (std::size_t size = 0; size < kind.file.size(); size += 3) {
            const Opened opened(kind.file.substr(0, size));
            if (!opened.container)
                continue;
            for (const Section which : {Section::Header, Section::Objects, Section::SummaryInfo}) {
                const auto bytes = (*opened.container)->section(which);
                EXPECT_TRUE(!bytes || bytes->size() <= 700);
            }
        }
    }
    const std::string old = buildR13("AC1015", {{"0", text(50)}});
    for (std::size_t size = 0; size < old.size(); ++size) {
        const Opened opened(old.substr(0, size));
        EXPECT_TRUE(!opened.container || !(*opened.container)->section(Section::Header)) << size;
    }
}

TEST(Container, SectionTooLargeForItsFileIsRefused)
{
    std::vector<BuiltSection> sections{
        {"AcDb:Header", std::string(std::size_t{4} << 20, 'x'), std::size_t{1} << 19}};
    sections[0].leftOut = {0, 1, 2, 3, 4, 5, 6, 7};
    for (const Kind& kind : pagedKinds(sections)) {
        const Opened opened(kind.file);
        ASSERT_TRUE(opened.container.ok());
        const auto bytes = (*opened.container)->section(Section::Header);
        ASSERT_FALSE(bytes.ok());
        EXPECT_EQ(bytes.error().code, ErrorCode::TooLarge);
    }
}

TEST(Container, PageThatIsNotInThePageMapCostsItsOwnSectionOnly)
{
    std::string file = buildR2004("AC1018", {{"AcDb:Header", text(100)}, {"AcDb:Classes", text(100)}});
    // The number of a section's first page stands behind the section's name.
    const std::size_t at = file.rfind("AcDb:Classes") + 64;
    ASSERT_LT(at, file.size());
    file[at] = 99;
    const Opened opened(std::move(file));
    ASSERT_TRUE(opened.container.ok());
    EXPECT_EQ(opened.section(Section::Header), text(100));
    EXPECT_EQ((*opened.container)->section(Section::Classes).error().code, ErrorCode::Damaged);
}

TEST(Container, SaysWhatIsDamagedAndWhere)
{
    std::string file = buildR2004("AC1018", kSections);
    file[0x80] = 'x';
    EXPECT_EQ(Opened(file).container.error().text, "file header: its name is not there");
    EXPECT_EQ(Opened(buildR13("AC1015", {})).container.error().text, "section locators: a count of 0");
    EXPECT_EQ(Opened(buildR2004("AC1018", kSections).substr(0, 0x90)).container.error().text,
              "file header: the file ends after 144 bytes");
}

/// A file that goes on with zeros up to a size that no memory holds.
class EndlessSource final : public ByteSource {
public:
    explicit EndlessSource(std::string start) : m_start(std::move(start)) {}
    std::uint64_t size() const override { return std::uint64_t{1} << 40; }
    Result<void> read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        for (std::size_t i = 0; i < into.size(); ++i)
            into[i] = static_cast<std::byte>(offset + i < m_start.size() ? m_start[offset + i] : 0);
        return {};
    }

private:
    std::string m_start;
};

TEST(Container, DoesNotReadAWholeFileThatNoMemoryHolds)
{
    const EndlessSource source(buildR13("AC1015", {{"0", text(50)}}));
    const auto container = Container::open(source);
    ASSERT_TRUE(container.ok());
    EXPECT_TRUE((*container)->section(Section::Header).ok());
    EXPECT_EQ((*container)->section(Section::Objects).error().code, ErrorCode::TooLarge);
}

} // namespace
} // namespace zv::dwg
