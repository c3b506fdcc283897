// zelvora-samples: makes the sample office, its user, the stand-in drawing and the contact sheet.
#include "ContactSheet.h"
#include "Office.h"
#include "drawing/paint/Picture.h"
#include "platform/Files.h"

#include <QGuiApplication>

#include <iostream>

namespace {

using namespace zv;
using namespace zv::samples;

constexpr int kPreviewWidth = 256, kPreviewHeight = 192;

dwg::Pixels painted(const dwg::Document& document)
{
    return dwg::renderPreview(document, kPreviewWidth, kPreviewHeight);
}

Result<void> makeFailed(const std::string& path)
{
    const auto file = drawingFile(failedDrawing(), painted);
    if (!file)
        return file.error();
    return writeFile(path, *file);
}

Result<void> run(const std::vector<std::string>& words)
{
    const std::string command = words.empty() ? "" : words[0];
    if (command == "office" && (words.size() == 3 || words.size() == 4))
        return makeOffice(words[1], std::filesystem::absolute(words[2]), painted,
                          words.size() == 4 ? words[3] : "");
    if (command == "user" && words.size() == 2)
        return makeUser(words[1]);
    if (command == "failed" && words.size() == 2)
        return makeFailed(words[1]);
    if (command == "sheet" && words.size() == 2)
        return makeContactSheet(words[1]);
    return Error{ErrorCode::Failed, "usage: zelvora-samples office INSTALLATION OFFICE [WINDOWS-NAME] | "
                                    "user OFFICE | failed FILE.dwg | sheet FILE.png"};
}

} // namespace

int main(int argc, char** argv)
{
    // Pictures need fonts, and no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const auto done = run(std::vector<std::string>(argv + 1, argv + argc));
    if (!done)
        std::cerr << "zelvora-samples: " << done.error().text << '\n';
    return done ? 0 : 1;
}
