#pragma once

#include "config/Profiles.h"

/// Every key of the profile files, window by window, as each window reads and writes it. The windows do not
/// agree on the file that a setting lies in, and offices have come to rely on that: an option that is set
/// while the master folder lies elsewhere holds until the next start only. A key that a window reads and
/// writes in the same file stands once; one that it writes elsewhere, or only writes, has "write" before its
/// name. Names meet without regard to case, so each is spelled as its window spells it.
namespace zv::keys {

inline constexpr ProfileFile I = ProfileFile::Installation;
inline constexpr ProfileFile M = ProfileFile::Master;
inline constexpr ProfileFile U = ProfileFile::User;

/// What stands for a number that nobody has stored, where that is a case of its own.
inline constexpr int kAbsent = -1;

/// The main window.
namespace zelvora {
inline constexpr TextKey ZVRpath{{I, "Path", "ZVRpath"}, ""};

inline constexpr NumberKey printlib{{M, "Printing", "printlib"}, 0};
inline constexpr NumberKey xbcheck{{M, "LibLoad", "xbcheck"}, 0};
inline constexpr NumberKey fds{{M, "LibLoad", "fds"}, 1};
inline constexpr NumberKey forcecopy{{M, "masterxref", "forcecopy"}, 0};
inline constexpr NumberKey acad2002{{M, "acadver", "2002"}, 0};
inline constexpr NumberKey CartOnly{{M, "ShopCart", "CartOnly"}, 0};
inline constexpr TextKey LogPath{{M, "FileLog", "LogPath"}, ""};
inline constexpr NumberKey WriteLog{{M, "FileLog", "WriteLog"}, 0};
inline constexpr TextKey Fontpath{{M, "Printing", "Fontpath"}, ""};
inline constexpr NumberKey libnum{{M, "Library", "libnum"}, kAbsent};

inline constexpr TextKey LastLoad{{U, "LibLoad", "LastLoad"}, ""};
inline constexpr NumberKey del{{U, "LibLoad", "del"}, kAbsent};
inline constexpr NumberKey AOT{{U, "Settings", "AOT"}, kAbsent};
inline constexpr NumberKey DWGPROPS{{U, "Settings", "DWGPROPS"}, 0};
inline constexpr NumberKey insertmode{{U, "Settings", "insertmode"}, 1};
inline constexpr NumberKey AutoScale{{U, "Settings", "autoscale"}, 1};
inline constexpr NumberKey XYZ{{U, "Settings", "XYZ"}, 1};
inline constexpr NumberKey XPmode{{U, "Settings", "XPmode"}, 0};
inline constexpr NumberKey RibSet{{U, "Settings", "RibSet"}, 0};
inline constexpr ProfileKey writeProjectPath{U, "Settings", "ProjectPath"};
} // namespace zelvora

namespace search {
inline constexpr NumberKey libnum{{M, "Library", "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{M, "LibLoad", "LastLoad"}, " "};
inline constexpr NumberKey CartOnly{{M, "ShopCart", "CartOnly"}, 0};
inline constexpr NumberKey insertmode{{U, "Settings", "insertmode"}, 1};
inline constexpr NumberKey AutoScale{{U, "Settings", "AutoScale"}, 1};
inline constexpr NumberKey XPmode{{U, "Settings", "XPmode"}, 0};
inline constexpr ProfileKey writeXYZ{U, "Settings", "XYZ"};
inline constexpr TextKey ProjectPath{{U, "Settings", "ProjectPath"}, " "};
} // namespace search

namespace newlib {
inline constexpr NumberKey libnum{{M, "Library", "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{M, "LibLoad", "LastLoad"}, " "};
inline constexpr ProfileKey writeDel{M, "LibLoad", "del"};
} // namespace newlib

namespace mylib {
inline constexpr NumberKey libnum{{I, "Library", "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{U, "LibLoad", "LastLoad"}, " "};
inline constexpr NumberKey Userlib{{I, "MyLib", "Userlib"}, 0};
} // namespace mylib

namespace printlib {
inline constexpr NumberKey libnum{{I, "Library", "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{U, "LibLoad", "LastLoad"}, " "};
} // namespace printlib

namespace options {
inline constexpr NumberKey FDS{{I, "libload", "FDS"}, 1};
inline constexpr NumberKey projectfolder{{I, "masterxref", "projectfolder"}, 0};
inline constexpr NumberKey forcecopy{{I, "masterxref", "forcecopy"}, 0};
inline constexpr NumberKey CartOnly{{I, "ShopCart", "CartOnly"}, 0};
inline constexpr NumberKey userlib{{I, "Mylib", "userlib"}, 0};
inline constexpr TextKey fontpath{{I, "printing", "fontpath"}, ""};
inline constexpr TextKey LogPath{{I, "FileLog", "LogPath"}, ""};
inline constexpr NumberKey WriteLog{{I, "FileLog", "WriteLog"}, 0};
} // namespace options

namespace zvypath {
inline constexpr ProfileKey writeMasterZVRpath{M, "Path", "ZVRpath"};
inline constexpr ProfileKey writeInstallationZVRpath{I, "Path", "ZVRpath"};
} // namespace zvypath

namespace xattach {
inline constexpr NumberKey projectfolder{{I, "masterxref", "projectfolder"}, 0};
inline constexpr NumberKey forcecopy{{I, "masterxref", "forcecopy"}, 0};
inline constexpr NumberKey projectcopy{{U, "Settings", "projectcopy"}, 1};
inline constexpr TextKey projectpath{{U, "settings", "projectpath"}, " "};
inline constexpr ProfileKey writeAutoScale{U, "settings", "AutoScale"};
inline constexpr ProfileKey writeListindex{U, "settings", "listindex"};
inline constexpr ProfileKey writeXrefscale{U, "settings", "xrefscale"};
} // namespace xattach

namespace cmode {
inline constexpr NumberKey projectcopy{{U, "Settings", "projectcopy"}, 1};
inline constexpr TextKey projectpath{{U, "settings", "projectpath"}, " "};
} // namespace cmode

namespace dwgcopy {
inline constexpr ProfileKey writeProjectpath{U, "Settings", "projectpath"};
} // namespace dwgcopy

namespace cartcopy {
/// Asked for without a file, so it is always the default.
inline constexpr TextKey projectpath{{ProfileFile::None, "Settings", "projectpath"}, " "};
inline constexpr ProfileKey writeProjectpath{U, "Settings", "projectpath"};
} // namespace cartcopy

} // namespace zv::keys
