#include "Xrefs.h"

#include "DocumentEdit.h"
#include "FindFile.h"

#include "drawing/Reader.h"
#include "platform/Text.h"

#include <algorithm>

namespace zv::bench {

namespace {

/// A file that refers to ever new ones ends here.
constexpr std::size_t kDeepest = 16;
constexpr int kMostReferences = 1000;

/// Names that mean the same in every drawing.
bool isCommonName(std::u16string_view name)
{
    constexpr std::u16string_view kCommon[] = {u"0", u"ByLayer", u"ByBlock", u"Continuous"};
    return std::any_of(std::begin(kCommon), std::end(kCommon),
                       [name](std::u16string_view common) { return sameName(name, common); });
}

template <class Table> void putBefore(const dwg::Text& start, Table& table)
{
    for (auto& entry : table) {
        if (!isCommonName(entry.name))
            entry.name = start + entry.name;
    }
}

/// Puts one drawing's references in.
class Resolver {
public:
    explicit Resolver(XrefFiles& files) : m_files(files) {}

    void resolve(dwg::Document& document, const std::string& path)
    {
        m_open.push_back(path);
        // The table grows by what the files bring, which has nothing left to resolve.
        const std::size_t own = document.blocks.size();
        for (std::size_t index = 0; index < own; ++index) {
            if (document.blocks[index].xref)
                fill(document, index, path);
        }
        m_open.pop_back();
    }

private:
    void fill(dwg::Document& document, std::size_t index, const std::string& path)
    {
        const dwg::BlockRecord& block = document.blocks[index];
        const dwg::Text name = block.name;
        if (block.xrefOverlay && m_open.size() > 1)
            return;
        const std::string file = findXrefFile(narrow(block.xrefPath), path);
        const bool isOpen = std::find(m_open.begin(), m_open.end(), file) != m_open.end();
        if (file.empty() || isOpen || m_open.size() > kDeepest || --m_left < 0)
            return showPath(document, index);
        const Result<std::shared_ptr<const dwg::Document>> read = m_files.read(file);
        if (!read)
            return showPath(document, index);
        dwg::Document content = **read;
        resolve(content, file);
        const dwg::Text start = name + u"|";
        putBefore(start, content.layers);
        putBefore(start, content.linetypes);
        putBefore(start, content.textStyles);
        putBefore(start, content.dimensionStyles);
        putBefore(start, content.mlineStyles);
        for (dwg::BlockRecord& own : content.blocks) {
            if (!own.layout && !own.anonymous)
                own.name = start + own.name;
        }
        static_cast<void>(importAsBlock(document, content, name));
    }

    static void showPath(dwg::Document& document, std::size_t index)
    {
        dwg::TextLine text;
        text.text = u"Xref " + document.blocks[index].xrefPath;
        text.height = document.header.textSize > 0 ? document.header.textSize : 1;
        text.style = document.header.currentTextStyle;
        dwg::Entity entity = newEntity(document, "TEXT", std::move(text), document.header.currentLayer);
        document.blocks[index].base = {};
        document.blocks[index].entities.assign(1, std::move(entity));
    }

    XrefFiles& m_files;
    int m_left = kMostReferences;
    std::vector<std::string> m_open; ///< The files that stand inside each other just now, outermost first.
};

} // namespace

Result<std::shared_ptr<const dwg::Document>> XrefFiles::read(const std::string& path)
{
    if (const auto known = m_read.find(path); known != m_read.end())
        return known->second;
    const auto readFile = [&path]() -> Result<std::shared_ptr<const dwg::Document>> {
        const Result<std::unique_ptr<ByteSource>> source = openByteSource(path);
        if (!source)
            return source.error();
        Result<dwg::Document> document = dwg::readDocument(**source);
        if (!document)
            return document.error();
        return std::shared_ptr<const dwg::Document>(std::make_shared<dwg::Document>(std::move(*document)));
    };
    return m_read.emplace(path, readFile()).first->second;
}

dwg::Document withXrefs(const dwg::Document& document, const std::string& path, XrefFiles& files)
{
    dwg::Document seen = document;
    Resolver(files).resolve(seen, path);
    return seen;
}

bool hasXrefs(const dwg::Document& document)
{
    return std::any_of(document.blocks.begin(), document.blocks.end(),
                       [](const dwg::BlockRecord& block) { return block.xref; });
}

} // namespace zv::bench
