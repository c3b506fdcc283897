#pragma once

#include "controls/ImageList.h"

#include <QPushButton>

namespace zv {

/// A push button with a picture of an image list. Where the button is too small for both, a caption below the
/// picture is left out, for the tool tip to tell, and a caption beside it stays alone.
class PictureButton : public QPushButton {
    Q_OBJECT
    /// The list and the index of the picture shown, "B28"; empty while there is none.
    Q_PROPERTY(QString picture READ picture)
    /// Colour of the line round the button; an invalid one draws no line.
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor)

public:
    enum class Caption { Beside, Below };
    /// With `flat` the button shows no ground until the mouse or the focus is on it.
    PictureButton(Caption place, bool flat, QWidget* parent = nullptr);

    QString picture() const { return m_picture; }
    void setPicture(const ImageList& list, int index);
    QColor borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor& color);

    /// Whether the caption is painted where there is room for it; so it is at first.
    void setCaptionShown(bool shown);

    /// Room for picture and caption, the caption in bold, so that it may turn bold at any time.
    QSize sizeHint() const override;
    /// Room for what stays when there is little of it: the picture alone, or the caption alone.
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize captionSize() const;

    Caption m_place;
    bool m_flat;
    bool m_captionShown = true;
    QString m_picture;
    QColor m_borderColor;
};

/// A picture that acts: a tab, the help sign, the logo. Space and Enter do what the mouse does.
class PictureBox : public QAbstractButton {
    Q_OBJECT
    /// The list and the index, or the name, of the picture shown.
    Q_PROPERTY(QString picture READ picture)
    /// Whether the box is the chosen one of a row of tabs.
    Q_PROPERTY(bool chosen READ isChosen WRITE setChosen)

public:
    enum class Acts { OnClick, OnDoubleClick };
    PictureBox(Acts acts, QWidget* parent = nullptr);

    QString picture() const { return m_picture; }
    void setPicture(const ImageList& list, int index);
    void setPicture(const QString& name);
    bool isChosen() const { return m_chosen; }
    void setChosen(bool chosen);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// Clicked, or double-clicked where the box acts on that; or Space or Enter was pressed.
    void activated();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Acts m_acts;
    QString m_picture;
    bool m_chosen = false;
};

} // namespace zv
