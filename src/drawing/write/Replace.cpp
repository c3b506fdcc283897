#include "drawing/write/Replace.h"

#include "drawing/write/Bytes.h"

namespace zv::dwg {

Result<std::string> replaceProperties(std::string_view file, const Properties& properties)
{
    const MemorySource source(bytesOf(file));
    const auto container = Container::open(source);
    if (!container)
        return container.error();
    switch ((*container)->version()) {
    case Version::R13:
    case Version::R14:
        return Error{ErrorCode::Unsupported, "drawings of R13 and R14 hold no properties"};
    case Version::R2000:
        return replacePropertiesRecord(file, **container, properties);
    case Version::R2007:
        return replaceSummaryR2007(file, **container, properties);
    default:
        return replaceSummaryR2004(file, **container, properties);
    }
}

} // namespace zv::dwg
