#pragma once

#include "Library.h"
#include "drawing/preview/Preview.h"
#include "platform/Result.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace zv::samples {

/// Makes the picture that a drawing carries.
using Painter = std::function<dwg::Pixels(const dwg::Document&)>;

/// The library that the sample user finds at first.
inline constexpr const char* kFirstLibrary = "Doors and Windows";

/// The drawing's file. Errors: as writing it gives.
Result<std::string> drawingFile(const Sample& sample, const Painter& painter);

/// Makes the office in `office`: an installation folder like `installation`, the libraries' drawings in a
/// folder each, their lists and the catalogue. What stands there under other names is left alone.
/// Windows machines know the folder by another name: given as `windowsName`, as "\\server\cad", the lists
/// hold that, and the profile leads to it as the master folder. Errors: Failed, a file cannot be written.
Result<void> makeOffice(const std::filesystem::path& installation, const std::filesystem::path& office,
                        const Painter& painter, const std::string& windowsName = {});

/// Gives the account that runs this its settings inside the office, unless it has them: the window in its
/// design size, the first library in view. Errors: Failed.
Result<void> makeUser(const std::filesystem::path& office);

} // namespace zv::samples
