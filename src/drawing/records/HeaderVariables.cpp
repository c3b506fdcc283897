#include "drawing/records/HeaderVariables.h"

#include "drawing/container/Container.h"
#include "drawing/records/HeaderLayout.h"
#include "drawing/records/SectionReader.h"

namespace zv::dwg {

namespace {

/// Reads header variables, and notes where those stand that are asked for.
class HeaderIn : public FieldsIn {
public:
    HeaderIn(RecordReader& in, HeaderPlaces& places) : FieldsIn(in), m_places(places) {}

    void handle(Handle& value, Table) { value = next(); }
    void pointer(Handle& value) { value = next(); }
    void owned(Handle& value) { value = next(); }
    void noHandle() { next(); }
    /// This one stands among the fields in every version.
    void nextHandle(Handle& value) { value = reader().handleReference().value; }
    void marked(HeaderPlace place, auto each)
    {
        FieldPlace& noted = m_places[static_cast<std::size_t>(place)];
        noted.from = reader().position();
        each();
        noted.to = reader().position();
    }

private:
    /// Before R2007 the handles stand among the other fields.
    Handle next()
    {
        BitReader& handles = version() >= Version::R2007 ? reader().handles() : reader();
        return handles.handleReference().value;
    }

    HeaderPlaces& m_places;
};

} // namespace

Result<HeaderSection> readHeaderVariables(std::span<const std::byte> section, Version version,
                                          int maintenance, int codePage)
{
    auto opened = openSection(section, version, maintenance, codePage);
    if (!opened)
        return opened.error();
    HeaderSection out;
    HeaderIn fields(*opened, out.places);
    layoutHeader(fields, out.variables, out.handles, DimensionStyle(), HeaderOrigin());
    if (!opened->ok())
        return Error{ErrorCode::Damaged, "the header variables are cut short"};
    return out;
}

Result<HeaderSection> readHeaderVariables(const Container& container)
{
    const auto section = container.section(Section::Header);
    if (!section)
        return section.error();
    return readHeaderVariables(*section, container.version(), container.maintenanceVersion(),
                               container.codePage());
}

} // namespace zv::dwg
