#include "drawing/fonts/StrokeFont.h"
#include "platform/Files.h"

#include <cstdio>

/// Writes the house's lettering as a shape file.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("makeFontFolder FILE.shx\n", stderr);
        return 2;
    }
    const auto written = zv::writeFile(argv[1], zv::dwg::strokeFontFile());
    if (!written)
        std::fprintf(stderr, "%s\n", written.error().text.c_str());
    return written ? 0 : 1;
}
