#include "Fuzz.h"

#include "drawing/Reader.h"
#include "drawing/fonts/FontFolder.h"
#include "drawing/scene/SceneBuilder.h"

/// The picture of whatever is read, the paper sheets' as well.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto document = zv::dwg::readDocument(fuzzedSource(data, size));
    if (!document)
        return 0;
    static zv::dwg::FontFolder fonts{std::string()};
    static_cast<void>(zv::dwg::buildScene(*document, fonts));
    for (const zv::dwg::Layout& layout : document->layouts) {
        zv::dwg::SceneOptions options;
        options.block = layout.block;
        static_cast<void>(zv::dwg::buildScene(*document, fonts, options));
    }
    return 0;
}
