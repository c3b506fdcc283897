#pragma once

#include "controls/ThumbnailPicture.h"
#include "platform/Workers.h"

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>

#include <future>
#include <string>

namespace zv {

/// Shows a drawing's preview on a ground of its own. A click and Space select, a double-click and Enter act.
class DwgThumbnail : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString dwgFileName READ dwgFileName WRITE setDwgFileName)
    Q_PROPERTY(int backColor READ backColor WRITE setBackColor)
    Q_PROPERTY(int bitmapBackColor READ bitmapBackColor WRITE setBitmapBackColor)
    Q_PROPERTY(int stretchBltMode READ stretchBltMode WRITE setStretchBltMode)
    Q_PROPERTY(bool hasFocusRect READ hasFocusRect)

public:
    explicit DwgThumbnail(QWidget* parent = nullptr);

    /// Shows the preview of a drawing; an empty path blanks the control. `path` is in the program's own
    /// text. Errors: the drawing cannot be read; the control is blank then, under the path that was given.
    Result<void> setDrawing(const std::string& path);
    /// The same with what readThumbnail() has given for the path.
    Result<void> setDrawing(const std::string& path, Result<QImage> picture);
    /// What the picture can take, in pixels of the screen.
    QSize pictureRoom() const;
    QString dwgFileName() const { return m_fileName; }
    void setDwgFileName(const QString& path);

    /// Colours are numbers 0xBBGGRR: of the control around the preview, and of the preview's own ground.
    int backColor() const { return m_backColor; }
    void setBackColor(int color);
    int bitmapBackColor() const { return m_bitmapBackColor; }
    void setBitmapBackColor(int color);
    /// A number of StretchMode; any other counts as averaging.
    int stretchBltMode() const { return m_stretchBltMode; }
    void setStretchBltMode(int mode);
    /// Whether this is the control, of those with the same parent, that had the focus last.
    bool hasFocusRect() const { return m_hasFocusRect; }

    /// What draws the drawings that hold no picture, for all controls; without one they show their name.
    static void setRenderer(ThumbnailRenderer renderer);

    QSize sizeHint() const override { return {128, 112}; }
    QSize minimumSizeHint() const override { return {16, 12}; }

Q_SIGNALS:
    void clicked();
    void doubleClicked();
    void gotFocus();
    void lostFocus();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void takeFocusRect();
    void renderLater();
    void paintPicture(QPainter& painter);
    void scalePicture(QSize wanted);
    void readAgain();
    void paintName(QPainter& painter);

    QString m_fileName;
    QImage m_picture;                      ///< As it was read; not kept when it is larger than the cell.
    QSize m_pictureSize;                   ///< Of the picture as it was read; empty when there is none.
    QPixmap m_scaled;                      ///< The picture as it was painted last.
    bool m_stale = false;                  ///< It must be made anew.
    std::future<Result<QImage>> m_reading; ///< The picture that is needed anew.
    QBasicTimer m_look;                    ///< Whether it is there.
    bool m_slow = false;                   ///< It did not come at once, so it is not waited for again.
    int m_backColor = 0;
    int m_bitmapBackColor = 0;
    int m_stretchBltMode = int(StretchMode::WhiteOnBlack);
    bool m_hasFocusRect = false;
    bool m_readable = false;
    bool m_renderPending = false;
    bool m_drawn = false; ///< The picture was drawn from the geometry.
    bool m_pressed = false;
};

} // namespace zv
