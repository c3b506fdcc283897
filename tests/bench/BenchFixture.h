#pragma once

#include "CommandLine.h"
#include "DocumentEdit.h"
#include "FindFile.h"
#include "Workshop.h"

#include "drawing/Writer.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "support/TemporaryFolder.h"
#include "support/TypedPath.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zv::bench {

/// The bench without a window: what it would show is kept.
class BenchFixture : public testing::Test, protected BenchFront {
protected:
    BenchFixture() { workshop.add(); }

    void write(const std::string& text) override { history.push_back(text); }
    void zoom(const ZoomRequest& request) override { zooms.push_back(request); }
    void refresh() override {}
    std::string chooseFile(bool, const std::string& suggested) override
    {
        suggestedFile = suggested;
        return chosenFile;
    }
    Keep askToKeep(const std::vector<std::string>& titles) override
    {
        askedFor = titles;
        return keep;
    }
    bool agrees(const std::string& question, const std::string&) override
    {
        questions.push_back(question);
        return agreesToAll;
    }
    bool editProperties(dwg::Properties& properties) override
    {
        properties.comments = u"edited";
        return true;
    }
    double pickRadius() const override { return 0.1; }
    void quit() override { history.push_back("quit"); }

    BenchDrawing& drawing() { return *workshop.active(); }
    std::vector<dwg::Entity>& entities() { return drawing().modelSpace().entities; }
    template <class Shape> const Shape& shape(std::size_t index)
    {
        return std::get<Shape>(entities()[index].geometry);
    }
    std::string prompt() const { return line.prompt().text; }

    /// A library drawing with a line from (1,1) to (2,1) on layer "Steel", its base at (1,1).
    std::string makeBolt(const std::string& name = "Bolt.dwg", int units = 0)
    {
        dwg::Document document = emptyDocument();
        dwg::Layer layer;
        layer.name = u"Steel";
        layer.handle = giveHandle(document);
        const dwg::Handle steel = layer.handle;
        document.layers.push_back(layer);
        reindex(document);
        document.header.insertionBase = {1, 1, 0};
        document.header.insertionUnits = units;
        document.blocks[document.modelSpace].entities.push_back(
            newEntity(document, "LINE", dwg::Line{{1, 1, 0}, {2, 1, 0}, 0, dwg::kZAxis}, steel));
        return typedPath(folder.write(name, dwg::writeDocument(document, {}).valueOr("")));
    }

    TemporaryFolder folder;
    std::vector<std::string> history;
    std::vector<ZoomRequest> zooms;
    std::string chosenFile, suggestedFile;
    std::vector<std::string> askedFor;
    Keep keep = Keep::Cancel;
    std::vector<std::string> questions;
    bool agreesToAll = false;
    Workshop workshop{*this};
    CommandLine line{workshop};
};

} // namespace zv::bench
