#pragma once

#include "BenchDrawing.h"
#include "Command.h"
#include "Workshop.h"

#include "drawing/scene/Scene.h"

#include <QPointF>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zv::bench {

/// Shows the active drawing's model space. A click picks a point, the wheel zooms at the pointer, the middle
/// button moves the view and its double click shows the whole drawing.
class Canvas final : public QWidget {
    Q_OBJECT

public:
    explicit Canvas(QWidget* parent = nullptr);

    /// Shows a drawing, or nothing. Another one than before is seen whole.
    void show(const std::shared_ptr<BenchDrawing>& drawing);
    void zoom(const ZoomRequest& request);
    void setPrompt(const Prompt& prompt);

    /// Between drawing units and pixels of the widget.
    QPointF toPixels(const dwg::Point3& point) const;
    dwg::Point3 toDrawing(const QPointF& pixels) const;
    /// Half the side of the pick box, in drawing units.
    double pickRadius() const;
    /// What is seen, in drawing units.
    dwg::Box viewBox() const;

Q_SIGNALS:
    void pressed(); ///< With any button.
    void entered(); ///< The right button, which stands for Enter.
    void picked(double x, double y);
    /// Where the pointer is, in drawing units.
    void pointed(double x, double y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct View {
        dwg::Point2 center{6, 4.5};
        double unitsPerPixel = 0.02;
    };
    void buildScene();
    void buildDragged();
    void setView(const View& view);
    View viewOf(const dwg::Box& box) const;
    View wholeView() const;
    dwg::Affine viewMap() const;
    std::optional<dwg::Affine> draggedMap() const;
    void drawScene(QPainter& painter, const dwg::Scene& scene, const dwg::Affine& map);
    void drawCursor(QPainter& painter);

    std::shared_ptr<BenchDrawing> m_drawing;
    int m_revision = -1;
    dwg::Scene m_scene;
    dwg::Scene m_draggedScene; ///< Of the block that the prompt shows at the pointer.
    dwg::Handle m_draggedBlock = 0;
    View m_view;
    std::vector<View> m_earlier;
    Prompt m_prompt;
    std::optional<QPointF> m_pointer;
    std::optional<QPointF> m_dragFrom;
};

} // namespace zv::bench
