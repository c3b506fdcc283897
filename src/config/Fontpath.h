#pragma once

#include "config/FolderWindow.h"

namespace zv {

/// Chooses the folder of fonts for Options, which stands hidden meanwhile. By whatever button it is left, the
/// folder goes back there.
class Fontpath final : public FolderWindow {
    Q_OBJECT

public:
    explicit Fontpath(Program& program);
    void unloading() override;
};

} // namespace zv
