#pragma once

#include "drawing/fonts/FontFolder.h"

namespace zv::dwg {

/// Shape fonts and TrueType fonts of a folder, then the system's TrueType fonts. Needs an application object.
class SystemFonts final : public FontFolder {
public:
    using FontFolder::FontFolder;

    /// One for all that draw with the same folder, so that each font is read once. Only for the main thread.
    static std::shared_ptr<FontProvider> shared(const std::string& folder);

protected:
    std::shared_ptr<Font> findOther(const FontRequest& request) override;
    std::shared_ptr<Font> lastResort() override;
};

} // namespace zv::dwg
