#pragma once

#include "config/Profiles.h"
#include "config/PublicValues.h"

#include <string>

namespace zv {

// What the main window's load does before it touches a control, step by step in the order that it takes them.
// Each step can run again in the same process, and none of them fails: what cannot be read counts as absent,
// and what cannot be written is not noticed.

/// The master folder: what the installation profile names, else the installation folder, whose name is then
/// stored there.
std::string findMasterFolder(const std::string& installationFolder);

/// Whether the master folder can be written. A file is made there to find out; it stays behind when the
/// master folder is not the installation folder.
bool probeWriteAccess(const std::string& installationFolder, const std::string& masterFolder);

/// Reads the administrator's values from the master profile: XbCheck, Fds, ForceCopy, Acad2002, CartOnly,
/// LogEnabled and LogPath. A flag that holds neither 0 nor 1 leaves ForceCopy, Acad2002 and CartOnly as they
/// were, and a log that is off leaves the log's values as they were. Returns the key CartOnly as it stands.
int readMasterKeys(const Profiles& profiles, PublicValues& values);

/// The login name, "User" where the system has none.
std::string loginName();

/// Forms the paths of the user's list and profile from the user folder and the login name.
void formUserPaths(PublicValues& values);

/// Makes the user's list and profile where they are missing. A new profile gets the keys of a first run; an
/// older one without a value for staying on top gets "1".
void createUserFiles(const std::string& installationFolder, const PublicValues& values);

/// The font folder for the viewer: what the master profile names, else "fonts" in the installation folder.
std::string fontFolder(const std::string& installationFolder, const Profiles& profiles);

/// Gives a profile whose count of libraries is absent or negative the count 0, for the windows that read a
/// catalogue until its count is met.
void repairLibraryCount(const std::string& profileFile);

} // namespace zv
