#pragma once

#include "drawing/Document.h"

#include <string_view>

namespace zv::dwg {

/// The Windows or DOS code page that a drawing file's own number stands for (30 is 1252); 65001 for UTF-8, 0
/// for a number that is not known.
int windowsCodePage(int drawingCodePage);

/// Bytes of a drawing as Unicode. `drawingCodePage` is the file's own number; an unknown one is read as ANSI
/// 1252. A byte that is no text there becomes U+FFFD; the escapes \U+XXXX and \M+nXXXX are decoded; zero
/// bytes at the end are left off.
Text decodeText(std::string_view bytes, int drawingCodePage);

/// Text of a file that stores UTF-16: its escapes \U+XXXX decoded, zeros at the end left off.
Text decodeUnits(Text units);

} // namespace zv::dwg
