#include "drawing/entities/StoredPicture.h"
#include "drawing/fonts/FontFolder.h"
#include "drawing/scene/SceneBuilder.h"

/// The picture that a record of another program carries, as a drawing of the version that the first byte
/// tells.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zv::dwg;
    if (size == 0)
        return 0;
    Document document;
    document.version = static_cast<Version>(data[0] % 8);
    document.layers.resize(2);
    document.linetypes.resize(2);
    document.textStyles.resize(1);
    document.blocks.resize(1);
    Entity& entity = document.blocks[0].entities.emplace_back();
    bool complete = false;
    entity.geometry =
        readStoredPicture(std::as_bytes(std::span(data + 1, size - 1)), document, entity, complete);
    static FontFolder fonts{std::string()};
    static_cast<void>(buildScene(document, fonts));
    return 0;
}
