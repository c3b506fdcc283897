#pragma once

#include "config/Profiles.h"

/// Every key of the profile files, window by window, as each window reads and writes it. The windows do not
/// agree on the file that a setting lies in, and offices have come to rely on that: an option that is set
/// while the master folder lies elsewhere holds until the next start only. A key that a window reads and
/// writes in the same file stands once; one that it writes elsewhere or in another spelling, or only writes,
/// has "write" before its name. Names meet without regard to case, so each is spelled as its window spells
/// it.
namespace zv::keys {

inline constexpr ProfileFile I = ProfileFile::Installation;
inline constexpr ProfileFile M = ProfileFile::Master;
inline constexpr ProfileFile U = ProfileFile::User;

/// What stands for a number that nobody has stored, where that is a case of its own.
inline constexpr int kAbsent = -1;

/// The sections, each named as it is spelled. A window that spells one in its own way makes it so where it is
/// the first to write there.
namespace section {
inline constexpr const char* Path = "Path";
inline constexpr const char* Printing = "Printing";
inline constexpr const char* LibLoad = "LibLoad";
inline constexpr const char* masterxref = "masterxref";
inline constexpr const char* acadver = "acadver";
inline constexpr const char* ShopCart = "ShopCart";
inline constexpr const char* FileLog = "FileLog";
inline constexpr const char* Library = "Library";
inline constexpr const char* Settings = "Settings";
inline constexpr const char* MyLib = "MyLib";
inline constexpr const char* libload = "libload";
inline constexpr const char* Mylib = "Mylib";
inline constexpr const char* printing = "printing";
inline constexpr const char* settings = "settings";
} // namespace section

/// The main window.
namespace zelvora {
inline constexpr TextKey ZVRpath{{I, section::Path, "ZVRpath"}, ""};

inline constexpr NumberKey printlib{{M, section::Printing, "printlib"}, 0};
inline constexpr NumberKey xbcheck{{M, section::LibLoad, "xbcheck"}, 0};
inline constexpr NumberKey fds{{M, section::LibLoad, "fds"}, 1};
inline constexpr NumberKey forcecopy{{M, section::masterxref, "forcecopy"}, 0};
inline constexpr NumberKey acad2002{{M, section::acadver, "2002"}, 0};
inline constexpr NumberKey CartOnly{{M, section::ShopCart, "CartOnly"}, 0};
inline constexpr TextKey LogPath{{M, section::FileLog, "LogPath"}, ""};
inline constexpr NumberKey WriteLog{{M, section::FileLog, "WriteLog"}, 0};
inline constexpr TextKey Fontpath{{M, section::Printing, "Fontpath"}, ""};
inline constexpr NumberKey libnum{{M, section::Library, "libnum"}, kAbsent};

inline constexpr TextKey LastLoad{{U, section::LibLoad, "LastLoad"}, ""};
inline constexpr NumberKey del{{U, section::LibLoad, "del"}, kAbsent};
inline constexpr NumberKey AOT{{U, section::Settings, "AOT"}, kAbsent};
inline constexpr NumberKey DWGPROPS{{U, section::Settings, "DWGPROPS"}, 0};
inline constexpr NumberKey insertmode{{U, section::Settings, "insertmode"}, 1};
inline constexpr NumberKey AutoScale{{U, section::Settings, "autoscale"}, 1};
inline constexpr NumberKey XYZ{{U, section::Settings, "XYZ"}, 1};
inline constexpr NumberKey XPmode{{U, section::Settings, "XPmode"}, 0};
inline constexpr NumberKey RibSet{{U, section::Settings, "RibSet"}, 0};
inline constexpr ProfileKey writeProjectPath{U, section::Settings, "ProjectPath"};
inline constexpr ProfileKey writeAutoScale{U, section::Settings, "AutoScale"};
inline constexpr ProfileKey writeFirstInsertmode{U, section::Settings, "Insertmode"};
} // namespace zelvora

namespace search {
inline constexpr NumberKey libnum{{M, section::Library, "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{M, section::LibLoad, "LastLoad"}, " "};
inline constexpr NumberKey CartOnly{{M, section::ShopCart, "CartOnly"}, 0};
inline constexpr NumberKey insertmode{{U, section::Settings, "insertmode"}, 1};
inline constexpr NumberKey AutoScale{{U, section::Settings, "AutoScale"}, 1};
inline constexpr NumberKey XPmode{{U, section::Settings, "XPmode"}, 0};
inline constexpr ProfileKey writeXYZ{U, section::Settings, "XYZ"};
inline constexpr TextKey ProjectPath{{U, section::Settings, "ProjectPath"}, " "};
} // namespace search

namespace newlib {
inline constexpr NumberKey libnum{{M, section::Library, "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{M, section::LibLoad, "LastLoad"}, " "};
inline constexpr ProfileKey writeDel{M, section::LibLoad, "del"};
} // namespace newlib

namespace mylib {
inline constexpr NumberKey libnum{{I, section::Library, "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{U, section::LibLoad, "LastLoad"}, " "};
inline constexpr NumberKey Userlib{{I, section::MyLib, "Userlib"}, 0};
} // namespace mylib

namespace printlib {
inline constexpr NumberKey libnum{{I, section::Library, "libnum"}, kAbsent};
inline constexpr TextKey LastLoad{{U, section::LibLoad, "LastLoad"}, " "};
} // namespace printlib

namespace options {
inline constexpr NumberKey FDS{{I, section::libload, "FDS"}, 1};
inline constexpr NumberKey projectfolder{{I, section::masterxref, "projectfolder"}, 0};
inline constexpr NumberKey forcecopy{{I, section::masterxref, "forcecopy"}, 0};
inline constexpr NumberKey CartOnly{{I, section::ShopCart, "CartOnly"}, 0};
inline constexpr NumberKey userlib{{I, section::Mylib, "userlib"}, 0};
inline constexpr TextKey fontpath{{I, section::printing, "fontpath"}, ""};
inline constexpr TextKey LogPath{{I, section::FileLog, "LogPath"}, ""};
inline constexpr NumberKey WriteLog{{I, section::FileLog, "WriteLog"}, 0};
} // namespace options

namespace zvypath {
inline constexpr ProfileKey writeMasterZVRpath{M, section::Path, "ZVRpath"};
inline constexpr ProfileKey writeInstallationZVRpath{I, section::Path, "ZVRpath"};
} // namespace zvypath

namespace xattach {
inline constexpr NumberKey projectfolder{{I, section::masterxref, "projectfolder"}, 0};
inline constexpr NumberKey forcecopy{{I, section::masterxref, "forcecopy"}, 0};
inline constexpr NumberKey projectcopy{{U, section::Settings, "projectcopy"}, 1};
inline constexpr TextKey projectpath{{U, section::settings, "projectpath"}, " "};
inline constexpr ProfileKey writeAutoScale{U, section::settings, "AutoScale"};
inline constexpr ProfileKey writeListindex{U, section::settings, "listindex"};
inline constexpr ProfileKey writeXrefscale{U, section::settings, "xrefscale"};
} // namespace xattach

namespace cmode {
inline constexpr NumberKey projectcopy{{U, section::Settings, "projectcopy"}, 1};
inline constexpr TextKey projectpath{{U, section::settings, "projectpath"}, " "};
} // namespace cmode

namespace dwgcopy {
inline constexpr ProfileKey writeProjectpath{U, section::Settings, "projectpath"};
} // namespace dwgcopy

namespace cartcopy {
/// Asked for without a file, so it is always the default.
inline constexpr TextKey projectpath{{ProfileFile::None, section::Settings, "projectpath"}, " "};
inline constexpr ProfileKey writeProjectpath{U, section::Settings, "projectpath"};
} // namespace cartcopy

} // namespace zv::keys
