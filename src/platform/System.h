#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zv {

/// The real folder of the running executable, without a separator at its end.
std::string installationFolder();
/// The folder of the user's own files; made with mode 0700 where it is missing. Without a separator at its
/// end.
std::string userFolder();
/// The login name as the system gives it, cut at the first NUL; empty when it has none to give.
std::string systemLoginName();

/// The per-user settings store: a value by application name, section and key.
std::string settingsValue(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& fallback);
void setSettingsValue(const std::string& application, const std::string& section, const std::string& key,
                      const std::string& value);

/// How the window of a program that is started comes up, where the system lets one say.
enum class ProgramWindow {
    Normal,
    Minimized, ///< And without the focus.
};
/// Starts a program without waiting for it; a program that is not there is no error.
void startProgram(const std::vector<std::string>& command, ProgramWindow window = ProgramWindow::Normal);
/// What the file names of programs end in, ".exe" or nothing.
extern const char* const kProgramEnding;

/// Whether the system has a print dialog of its own. Such a one knows the system's printers only, no file,
/// and comes up only where there is a printer.
extern const bool kSystemHasPrintDialog;

/// Shows a folder to the user in a window of the system's file manager. Nothing where there is none.
void showFolder(const std::string& folder);

/// The present date and time in the system's short form, without a comma in any locale.
std::string shortDateTime();

} // namespace zv
