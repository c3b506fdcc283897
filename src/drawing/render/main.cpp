#include "drawing/paint/Picture.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/System.h"

#include <QGuiApplication>

#include <charconv>
#include <clocale>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kUsage = 2, kFailed = 1;
constexpr int kLargestSide = 16384;

/// "800x600"; false when it is no size.
bool readSize(std::string_view text, QSize& size)
{
    const std::size_t x = text.find('x');
    int width = 0, height = 0;
    if (x == std::string_view::npos)
        return false;
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), text.data() + x, width);
    const auto second = std::from_chars(text.data() + x + 1, end, height);
    size = {width, height};
    return first.ptr == text.data() + x && second.ptr == end && width > 0 && height > 0 &&
           width <= kLargestSide && height <= kLargestSide;
}

int usage()
{
    zv::print("zelvora-dwg-render FILE OUT.png|.jpg|.svg|.pdf [--size WxH] [--fonts FOLDER] [--light]\n",
              zv::Output::Errors);
    return kUsage;
}

} // namespace

int main(int argc, char** argv)
{
    std::string file, out, fonts;
    QSize size(1024, 768);
    QColor background = Qt::black;
    const std::vector<std::string> words = zv::programArguments(argc, argv);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& argument = words[i];
        if (argument == "--size" && i + 1 < words.size()) {
            if (!readSize(words[++i], size))
                return usage();
        } else if (argument == "--fonts" && i + 1 < words.size()) {
            fonts = words[++i];
        } else if (argument == "--light") {
            background = Qt::white;
        } else if (file.empty()) {
            file = argument;
        } else if (out.empty()) {
            out = argument;
        } else {
            return usage();
        }
    }
    if (out.empty())
        return usage();
    // A picture needs no display, and no words about the missing one.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.warning=false");
    QGuiApplication application(argc, argv);
    std::setlocale(LC_ALL, "");
    if (fonts.empty())
        fonts = zv::joinPath(zv::installationFolder(), "fonts");
    const auto drawing = zv::dwg::openDrawing(file, fonts);
    if (!drawing) {
        zv::print("zelvora-dwg: " + zv::namingFile(file, drawing.error()) + "\n", zv::Output::Errors);
        return kFailed;
    }
    const QColor ground = zv::dwg::isPaper(out) ? QColor(Qt::white) : background;
    const auto saved = zv::dwg::savePicture(drawing->scene, out, size, ground);
    if (!saved) {
        zv::print("zelvora-dwg: " + saved.error().text + "\n", zv::Output::Errors);
        return kFailed;
    }
    return 0;
}
