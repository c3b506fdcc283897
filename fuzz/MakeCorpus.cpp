// Writes the files that the fuzzers start from: small drawings of every container, and a shape file.
//   make-corpus FOLDER

#include "drawing/DrawingBuilder.h"
#include "drawing/EveryKind.h"
#include "drawing/Writer.h"
#include "drawing/fonts/StrokeFont.h"
#include "drawing/write/BitWriter.h"
#include "platform/Files.h"

#include <cstdio>
#include <filesystem>

namespace {

using namespace zv;
using namespace zv::dwg;

std::string summary(bool wide)
{
    std::string bytes;
    const auto add = [&](const std::string& text) {
        bytes += littleEndian(text.size(), 2);
        for (const char c : text) {
            bytes += c;
            if (wide)
                bytes += '\0';
        }
    };
    for (const char* text : {"Stair", "Detail", "Ann", "stair, steel", "of steel", "Bob", "3", "http://a"})
        add(text);
    bytes += std::string(24, '\0') + littleEndian(1, 2);
    add("Scale");
    add("50");
    return bytes + std::string(8, '\0');
}

/// A drawing of the writer's, with everything in it.
std::string everything()
{
    WriteOptions options;
    options.properties = Properties{};
    options.properties->title = u"Stair";
    options.properties->custom.emplace_back(u"Scale", u"50");
    options.preview = Pixels{8, 4, std::vector<std::uint8_t>(8 * 4 * 4, 0x55)};
    const auto file = writeDocument(test::everyKind(), options);
    return file ? *file : std::string();
}

/// A picture of a few figures, behind the byte that tells the drawing's version.
std::string storedPicture(char version)
{
    BitWriter figures;
    const auto chunk = [&](std::uint32_t kind, const BitWriter& fields) {
        figures.rawLong(static_cast<std::uint32_t>(fields.bytes().size() + 8));
        figures.rawLong(kind);
        figures.rawBytes(fields.bytes());
    };
    const auto doubles = [](BitWriter& out, std::initializer_list<double> values) {
        for (const double value : values)
            out.rawDouble(value);
    };
    BitWriter color, fill, circle, arc, polygon, shell, text, matrix, line, record;
    color.rawLong(1);
    fill.rawLong(1);
    doubles(circle, {1, 2, 0, 4, 0, 0, 1});
    doubles(arc, {0, 0, 0, 2, 0, 0, 1, 0, 1, 0, 1.5});
    arc.rawLong(0);
    polygon.rawLong(3);
    doubles(polygon, {0, 0, 0, 1, 0, 0, 1, 1, 0});
    shell.append(polygon);
    for (const std::uint32_t entry : {4, 3, 0, 1, 2, 0, 0, 0})
        shell.rawLong(entry);
    doubles(text, {0, 0, 0, 0, 0, 1, 1, 0, 0, 2.5, 1, 0});
    text.rawBytes(std::string_view("Wal\0", 4));
    doubles(matrix, {1, 0, 0, 5, 0, 1, 0, 5, 0, 0, 1, 0, 0, 0, 0, 1});
    record.bitShort(512);
    record.bitLong(2);
    for (const double x : {1, 4})
        record.rawPoint2({x, 2});
    line.rawLong(static_cast<std::uint32_t>(record.bytes().size()));
    line.rawBytes(record.bytes());
    chunk(14, color);
    chunk(29, matrix);
    chunk(20, fill);
    chunk(7, polygon);
    chunk(2, circle);
    chunk(4, arc);
    chunk(9, shell);
    chunk(10, text);
    chunk(33, line);
    chunk(31, {});
    std::string bytes(1, version);
    putLong(bytes, static_cast<std::uint32_t>(figures.bytes().size() + 8));
    putLong(bytes, 10);
    return bytes + figures.bytes();
}

bool write(const std::filesystem::path& folder, const std::string& name, const std::string& bytes)
{
    std::error_code problem;
    std::filesystem::create_directories(folder, problem);
    return writeFile((folder / name).string(), bytes).ok();
}

} // namespace

int main(int count, char** values)
{
    if (count != 2) {
        std::fputs("usage: make-corpus FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder(values[1]);
    const std::string whole = everything();
    bool done = write(folder / "shx", "lettering.shx", strokeFontFile());
    for (const char version : {1, 3, 7})
        done &= write(folder / "picture", std::to_string(version) + ".bin", storedPicture(version));
    for (const char* subject : {"preview", "properties", "document"}) {
        done &= write(folder / subject, "AC1015.dwg", whole);
        done &= write(folder / subject, "AC1018.dwg",
                      buildR2004("AC1018", {{"AcDb:SummaryInfo", summary(false), 0x100}}));
        done &=
            write(folder / subject, "AC1021.dwg", buildR2007({{"AcDb:SummaryInfo", summary(true), 0x80}}));
        done &= write(folder / subject, "AC1021-plain.dwg",
                      buildR2007({{"AcDb:SummaryInfo", summary(true)}}, false));
        done &= write(folder / subject, "AC1032.dwg",
                      buildR2004("AC1032", {{"AcDb:SummaryInfo", summary(true), 0x100}}));
    }
    return done ? 0 : 1;
}
