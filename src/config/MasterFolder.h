#pragma once

#include "config/PublicValues.h"

#include <string>

namespace zv {

/// Makes `folder` the master folder, now and for the next start. One that holds a profile is taken as it is;
/// any other gets a copy of the installation folder's profile, and of its lists of those names that lie in
/// the process's current folder, the old master folder. What cannot be copied or written is passed over.
void moveMasterFolder(const std::string& installationFolder, const std::string& folder, PublicValues& values);

} // namespace zv
