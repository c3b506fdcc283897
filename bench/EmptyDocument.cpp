#include "BenchDrawing.h"

#include "DocumentEdit.h"

namespace zv::bench {

using namespace zv::dwg;

namespace {

constexpr Handle kFirstHandle = 0x30;

void addSpace(Document& document, const Text& blockName, const Text& layoutName, int tabOrder, bool model)
{
    BlockRecord block;
    block.handle = giveHandle(document);
    block.name = blockName;
    block.layout = true;
    Layout layout;
    layout.handle = giveHandle(document);
    layout.name = layoutName;
    layout.block = block.handle;
    layout.tabOrder = tabOrder;
    layout.model = model;
    document.blocks.push_back(std::move(block));
    document.layouts.push_back(std::move(layout));
}

} // namespace

Document emptyDocument()
{
    Document document;
    document.header.handleSeed = kFirstHandle;
    Layer layer;
    layer.handle = giveHandle(document);
    layer.name = u"0";
    document.header.currentLayer = layer.handle;
    document.layers.push_back(std::move(layer));
    TextStyle style;
    style.handle = giveHandle(document);
    style.name = u"Standard";
    style.font = u"txt";
    document.header.currentTextStyle = style.handle;
    document.textStyles.push_back(std::move(style));
    addSpace(document, u"*Model_Space", u"Model", 0, true);
    addSpace(document, u"*Paper_Space", u"Layout1", 1, false);
    document.modelSpace = 0;
    reindex(document);
    return document;
}

} // namespace zv::bench
