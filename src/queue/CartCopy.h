#pragma once

#include "queue/CopyPlace.h"

class QProgressBar;

namespace zv {

class Cart;

/// Copies the whole queue out to a folder.
class CartCopy final : public CopyPlace {
    Q_OBJECT

public:
    explicit CartCopy(Program& program);
    void load() override;
    void unloading() override;

    QProgressBar* Progress; ///< Shown while the copy runs.

protected:
    void accept() override;
    void newFolder() override;
    /// During the copy it gives the drawings up that are not copied yet.
    void cancel() override;
    void closeEvent(QCloseEvent* event) override;

private:
    bool mayOverwrite(const std::string& name);
    bool showProgress(std::size_t done);
    void setCopying(bool copying);
    void finish(const std::string& folder);

    bool m_copying = false;
    bool m_givenUp = false;
};

} // namespace zv
