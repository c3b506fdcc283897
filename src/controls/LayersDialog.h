#pragma once

#include "drawing/Document.h"

#include <QDialog>

class QListWidget;
class QListWidgetItem;

namespace zv {

/// Lists the layers of a drawing and switches them on and off. Only what is shown changes, never a file.
class LayersDialog : public QDialog {
    Q_OBJECT

public:
    explicit LayersDialog(dwg::Document& document, QWidget* parent);

Q_SIGNALS:
    void layersChanged();

private:
    void fill();
    void itemChanged(QListWidgetItem* item);
    void setAll(bool on);

    dwg::Document& m_document;
    QListWidget* m_list;
};

} // namespace zv
