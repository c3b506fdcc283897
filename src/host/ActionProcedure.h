#pragma once

#include "host/HostSession.h"
#include "platform/Result.h"

#include <functional>
#include <string>
#include <string_view>

namespace zv {

/// What the option buttons of the calling window say is to be done.
enum class ActionMode { None, Block, Xref, OpenCopy, Queue };

/// The controls that start the action procedure, as far as it treats them differently.
enum class ActionCaller { Command11, Thumbnail1, OtherThumbnail, Search };

/// The controls of the window from which an action was started: the main window or Search.
class ActionWindow : public HostWindow {
public:
    virtual void showWindow() = 0;
    virtual ActionMode mode() const = 0;
    /// The scale is computed from the two drawings instead of being taken from the scale text.
    virtual bool autoScale() const = 0;
    virtual bool explode() const = 0;
    virtual std::string scaleText() const = 0;
    virtual void setScaleText(const std::string& text) = 0;
    /// The first custom property of a drawing as "name=value", read by the window's DwgPropsX; empty when the
    /// drawing has none. Errors: the drawing cannot be read.
    virtual Result<std::string> firstCustomProperty(const std::string& drawing) = 0;
    /// Loads and shows Xattach or cmode for the drawing, without waiting for it. The scale is the one that is
    /// stored in the drawing, or empty. False when it cannot.
    virtual bool openXattach(const std::string& drawing, const std::string& storedScale) = 0;
    virtual bool openCmode(const std::string& drawing) = 0;
    /// Forgets that Cart was opened from Command24.
    virtual void clearCartMark() = 0;
    virtual void enableMainWindow() = 0;
};

/// What the administrator has set.
struct ActionSettings {
    bool checkXrefNames = false;  ///< xbcheck
    bool keepFileDialogs = false; ///< fds
    bool allowActivation = false; ///< acadver
};

struct ActionServices : HostServices {
    /// Appends the drawing to the queue file and calls `whileOpen` before the file is closed again. Errors:
    /// the file cannot be opened or written.
    std::function<Result<void>(const std::string& drawing, const std::function<void()>& whileOpen)>
        addToQueue;
    /// Writes an entry of the activity log if there is one to be kept.
    std::function<void(const std::string& drawing, std::string_view method)> writeLog;
};

/// Does with a drawing what the mode of the calling window says: queues it, places it in the CAD host, or
/// shows the dialog that goes on from there. `drawing` is the caller's own path, a thumbnail's for a
/// double-click; `selectedDrawing` is the window's, which the queue takes. Errors: the queue file cannot be
/// written, which ends the program; nothing that the host does is an error here.
Result<void> runAction(ActionCaller caller, const std::string& drawing, const std::string& selectedDrawing,
                       ActionWindow& window, ActionServices& services, const ActionSettings& settings);

} // namespace zv
