#pragma once

#include "queue/CopyPlace.h"

namespace zv {

/// Gives Xattach the folder that its xref is copied to.
class xrefcopy final : public CopyPlace {
    Q_OBJECT

public:
    explicit xrefcopy(Program& program);
    void unloading() override;

protected:
    void accept() override;
    void newFolder() override;
};

} // namespace zv
