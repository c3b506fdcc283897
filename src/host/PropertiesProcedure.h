#pragma once

#include "host/HostSession.h"

#include <string>

namespace zv {

/// The library editor as the procedure that changes a drawing's properties sees it.
class PropertiesWindow : public HostWindow {
public:
    virtual void showWindow() = 0;
    /// Reads the properties of the drawing that is chosen, and shows them.
    virtual void reread() = 0;
};

/// Has the CAD host open the drawing, show its own dialog of properties, save and close it, and reads what
/// came of it. An empty `drawing` is told to the user. Nothing that the host does is an error here.
void editProperties(const std::string& drawing, PropertiesWindow& window, HostServices& services);

} // namespace zv
