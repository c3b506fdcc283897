#pragma once

#include "config/Profiles.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "support/TemporaryFolder.h"

namespace zv {

/// An office whose master folder is not the installation folder, and one user.
struct TwoFolders {
    TemporaryFolder installation;
    TemporaryFolder master;
    TemporaryFolder user;

    std::string userProfile() const { return joinPath(user.path(), "Ann.ini"); }
    Profiles profiles() const { return Profiles(installation.path(), master.path(), userProfile()); }
};

} // namespace zv
