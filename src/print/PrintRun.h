#pragma once

#include "platform/Result.h"

#include <string>
#include <vector>

namespace zv {

/// A library that was chosen for printing. The texts are the program's own.
struct PrintedLibrary {
    std::string name;
    std::string listPath;
};

/// What a print run needs of the window that it runs in.
class PrintRunWindow {
public:
    virtual ~PrintRunWindow() = default;

    virtual void beginLibrary(const std::string& name) = 0;
    /// False when the drawing cannot be shown; then nothing is shown any more.
    virtual bool showDrawing(const std::string& path) = 0;
    /// Tells how many drawings were begun, of how many.
    virtual void showCount(int done, int total) = 0;
    /// Prints what is shown, after the user was asked how.
    virtual void printWithDialog() = 0;
    /// Prints what is shown by the choice made before; nothing where nothing is shown or was chosen.
    virtual void printSilently() = 0;
    /// Starts the helper program.
    virtual void startHelper() = 0;
    virtual void endDrawing(const std::string& path) = 0;
    /// Lets the event loop have a turn. False once the user wants the run to stop.
    virtual bool turn() = 0;
};

/// The list of a library that is chosen by its name: the user's own under the login name, else that of the
/// installation folder, wherever the master folder is.
PrintedLibrary printedLibrary(const std::string& name, const std::string& installationFolder,
                              const std::string& loginName, const std::string& myLibPath);

/// Counts the lines of all libraries. A stop ends the reading of the library in hand only. Errors: a list
/// cannot be read.
Result<int> countDrawings(const std::vector<PrintedLibrary>& libraries, PrintRunWindow& window);

/// Prints every drawing, the first that can be shown with the dialog. Drawings that cannot be shown or
/// printed are passed over. Errors: a list cannot be read before any line was; later such a list is passed
/// over.
Result<void> printDrawings(const std::vector<PrintedLibrary>& libraries, int total, PrintRunWindow& window);

} // namespace zv
