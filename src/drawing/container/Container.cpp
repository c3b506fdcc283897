#include "drawing/container/Container.h"

#include "drawing/container/ContainerR13.h"
#include "drawing/container/ContainerR2004.h"
#include "drawing/container/ContainerR2007.h"
#include "drawing/container/FileStart.h"

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
