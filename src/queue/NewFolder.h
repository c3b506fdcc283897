#pragma once

#include "window/Window.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zv {

class CaptionFrame;
class CopyPlace;

/// Makes a folder beneath the one that is open in the dialog it was opened from: sNewFolder under CartCopy,
/// cNewFolder under dwgcopy.
class NewFolder final : public Window {
    Q_OBJECT

public:
    NewFolder(Program& program, const QString& name, const QString& parent);
    void load() override;
    void unloading() override;

    CaptionFrame* Frame1;
    QLineEdit *Text1, *Text2;
    QLabel* Label1;
    QPushButton *Command11, *Command4, *Command3;

private:
    void layOut();
    CopyPlace* parentDialog() const;
    std::string newPath() const;
    void create();

    QString m_parent;
};

} // namespace zv
