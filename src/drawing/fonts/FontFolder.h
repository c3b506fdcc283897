#pragma once

#include "drawing/fonts/Font.h"

#include <functional>
#include <map>
#include <string>

namespace zv::dwg {

/// Finds shape fonts in one folder, and puts the house's own lettering in the place of those that are
/// missing. A character that a font lacks comes from its big font, then from the house's lettering.
class FontFolder : public FontProvider {
public:
    /// `folder` is in the program's own text; empty: no folder, only the house's lettering.
    explicit FontFolder(std::string folder);
    std::shared_ptr<Font> find(const FontRequest& request) override;

protected:
    /// Another kind of font for the request; null when shape fonts are to be used. This one knows none.
    virtual std::shared_ptr<Font> findOther(const FontRequest& request);
    /// A font for the characters that no other has; null when there is none.
    virtual std::shared_ptr<Font> lastResort();

    const std::string& folder() const { return m_folder; }
    /// The bytes of a file of the folder whose name is `name` without regard to case; empty when there is
    /// none.
    std::string fileOfFolder(std::string_view name) const;

private:
    std::shared_ptr<Font> shapeFont(const Text& file, const FontRequest& request);

    std::string m_folder;
    std::map<FontRequest, std::shared_ptr<Font>> m_found;
    std::shared_ptr<Font> m_lettering;
};

} // namespace zv::dwg
