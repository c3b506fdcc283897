#pragma once

#include "queue/CopyPlace.h"

namespace zv {

/// Gives cmode the folder that its drawing is copied to.
class dwgcopy final : public CopyPlace {
    Q_OBJECT

public:
    explicit dwgcopy(Program& program);
    void load() override;
    void unloading() override;

protected:
    void accept() override;
    void newFolder() override;
};

} // namespace zv
