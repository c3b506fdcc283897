#include "drawing/fonts/FontFolder.h"

#include "drawing/fonts/ShxFont.h"
#include "drawing/fonts/StrokeFont.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Text.h"

namespace zv::dwg {

namespace {

/// Asks one font after the other.
class FontChain final : public Font {
public:
    explicit FontChain(std::vector<std::shared_ptr<Font>> fonts) : m_fonts(std::move(fonts)) {}
    const Glyph* glyph(char32_t character) override
    {
        for (const auto& font : m_fonts)
            if (const Glyph* glyph = font->glyph(character))
                return glyph;
        return nullptr;
    }

private:
    std::vector<std::shared_ptr<Font>> m_fonts;
};

std::string lower(std::string text)
{
    for (char& c : text)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

std::string shapeFileName(const Text& file)
{
    const std::string path = narrow(file);
    std::string name = lower(std::string(fileNamePart(path)));
    if (!name.empty() && name.find('.') == std::string::npos)
        name += ".shx";
    return name;
}

} // namespace

FontFolder::FontFolder(std::string folder)
    : m_folder(std::move(folder)), m_lettering(std::make_shared<StrokeFont>())
{
}

std::shared_ptr<Font> FontFolder::findOther(const FontRequest&)
{
    return nullptr;
}
std::shared_ptr<Font> FontFolder::lastResort()
{
    return nullptr;
}

std::shared_ptr<Font> FontFolder::find(const FontRequest& request)
{
    const auto known = m_found.find(request);
    if (known != m_found.end())
        return known->second;
    std::vector<std::shared_ptr<Font>> chain;
    if (auto other = request.shapes ? nullptr : findOther(request))
        chain.push_back(std::move(other));
    for (const Text* file : {&request.file, &request.bigFile})
        if (auto font = shapeFont(*file, request))
            chain.push_back(std::move(font));
    if (!request.shapes) {
        chain.push_back(m_lettering);
        if (auto last = lastResort())
            chain.push_back(std::move(last));
    }
    auto font = std::make_shared<FontChain>(std::move(chain));
    m_found.emplace(request, font);
    return font;
}

std::shared_ptr<Font> FontFolder::shapeFont(const Text& file, const FontRequest& request)
{
    const std::string name = shapeFileName(file);
    if (!name.ends_with(".shx"))
        return nullptr;
    const std::string bytes = fileOfFolder(name);
    if (bytes.empty())
        return nullptr;
    auto font = ShxFont::read(bytes, request.vertical);
    if (!font || font.value()->isFont() == request.shapes)
        return nullptr;
    return font.value();
}

std::string FontFolder::fileOfFolder(std::string_view name) const
{
    if (m_folder.empty() || name.empty())
        return {};
    if (auto bytes = readFile(joinPath(m_folder, name)))
        return bytes.value();
    for (const std::string& found : filesIn(m_folder, {}).valueOr({})) {
        if (sameText(found, name))
            return readFile(joinPath(m_folder, found)).valueOr({});
    }
    return {};
}

} // namespace zv::dwg
