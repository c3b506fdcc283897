#pragma once

#include "host/HostDialog.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace zv {

class ElidedLabel;

/// Opens a drawing in the host as a document of its own, or a copy of it that is made first.
class cmode final : public HostDialog {
    Q_OBJECT

public:
    explicit cmode(Program& program);
    void load() override;

    void rememberFolder(const std::string& folder) override;

    ElidedLabel* Label1;
    QCheckBox* Check5;
    QLineEdit* Text1;
    QPushButton *Command1, *Command2, *Command3;

protected:
    void showAgainForSearch() override;

private:
    void layOut();
    void setCopying(bool on);
    void open();

    std::string m_drawing;         ///< As the caller had it when the dialog came up.
    bool m_settingUnknown = false; ///< While the load shows what it could not read.
};

} // namespace zv
