#include "controls/LayersDialog.h"

#include "drawing/ColorTable.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace zv {

namespace {

constexpr int kLayerRole = Qt::UserRole;

bool isOn(const dwg::Layer& layer)
{
    return !layer.off && !layer.frozen;
}

QIcon colorSquare(const dwg::Layer& layer)
{
    const bool exact = layer.color.kind == dwg::Color::Kind::True;
    QPixmap square(14, 14);
    square.fill(QColor::fromRgb(exact ? layer.color.rgb : dwg::indexedColor(layer.color.index)));
    return QIcon(square);
}

} // namespace

LayersDialog::LayersDialog(dwg::Document& document, QWidget* parent)
    : QDialog(parent), m_document(document), m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("LayersDialog"));
    setWindowTitle(tr("Layers"));
    m_list->setObjectName(QStringLiteral("LayerList"));
    m_list->setAccessibleName(tr("Layers that are shown"));
    m_list->setSortingEnabled(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* on = buttons->addButton(tr("All &On"), QDialogButtonBox::ActionRole);
    QPushButton* off = buttons->addButton(tr("All O&ff"), QDialogButtonBox::ActionRole);
    on->setObjectName(QStringLiteral("LayersAllOn"));
    off->setObjectName(QStringLiteral("LayersAllOff"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(320, 400);
    fill();
    connect(m_list, &QListWidget::itemChanged, this, &LayersDialog::itemChanged);
    connect(on, &QPushButton::clicked, this, [this] { setAll(true); });
    connect(off, &QPushButton::clicked, this, [this] { setAll(false); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void LayersDialog::fill()
{
    for (std::size_t i = 0; i < m_document.layers.size(); ++i) {
        const dwg::Layer& layer = m_document.layers[i];
        auto* item = new QListWidgetItem(colorSquare(layer),
                                         QString::fromUtf16(layer.name.data(), qsizetype(layer.name.size())));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(isOn(layer) ? Qt::Checked : Qt::Unchecked);
        item->setData(kLayerRole, qulonglong(i));
        m_list->addItem(item);
    }
    if (m_list->count() > 0)
        m_list->setCurrentRow(0);
}

void LayersDialog::itemChanged(QListWidgetItem* item)
{
    dwg::Layer& layer = m_document.layers[item->data(kLayerRole).toULongLong()];
    const bool on = item->checkState() == Qt::Checked;
    if (on == isOn(layer))
        return;
    layer.off = !on;
    layer.frozen = layer.frozen && !on;
    Q_EMIT layersChanged();
}

void LayersDialog::setAll(bool on)
{
    const bool blocked = m_list->blockSignals(true);
    for (int row = 0; row < m_list->count(); ++row)
        m_list->item(row)->setCheckState(on ? Qt::Checked : Qt::Unchecked);
    m_list->blockSignals(blocked);
    for (dwg::Layer& layer : m_document.layers) {
        layer.off = !on;
        layer.frozen = layer.frozen && !on;
    }
    m_list->viewport()->update();
    Q_EMIT layersChanged();
}

} // namespace zv
