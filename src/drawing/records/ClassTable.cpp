#include "drawing/records/ClassTable.h"

#include "drawing/records/ObjectType.h"
#include "drawing/records/SectionReader.h"
#include "platform/Text.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr int kEntityClass = 0x1F2;

ObjectClass readClass(RecordReader& in)
{
    ObjectClass one;
    one.number = in.bitShort();
    in.bitShort(); // What may be done to its objects without their program.
    in.text();     // The program.
    in.text();     // The C++ class.
    one.name = toUtf8(in.text());
    in.bit(); // Was a proxy.
    one.entity = in.bitShort() == kEntityClass;
    if (in.version() >= Version::R2004) {
        for (int unused = 0; unused < 5; ++unused)
            in.bitLong();
    }
    return one;
}

} // namespace

Result<ClassTable> ClassTable::read(std::span<const std::byte> section, Version version, int maintenance,
                                    int codePage)
{
    auto opened = openSection(section, version, maintenance, codePage);
    if (!opened)
        return opened.error();
    RecordReader& in = *opened;
    int highest = INT16_MAX;
    if (version >= Version::R2004) {
        highest = version >= Version::R2007 ? in.bitLong() : in.bitShort();
        if (version == Version::R2004)
            in.skip(16);
        in.bit();
    }
    ClassTable table;
    // Fields end on a whole byte, so that up to seven bits are left behind the last class.
    while (in.left() >= 8) {
        ObjectClass one = readClass(in);
        if (!in.ok() || one.number < objectType::kFirstClass)
            break;
        const bool last = one.number >= highest;
        table.m_classes.push_back(std::move(one));
        if (last)
            break;
    }
    std::stable_sort(table.m_classes.begin(), table.m_classes.end(),
                     [](const ObjectClass& a, const ObjectClass& b) { return a.number < b.number; });
    return table;
}

const ObjectClass* ClassTable::find(int number) const
{
    const auto found = std::lower_bound(m_classes.begin(), m_classes.end(), number,
                                        [](const ObjectClass& a, int wanted) { return a.number < wanted; });
    return found != m_classes.end() && found->number == number ? &*found : nullptr;
}

} // namespace zv::dwg
