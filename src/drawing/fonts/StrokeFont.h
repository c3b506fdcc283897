#pragma once

#include "drawing/fonts/Font.h"

#include <string>
#include <unordered_map>

namespace zv::dwg {

/// The house's own lettering: single strokes and round corners, for the Latin alphabets and the signs of
/// drawings. It stands in for every shape font that is missing.
class StrokeFont final : public Font {
public:
    StrokeFont();
    const Glyph* glyph(char32_t character) override;

private:
    std::unordered_map<char32_t, Glyph> m_glyphs;
};

/// The same lettering as a compiled shape file of the unifont form.
std::string strokeFontFile();

} // namespace zv::dwg
