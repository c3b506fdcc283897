#pragma once

#include "window/Window.h"

#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace zv {

class CaptionFrame;

/// The rules of the office. A box or option writes its key when it is clicked; only the two paths wait for
/// the Ok button.
class Options final : public Window {
    Q_OBJECT

public:
    explicit Options(Program& program);
    void load() override;
    void unloading() override;

    QCheckBox *Check1, *Check2, *Check4, *Check5, *Check6;
    QRadioButton *Option1, *Option2;
    QLineEdit *Text1, *Text2;
    QLabel *Label1, *Label2, *Image1, *Image3, *Image4, *Picture1;
    CaptionFrame *Frame1, *Frame2;
    QPushButton *Command1, *Command2, *Command5, *Command6, *Command11;

private:
    void makeRules();
    void makePaths();
    void makeButtons();
    void layOut();
    void connectHandlers();

    int readSetting(const NumberKey& key);
    void writeFlag(const ProfileKey& key, bool set);
    void writeText(const ProfileKey& key, const QLineEdit* field);
    void setXrefCopies(bool allowed);
    void setForceCopy(bool forced);
    void switchOffFirst(const ProfileKey& key);
    void setLogging(bool on);
    void setQueueOnly(bool only);
    void enableLogPath(bool enabled);
    void chooseLogFile();
    void chooseFontFolder();
    void applyQueueOnly();
    void applyPaths();
    void save();
    void leave();

    int ClosedByButton = 1; ///< 2 once Ok or Cancel has been pressed.
    bool m_loading = false;
    bool m_settingUnknown = false;        ///< While the load shows what it could not read.
    std::optional<QString> m_unreadFonts; ///< What stands for a font folder that could not be read.
};

} // namespace zv
