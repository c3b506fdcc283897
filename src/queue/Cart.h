#pragma once

#include "window/Window.h"

#include <string>
#include <vector>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace zv {

class CaptionFrame;
class DwgThumbnail;
class PathList;

/// The drawing queue as a list that can be edited. The file changes only when the user saves.
class Cart final : public Window {
    Q_OBJECT

public:
    explicit Cart(Program& program);
    void load() override;
    void unloading() override;

    /// The queue as the list has it now.
    std::vector<std::string> drawings() const;

    CaptionFrame *Frame1, *Frame2;
    PathList* List1;
    DwgThumbnail* DwgThumbnail1;
    QPlainTextEdit* Text1;
    QPushButton *Command5, *Command1, *Command11, *Command2, *Command3;
    QLabel* Picture2;

private:
    void makeControls();
    void layOut();
    std::string path() const;
    void showSelected();
    void removeSelected();
    void reset();
    void copy();
    void save();
};

} // namespace zv
