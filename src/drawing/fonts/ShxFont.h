#pragma once

#include "drawing/fonts/Font.h"
#include "platform/Result.h"

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>

namespace zv::dwg {

/// A compiled shape file: figures as pen movements on a grid. A figure is worked out when it is first asked
/// for.
/// Format: the shape definitions of "AutoCAD Customization Guide" in their three compiled forms (shapes,
/// bigfont, unifont).
class ShxFont final : public Font {
public:
    enum class Kind { Shapes, BigFont, UniFont };

    /// `vertical` chooses the movements for text that runs downwards. Errors: Damaged, no shape file, or its
    /// index points outside; TooLarge, over 16 MiB.
    static Result<std::shared_ptr<ShxFont>> read(std::string_view file, bool vertical = false);

    Kind kind() const { return m_kind; }
    /// Whether it holds letters, and not only shapes.
    bool isFont() const { return m_isFont; }
    const std::string& name() const { return m_name; }
    /// The character's figure; for files of 8-bit codes the character is its code, for bigfonts a two-byte
    /// code as well.
    const Glyph* glyph(char32_t character) override;
    /// A figure by number, in grid units for a file that is no font.
    const Glyph* figure(std::uint32_t number);
    /// The number of a named figure; 0 when there is none.
    std::uint32_t numberOf(std::string_view figureName) const;

private:
    friend class ShxPen;
    struct Place {
        std::size_t offset = 0, size = 0;
    };

    Result<void> readShapes(std::size_t at);
    Result<void> readBigFont(std::size_t at);
    Result<void> readUniFont(std::size_t at);
    Result<void> addFigure(std::uint32_t number, std::size_t offset, std::size_t size);
    void readFontFigure();

    std::string m_bytes;
    Kind m_kind = Kind::Shapes;
    bool m_isFont = false, m_vertical = false;
    std::string m_name;
    double m_unit = 1; ///< Size of one grid step.
    std::unordered_map<std::uint32_t, Place> m_figures;
    std::map<std::string, std::uint32_t, std::less<>> m_names;
    std::unordered_map<std::uint32_t, Glyph> m_glyphs;
};

} // namespace zv::dwg
