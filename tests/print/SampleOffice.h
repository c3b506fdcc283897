#pragma once

#include "Office.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "drawing/paint/Picture.h"
#include "library/ListFile.h"
#include "print/PrintLib.h"
#include "support/OfficeFixture.h"

#include <filesystem>

namespace zv {

/// The sample office with its libraries, as the installation folder of the running program.
class SampleOffice : public OfficeFixture {
protected:
    SampleOffice()
    {
        const std::filesystem::path empty = folder.file("bin");
        std::filesystem::create_directory(empty);
        std::filesystem::create_directory(folder.file("out"));
        const auto made = samples::makeOffice(empty, installation, [](const dwg::Document&) {
            return dwg::Pixels{8, 8, std::vector<std::uint8_t>(8 * 8 * 4, 128)};
        });
        EXPECT_TRUE(made);
        setKey(ProfileFile::User, "Settings", "AOT", "0");
        setKey(ProfileFile::User, "Settings", "RibSet", "2");
    }
    PrintLib& window() { return *static_cast<PrintLib*>(program->loaded(QStringLiteral("PrintLib"))); }
    bool open()
    {
        start();
        return click(QStringLiteral("Command7")) && appears(QStringLiteral("PrintLib"));
    }
    /// Every library of the catalogue, and not the user's own.
    void selectAll()
    {
        for (int row = 1; row < window().List1->count(); ++row)
            window().List1->item(row)->setSelected(true);
    }
    /// The paths of all lines, in the order of the run.
    std::vector<std::string> paths()
    {
        std::vector<std::string> found;
        for (int row = 1; row < window().List1->count(); ++row) {
            const std::string name = window().List1->item(row)->text().toStdString();
            for (const ListLine& line : readListFile(listFilePath(installation, name)).valueOr({}))
                found.push_back(line.path);
        }
        return found;
    }
    /// Those of them that can be shown; the office has a drawing that is missing and one that is damaged.
    std::vector<std::string> readablePaths()
    {
        std::vector<std::string> found = paths();
        std::erase_if(found, [](const std::string& path) { return !dwg::openDrawing(path, {}).ok(); });
        return found;
    }
};

} // namespace zv
