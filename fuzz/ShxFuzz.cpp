#include "drawing/fonts/ShxFont.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    for (const bool vertical : {false, true}) {
        const auto font = zv::dwg::ShxFont::read(file, vertical);
        if (!font)
            return 0;
        for (std::uint32_t number = 0; number < 300; ++number) {
            static_cast<void>((*font)->figure(number));
            static_cast<void>((*font)->glyph(static_cast<char32_t>(number)));
        }
    }
    return 0;
}
