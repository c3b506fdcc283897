#include "drawing/Container.h"

#include "drawing/ContainerR13.h"
#include "drawing/ContainerR2004.h"
#include "drawing/ContainerR2007.h"
#include "drawing/FileStart.h"

namespace zv::dwg {

Result<std::unique_ptr<Container>> Container::open(const ByteSource& source)
{
    const auto start = FileStart::read(source);
    if (!start)
        return start.error();
    const FileStart fields(*start);
    if (fields.version() <= Version::R2000)
        return ContainerR13::open(source, fields.version());
    if (fields.version() == Version::R2007)
        return ContainerR2007::open(source, fields);
    return ContainerR2004::open(source, fields);
}

} // namespace zv::dwg
