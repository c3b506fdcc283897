#include "controls/DwgViewX.h"

#include <QFile>
#include <QPainter>
#include <QPrinter>

namespace zv {

struct DwgViewX::State {
    QString path, fontPath, error;
    bool loaded = false, silent = false;
    double unitsPerPixel = 1;
    Mode mode = Mode::None;
    std::function<bool(QPrinter&, QWidget*)> chooser;
};

DwgViewX::DwgViewX(QWidget* parent) : QWidget(parent), m_state(std::make_unique<State>())
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Drawing"));
}

DwgViewX::~DwgViewX() = default;

bool DwgViewX::setDrawing(const std::string& path)
{
    setDwgFileName(QString::fromLocal8Bit(path.c_str(), qsizetype(path.size())));
    return m_state->loaded;
}

void DwgViewX::setDwgFileName(const QString& path)
{
    m_state->path = path;
    QFile file(path);
    m_state->loaded = file.open(QIODevice::ReadOnly) && file.read(4) == QByteArray("AC10");
    m_state->error = m_state->loaded ? QString() : tr("The drawing cannot be read.");
    update();
}

void DwgViewX::setFontFolder(const std::string& folder)
{
    setFontPath(QString::fromLocal8Bit(folder.c_str(), qsizetype(folder.size())));
}

QString DwgViewX::dwgFileName() const
{
    return m_state->path;
}
QString DwgViewX::fontPath() const
{
    return m_state->fontPath;
}
void DwgViewX::setFontPath(const QString& folder)
{
    m_state->fontPath = folder;
}
QString DwgViewX::errorText() const
{
    return m_state->error;
}
bool DwgViewX::hasDrawing() const
{
    return m_state->loaded;
}
DwgViewX::Mode DwgViewX::mode() const
{
    return m_state->mode;
}
double DwgViewX::unitsPerPixel() const
{
    return m_state->loaded ? m_state->unitsPerPixel : 0;
}

void DwgViewX::zoomExtents()
{
    m_state->unitsPerPixel = 1;
}
void DwgViewX::zoomIn()
{
    m_state->unitsPerPixel /= 1.25;
}
void DwgViewX::zoomOut()
{
    m_state->unitsPerPixel *= 1.25;
}
void DwgViewX::zoomWindow()
{
    setMode(Mode::ZoomWindow);
}
void DwgViewX::pan()
{
    setMode(Mode::Pan);
}
void DwgViewX::zoomRealtime()
{
    setMode(Mode::ZoomRealtime);
}
void DwgViewX::panRealtime()
{
    setMode(Mode::Pan);
}
void DwgViewX::view3DOrbit()
{
    setMode(Mode::Pan);
}
void DwgViewX::layersDialog() {}
void DwgViewX::setMode(Mode mode)
{
    m_state->mode = mode;
}

bool DwgViewX::print()
{
    QPrinter printer;
    return hasDrawing() && (m_state->silent || !m_state->chooser || m_state->chooser(printer, this)) &&
           printDirect(printer);
}

bool DwgViewX::printDirect(QPrinter& printer)
{
    QPainter painter;
    return hasDrawing() && painter.begin(&printer);
}

bool DwgViewX::printSilently() const
{
    return m_state->silent;
}
void DwgViewX::setPrintSilently(bool silently)
{
    m_state->silent = silently;
}
void DwgViewX::setPrinterChooser(std::function<bool(QPrinter&, QWidget*)> chooser)
{
    m_state->chooser = std::move(chooser);
}

QSize DwgViewX::sizeHint() const
{
    return {480, 360};
}

void DwgViewX::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, m_state->loaded ? m_state->path : m_state->error);
}

void DwgViewX::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
}
void DwgViewX::wheelEvent(QWheelEvent* event)
{
    QWidget::wheelEvent(event);
}
void DwgViewX::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
}
void DwgViewX::mouseMoveEvent(QMouseEvent* event)
{
    QWidget::mouseMoveEvent(event);
}
void DwgViewX::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
}
void DwgViewX::mouseDoubleClickEvent(QMouseEvent* event)
{
    QWidget::mouseDoubleClickEvent(event);
}
void DwgViewX::keyPressEvent(QKeyEvent* event)
{
    QWidget::keyPressEvent(event);
}
void DwgViewX::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
}
void DwgViewX::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
}

} // namespace zv
