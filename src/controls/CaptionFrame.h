#pragma once

#include <QGroupBox>

namespace zv {

/// A frame with its caption in its upper edge. A caption that is too long is cut in the middle and told whole
/// in the tool tip.
class CaptionFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit CaptionFrame(QWidget* parent = nullptr);

    /// Height in pixels that is free for the caption above the frame's content; a caption that is taller is
    /// drawn smaller. 0, the value at first, leaves it as tall as it is.
    void setCaptionHeight(int height);
    /// Height of a caption in the frame's font.
    int naturalCaptionHeight() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QFont captionFont() const;
    QString shownCaption(const QFontMetrics& metrics) const;

    int m_captionHeight = 0;
};

} // namespace zv
