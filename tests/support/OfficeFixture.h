#pragma once

#include "app/RunningProgram.h"
#include "browser/Zelvora.h"
#include "config/Profiles.h"
#include "host/ActionProcedure.h"
#include "support/AnsweredMessages.h"
#include "support/TemporaryFolder.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zv {

/// An outside without any CAD program. A test may put its own automation in its place.
struct TestServices {
    explicit TestServices(Program& program);
    ~TestServices();

    std::unique_ptr<Automation> automation;
    std::unique_ptr<LoadSplash> splash;
    std::vector<std::string> logged; ///< The methods.
    std::unique_ptr<ActionServices> services;
};

/// A drafting office in a temporary folder, and the real windows running in it.
class OfficeFixture : public testing::Test {
protected:
    OfficeFixture();
    ~OfficeFixture() override;

    /// Makes a drawing with a small preview in the folder "drawings" and returns its path. Its comments are
    /// "About " and the name.
    std::string makeDrawing(const std::string& name);
    /// Makes drawings D1 to D<count> once, and returns their paths.
    std::vector<std::string> drawings(int count);
    /// Makes a library of these drawings in the installation folder; the label is the name in capitals.
    void makeLibrary(const std::string& name, const std::vector<std::string>& paths);
    /// Lists libraries in the catalogue.
    void makeCatalogue(const std::vector<std::string>& names);
    std::string listPath(const std::string& name) const;

    /// Keys of the profile files, by the letters I, M and U of the file. A first run is spared: the user
    /// profile is made when a key of it is set.
    void setKey(ProfileFile file, const char* section, const char* key, const std::string& value);
    std::string key(ProfileFile file, const char* section, const char* key) const;
    Profiles profiles() const;
    std::string userFile(const char* ending) const;

    /// Makes an office with the one library "Doors" of so many drawings, which the user had in view last, in
    /// a window that is not kept on top.
    void makeDoors(int count);

    /// Loads the main window and lets Timer1 show it.
    Zelvora& start();
    /// The main window; it must be loaded.
    Zelvora& main();
    /// Waits until a window of the name is loaded and visible.
    bool appears(const QString& window);

    template <class Control = QWidget>
    Control* control(const QString& name, const QString& window = "Zelvora")
    {
        Window* loaded = program->loaded(window);
        return loaded ? loaded->findChild<Control*>(name) : nullptr;
    }
    /// Clicks like a user. False when the control is missing, hidden or disabled.
    bool click(const QString& name, const QString& window = "Zelvora");
    bool doubleClick(const QString& name, const QString& window = "Zelvora");
    /// Clicks a row of a list.
    bool clickRow(const QString& list, int row, const QString& window = "Zelvora");
    void type(const QString& name, const QString& text, const QString& window = "Zelvora");
    /// Picks a row of a combo box as a user does.
    bool choose(const QString& combo, const QString& text, const QString& window = "Zelvora");
    QStringList rows(const QString& name, const QString& window = "Zelvora");
    QString text(const QString& name, const QString& window = "Zelvora");
    bool enabled(const QString& name, const QString& window = "Zelvora");
    bool visible(const QString& name, const QString& window = "Zelvora");
    /// How many of the twenty cells are visible.
    int visibleCells();
    /// The text of the last message, or empty.
    std::string lastMessage() const;

    TemporaryFolder folder;
    std::string installation, master, user;
    AnsweredMessages messages;
    std::unique_ptr<RunningProgram> program;
    std::unique_ptr<TestServices> outside;
    int endedWith = -1; ///< Exit status, once the run has ended.
};

/// Waits, with events turning, until the condition holds; false when it does not within some seconds.
bool waitUntil(const std::function<bool()>& condition);

} // namespace zv
