#include "drawing/write/Replace.h"

namespace zv::dwg {

Result<std::string> replaceProperties(std::string_view file, const Properties& properties)
{
    const MemorySource source(std::as_bytes(std::span(file.data(), file.size())));
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
        return Error{ErrorCode::Unsupported,
                     "drawings of AutoCAD 2007 to 2009 can only be read, because their pages are "
                     "coded against errors"};
    default:
        return replaceSummarySection(file, **container, properties);
    }
}

} // namespace zv::dwg
