#include "drawing/Reader.h"
#include "drawing/preview/PngWriter.h"
#include "drawing/preview/Preview.h"
#include "drawing/tool/Info.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/FolderWalk.h"
#include "platform/RunProgram.h"
#include "platform/System.h"
#include "platform/Text.h"

#include <algorithm>
#include <clocale>

namespace {

using namespace zv;
using namespace zv::dwg;

using Arguments = std::vector<std::string>;

constexpr int kDone = 0, kFailed = 1, kUsage = 2;

int failed(const std::string& path, const Error& error)
{
    print("zelvora-dwg: " + namingFile(path, error) + "\n", Output::Errors);
    return kFailed;
}

int usage()
{
    print("usage: zelvora-dwg info [--json] FILE...\n"
          "       zelvora-dwg preview FILE OUT.png\n"
          "       zelvora-dwg render FILE OUT.png|.svg|.pdf [--size WxH]\n"
          "       zelvora-dwg scan FOLDER\n",
          Output::Errors);
    return kUsage;
}

int info(Arguments files)
{
    const auto flag = std::find(files.begin(), files.end(), "--json");
    const bool json = flag != files.end();
    if (json)
        files.erase(flag);
    if (files.empty())
        return usage();
    int status = kDone;
    for (const std::string& file : files) {
        const auto description = describeDrawing(file);
        if (description) {
            print(json ? writeJson(*description) + "\n" : describedInWords(*description));
            continue;
        }
        status = kFailed;
        if (json)
            print(writeJson(Json::Object{{"file", shownPath(file)},
                                         {"error", shownPath(description.error().text)}}) +
                  "\n");
        else
            failed(file, description.error());
    }
    return status;
}

/// The bytes of a PNG file. Errors: NotFound, only a metafile or nothing is embedded.
Result<std::string> previewPng(const std::string& file)
{
    const auto source = openByteSource(file);
    if (!source)
        return source.error();
    const auto previews = readPreviews(**source);
    if (!previews)
        return previews.error();
    for (const PreviewImage& image : *previews) {
        if (image.kind == PreviewKind::Png)
            return std::string(reinterpret_cast<const char*>(image.bytes.data()), image.bytes.size());
        if (image.kind != PreviewKind::Bmp)
            continue;
        const auto pixels = decodeBitmap(image.bytes);
        if (!pixels)
            return pixels.error();
        return encodePng(*pixels);
    }
    return Error{ErrorCode::NotFound,
                 previews->empty() ? "no preview is embedded" : "the embedded preview is a metafile"};
}

int preview(const Arguments& arguments)
{
    if (arguments.size() != 2)
        return usage();
    const auto png = previewPng(arguments[0]);
    if (!png)
        return failed(arguments[0], png.error());
    const auto written = writeFile(arguments[1], *png);
    return written ? kDone : failed(arguments[1], written.error());
}

/// Drawing goes through Qt, which takes longer to load than all else here, so it is a program of its own.
int render(Arguments arguments)
{
    arguments.insert(arguments.begin(), joinPath(installationFolder(), "zelvora-dwg-render"));
    const auto status = runProgram(arguments);
    return status ? *status : failed(arguments.front(), status.error());
}

int scan(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return usage();
    const auto files = filesBelow(arguments[0], ".dwg");
    if (!files)
        return failed(arguments[0], files.error());
    int status = kDone;
    for (const std::string& file : *files) {
        const auto source = openByteSource(file);
        const auto document = source ? readDocument(**source) : Result<Document>(source.error());
        if (document)
            continue;
        print(namingFile(file, document.error()) + "\n");
        status = kFailed;
    }
    return status;
}

} // namespace

int main(int count, char** values)
{
    std::setlocale(LC_CTYPE, "");
    Arguments arguments = programArguments(count, values);
    if (arguments.empty())
        return usage();
    const std::string command = arguments.front();
    arguments.erase(arguments.begin());
    if (command == "info")
        return info(std::move(arguments));
    if (command == "preview")
        return preview(arguments);
    if (command == "render")
        return render(std::move(arguments));
    if (command == "scan")
        return scan(arguments);
    return usage();
}
