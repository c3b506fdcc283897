#pragma once

#include "host/HostDialog.h"

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace zv {

class CaptionFrame;
class DwgThumbnail;

/// Asks how a drawing is to be attached as an xref, and attaches it.
class Xattach final : public HostDialog {
    Q_OBJECT

public:
    explicit Xattach(Program& program);
    void load() override;
    /// Sets what the drawing itself tells; `storedScale` may be empty.
    void prepare(const std::string& drawing, const std::string& storedScale);

    void rememberFolder(const std::string& folder) override;
    void markField(XrefField field) override;

    QLineEdit *Text1, *Text12;
    QLabel* Label11;
    DwgThumbnail* DwgThumbnail1;
    CaptionFrame *Frame1, *Frame2, *Frame3, *Frame4, *Frame5;
    QRadioButton *Option1, *Option2;
    QCheckBox *Check1, *Check2, *Check3, *Check4, *Check5;
    QLineEdit *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text10, *Text9, *Text11, *Text8;
    QLabel *Label2, *Label3, *Label4, *Label5, *Label6, *Label7, *Label8, *Label9, *Label10;
    QComboBox* Combo1;
    QPushButton *Command1, *Command2, *Command3;

protected:
    void showAgainForSearch() override { showOnTop(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeControls();
    void makeFrames();
    void layOut();
    void connectHandlers();
    void setPointAsked(bool asked);
    void setScaleAsked(bool asked);
    void setRotationAsked(bool asked);
    void setAutoScale(bool on);
    void setCopying(bool on);
    void setScaleFields(bool inPlay);
    void pickScale(int index);
    void showNamedScale(const QString& name);
    void readCopySettings();
    void showSize();
    XrefOrder order() const;
    void insert();

    bool m_settingUnknown = false; ///< While the load shows what it could not read.
};

} // namespace zv
