#pragma once

#include <string>

namespace zv::bench {

/// The folder part of a path, with the separator at its end; empty for a bare name.
std::string folderPart(const std::string& path);
/// The drawing file that a typed name means: as it stands, or beside the drawing whose path is `drawing`,
/// with ".dwg" added where it is missing. Empty when there is none.
std::string findDrawingFile(const std::string& typed, const std::string& drawing);
/// The full path that a typed name of a new file means: a bare one lies beside the drawing whose path is
/// `drawing`.
std::string besideDrawing(const std::string& typed, const std::string& drawing);
/// The file that a reference's path means in the drawing whose path is `drawing`: as above, or the file of
/// that name beside the drawing, for drawings that have been moved together. Empty when there is none.
std::string findXrefFile(const std::string& path, const std::string& drawing);
/// The block name that a typed path means: the file's name without ".dwg".
std::string fileStem(const std::string& typed);

} // namespace zv::bench
