#pragma once

#include "window/Window.h"

class QHBoxLayout;
class QLineEdit;
class QPushButton;

namespace zv {

class CaptionFrame;
class DriveBox;
class FolderList;

/// A window in which a folder is chosen: a drive list sets the folder list, and a click there the text.
class FolderWindow : public Window {
    Q_OBJECT

public:
    /// `caption` is that of the frame round the lists, `meaning` what the text is, for a screen reader.
    FolderWindow(Program& program, const QString& name, const QString& title, const QString& caption,
                 const QString& meaning);

    CaptionFrame* Frame1;
    DriveBox* Drive1;
    FolderList* Dir1;
    QLineEdit* Text1;
    QPushButton *Command11, *Command8;

protected:
    /// Adds a button between those two.
    QPushButton* addButton(const char* name, const QString& caption, const QString& tip);

private:
    QPushButton* button(const char* name, const QString& caption, const QString& tip);

    QHBoxLayout* m_buttons;
};

} // namespace zv
