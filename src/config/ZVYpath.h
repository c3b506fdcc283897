#pragma once

#include "config/FolderWindow.h"

namespace zv {

/// Chooses the master folder. The library editor, which opens it, stands disabled meanwhile and comes back by
/// whatever way it is left.
class ZVYpath final : public FolderWindow {
    Q_OBJECT

public:
    explicit ZVYpath(Program& program);
    void load() override;
    void unloading() override;

    QPushButton* Command1;

private:
    void setDefault();
    void save();
};

} // namespace zv
