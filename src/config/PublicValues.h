#pragma once

#include <cstdint>
#include <string>

namespace zv {

/// The public values of the main window, which every window reads and some set. They live as long as the
/// program and are read afresh at each load of the main window. Texts are the program's own (see
/// platform/Text.h); folders end in no separator.
struct PublicValues {
    std::string LoginName;       ///< The login name, or "User".
    std::string MyLibPath;       ///< The user's own library list.
    std::string UserFolder;      ///< The folder of the user's own files.
    std::string UserProfilePath; ///< Empty until the user is known.
    std::string MasterPath;      ///< The folder of the libraries and of the master profile.
    std::int16_t AlwaysOnTop = 0;
    std::string FontPath; ///< The viewer's font folder.
    std::int16_t XbCheck = 0;
    std::int16_t Fds = 0;
    std::int16_t ForceCopy = 0; ///< 0 or 1.
    std::int16_t Acad2002 = 0;  ///< 0 or 1.
    std::int16_t CartOnly = 0;  ///< The queue-only value.
    std::string LogPath;
    bool LogEnabled = false;
    std::int16_t RibbonTab = 0; ///< 0 or 2.
};

} // namespace zv
