#pragma once

#include "platform/Messages.h"
#include "platform/Result.h"

#include <functional>
#include <string>

class QString;

namespace zv {

struct ActionServices;
struct BrowserFields;
struct PublicValues;
class Window;

/// Where the program's files lie. Neither folder ends in a separator.
struct Folders {
    std::string installation; ///< The executable's own folder.
    std::string user;         ///< The folder of the user's own files.
};

/// What a window may ask of the program: the other windows by their names, each loaded at most once, and what
/// all windows share. The run ends when no window is loaded.
class Program {
public:
    using Factory = std::function<Window*()>;

    virtual ~Program() = default;

    /// Makes a window known under its name. A known one is replaced; loaded windows stay as they are.
    virtual void add(const QString& name, Factory factory) = 0;

    /// Loads the window, unless it is loaded already, without showing it. Null when no window has this name.
    virtual Window* load(const QString& name) = 0;
    /// Unloads the window if it is loaded, and loads it anew. Null as above.
    virtual Window* loadAnew(const QString& name) = 0;
    /// The window if it is loaded, else null.
    virtual Window* loaded(const QString& name) const = 0;
    /// Loads the window if need be and shows it, in front of the others. False when no window has this name.
    virtual bool show(const QString& name) = 0;
    /// Hides the window if it is loaded.
    virtual void hide(const QString& name) = 0;
    /// Runs the window's unloading and forgets it; the object goes once its handlers have returned. Nothing
    /// when it is not loaded.
    virtual void unload(const QString& name) = 0;

    virtual const Folders& folders() const = 0;
    virtual PublicValues& values() = 0;
    /// What the main window keeps for the run.
    virtual BrowserFields& fields() = 0;
    virtual Messages& messages() = 0;
    /// What the action procedure needs of the outside.
    virtual ActionServices& actionServices() = 0;

    /// Ends the program after a failure that a handler has no guard for: shows `text` as a plain error
    /// message and ends the run with exit status 1. The handler returns after the call.
    virtual void fail(const std::string& text) = 0;
    /// The same after a failure with the file that `error` names, in which nothing was changed.
    void failUnchanged(const Error& error) { fail(error.text + "\r\nNothing was changed in it."); }
};

} // namespace zv
