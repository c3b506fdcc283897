#include "drawing/records/ObjectRecords.h"

namespace zv::dwg {

namespace {

constexpr unsigned kFewestHandleBits = 8;

/// Flags of a multiline style: as the file has them, and as MLineStyle names them.
constexpr std::pair<unsigned, std::uint32_t> kStyleFlags[] = {{1, 2},   {2, 1},     {16, 16},    {32, 64},
                                                              {64, 32}, {256, 256}, {512, 1024}, {1024, 512}};

/// How a layout is printed.
void readPlotSettings(RecordReader& in, Layout& layout)
{
    in.text();                  // Page setup.
    in.text();                  // Printer.
    in.bitShort();              // Flags.
    for (int i = 0; i < 4; ++i) // Margins.
        in.bitDouble();
    layout.paperWidth = in.bitDouble();
    layout.paperHeight = in.bitDouble();
    in.text();      // Name of the paper's size.
    in.bitPoint2(); // Origin.
    for (int i = 0; i < 3; ++i)
        in.bitShort(); // Units, rotation, what is printed.
    in.bitPoint2();    // The window's corners.
    in.bitPoint2();
    if (in.version() <= Version::R2000)
        in.text();  // The view's name.
    in.bitDouble(); // Scale: two parts.
    in.bitDouble();
    in.text();      // Style sheet.
    in.bitShort();  // Standard scale.
    in.bitDouble(); // Its factor.
    in.bitPoint2(); // Origin of the image.
    if (in.version() >= Version::R2004) {
        for (int i = 0; i < 3; ++i)
            in.bitShort(); // Shading.
        in.handle();       // The view.
    }
    if (in.version() >= Version::R2007)
        in.handle(); // Visual style.
}

} // namespace

std::uint32_t mlineStyleFlags(unsigned stored)
{
    std::uint32_t flags = 0;
    for (const auto& [inFile, named] : kStyleFlags)
        flags |= (stored & inFile) != 0 ? named : 0;
    return flags;
}

unsigned storedMLineStyleFlags(std::uint32_t flags)
{
    unsigned stored = 0;
    for (const auto& [inFile, named] : kStyleFlags)
        stored |= (flags & named) != 0 ? inFile : 0;
    return stored;
}

Dictionary readDictionary(RecordReader& in)
{
    readObjectHeader(in);
    const std::int64_t stored = in.bitLong();
    if (in.version() == Version::R14)
        in.rawChar();
    if (in.version() >= Version::R2000) {
        in.bitShort(); // Cloning.
        in.rawChar();  // Whether it owns its entries.
    }
    Dictionary dictionary(in.handles().checkedCount(stored, kFewestHandleBits));
    for (auto& [name, handle] : dictionary) {
        name = in.text();
        handle = in.handle();
    }
    return dictionary;
}

MLineStyleRecord readMLineStyle(RecordReader& in)
{
    MLineStyleRecord out;
    MLineStyle& style = out.style;
    style.handle = readObjectHeader(in).handle;
    style.name = in.text();
    in.text(); // Description.
    style.flags = mlineStyleFlags(static_cast<std::uint16_t>(in.bitShort()));
    style.fill = in.color();
    style.startAngle = in.bitDouble();
    style.endAngle = in.bitDouble();
    style.elements.resize(in.rawChar());
    for (MLineStyleElement& element : style.elements) {
        element.offset = in.bitDouble();
        element.color = in.color();
        if (in.version() >= Version::R2018)
            element.linetype = in.handle();
        else
            out.linetypePlaces.push_back(in.bitShort());
    }
    return out;
}

Layout readLayout(RecordReader& in)
{
    Layout layout;
    layout.handle = readObjectHeader(in).handle;
    readPlotSettings(in, layout);
    layout.name = in.text();
    layout.tabOrder = in.bitLong();
    in.bitShort();  // Flags.
    in.bitPoint3(); // Origin of the user's coordinates.
    layout.limitsMin = in.rawPoint2();
    layout.limitsMax = in.rawPoint2();
    in.bitPoint3(); // Insertion base.
    in.bitPoint3(); // The user's axes.
    in.bitPoint3();
    in.bitDouble(); // Elevation.
    in.bitShort();
    layout.extentsMin = in.bitPoint3();
    layout.extentsMax = in.bitPoint3();
    layout.block = in.handle();
    return layout;
}

std::vector<std::pair<Handle, Handle>> readSortTable(RecordReader& in)
{
    readObjectHeader(in);
    in.handle(); // The block.
    std::vector<std::pair<Handle, Handle>> order(in.count(kFewestHandleBits));
    for (auto& [entity, sort] : order) {
        sort = in.handleReference().value;
        entity = in.handle();
    }
    return order;
}

Text readImageDefinition(RecordReader& in)
{
    readObjectHeader(in);
    in.bitLong(); // Version.
    in.rawPoint2();
    return in.text();
}

Color readColorObject(RecordReader& in)
{
    readObjectHeader(in);
    return in.color();
}

} // namespace zv::dwg
