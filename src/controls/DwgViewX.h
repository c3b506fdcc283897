#pragma once

#include "platform/Result.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

class QPrinter;

namespace zv {

/// The large viewer: shows one drawing, with zoom, pan, layers and print. The wheel zooms at the pointer, the
/// middle button pans, a double click of it shows the whole drawing; +, -, the arrows and Home do the same by
/// keyboard, and Esc leaves a mode.
class DwgViewX : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString dwgFileName READ dwgFileName WRITE setDwgFileName)
    Q_PROPERTY(QString fontPath READ fontPath WRITE setFontPath)
    Q_PROPERTY(QString errorText READ errorText)
    Q_PROPERTY(bool printSilently READ printSilently WRITE setPrintSilently)

public:
    /// What a press of the left button does.
    enum class Mode { None, ZoomWindow, Pan, ZoomRealtime };

    explicit DwgViewX(QWidget* parent = nullptr);
    ~DwgViewX() override;

    /// Loads and shows a drawing whole. `path` is in the program's own text. False when it cannot be
    /// read; then nothing is shown any more and errorText() says why. An empty path empties the viewer and
    /// is false too.
    bool setDrawing(const std::string& path);
    /// The folder that fonts are looked for in before the system's; a drawing shown is drawn anew.
    void setFontFolder(const std::string& folder);

    QString dwgFileName() const;
    void setDwgFileName(const QString& path);
    QString fontPath() const;
    void setFontPath(const QString& folder);
    /// Why the last drawing could not be shown; empty when it is shown.
    QString errorText() const;
    bool hasDrawing() const;
    Mode mode() const;
    /// Drawing units to one pixel; 0 without a drawing.
    double unitsPerPixel() const;

    void zoomExtents();
    void zoomIn();
    void zoomOut();
    void zoomWindow();
    void pan();
    void zoomRealtime();
    void panRealtime();
    /// Drawings are shown from above only, so this is panning under another name.
    void view3DOrbit();
    void layersDialog();

    /// Prints the drawing whole on one page. With printSilently() off the user is asked first; that choice,
    /// and no other, is what silent prints go by: nothing is printed silently before a choice, or after the
    /// user said no. To a file, the drawing that was chosen for goes to the name chosen, and a silent print
    /// beside it to a file of its own, never over another. False when nothing was printed: the user said no,
    /// there is no drawing or no choice, the printer refuses, or the file cannot be written whole; then none
    /// is left.
    bool print();
    /// Prints to a printer that is set up already. False as above.
    bool printDirect(QPrinter& printer);
    bool printSilently() const;
    void setPrintSilently(bool silently);
    /// Asks the user for a printer; replaced by tests. The dialog of the system is used unless set.
    void setPrinterChooser(std::function<bool(QPrinter&, QWidget*)> chooser);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    struct State;
    void setMode(Mode mode);
    void lookAt(double centerX, double centerY, double unitsPerPixel);
    void zoomAt(QPointF pixel, double factor);
    void finishWindow(QPointF corner);
    void refuse(const Error& error);
    void paintPicture();
    void paintFocus(QPainter& painter) const;
    void paintSoon();

    std::unique_ptr<State> m_state;
};

} // namespace zv
