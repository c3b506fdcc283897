#include "Fuzz.h"

#include "drawing/preview/Preview.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto previews = zv::dwg::readPreviews(fuzzedSource(data, size));
    if (!previews)
        return 0;
    for (const zv::dwg::PreviewImage& image : *previews) {
        if (image.kind == zv::dwg::PreviewKind::Bmp)
            static_cast<void>(zv::dwg::decodeBitmap(image.bytes));
    }
    return 0;
}
