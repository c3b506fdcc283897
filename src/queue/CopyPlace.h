#pragma once

#include "window/Window.h"

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace zv {

class CaptionFrame;
class DriveBox;
class FolderList;

/// The pattern of the dialogs in which a folder is picked for drawings to be copied to.
class CopyPlace : public Window {
    Q_OBJECT

public:
    CopyPlace(Program& program, const QString& name, const QString& title, const QString& frame);

    CaptionFrame* Frame1;
    QLineEdit* Text1;
    DriveBox* Drive1;
    FolderList* Dir1;
    QPushButton *Command1, *Command8, *Command11;

protected:
    /// The folder that the user wants, as it was typed or picked.
    std::string destination() const;
    /// Makes the destination the process's current folder; false when that failed and has ended the program.
    bool goToDestination();
    /// Disables this dialog and shows the one that makes a folder; null when there is none.
    Window* openNewFolder(const QString& window);
    virtual void accept() = 0;
    virtual void newFolder() = 0;
    virtual void cancel();

    QHBoxLayout* buttons; ///< What a dialog adds goes behind the first.
};

} // namespace zv
