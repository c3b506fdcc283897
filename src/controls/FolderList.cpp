#include "controls/FolderList.h"

#include "controls/ImageList.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>

namespace zv {
namespace {

constexpr int kPathRole = Qt::UserRole;      ///< Of a folder: its full path.
constexpr int kDepthRole = Qt::UserRole + 1; ///< How many folders stand above it.
constexpr int kIcon = 16;                    ///< Pixels.
constexpr int kIndent = 8;                   ///< Pixels for each.
constexpr int kDeepest = 12;                 ///< What lies deeper is indented no further.

/// Shows how deep a folder lies.
class DepthDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(indent(index), 0);
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem moved = option;
        moved.rect.setLeft(moved.rect.left() + indent(index));
        QStyledItemDelegate::paint(painter, moved, index);
    }

private:
    static int indent(const QModelIndex& index)
    {
        return kIndent * std::min(index.data(kDepthRole).toInt(), kDeepest);
    }
};

} // namespace

FolderList::FolderList(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new DepthDelegate(this));
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTextElideMode(Qt::ElideNone);
    setTabKeyNavigation(false);
    setIconSize({kIcon, kIcon});
    setAccessibleName(tr("Folders"));
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_filling || row < 0)
            return;
        m_told = true;
        Q_EMIT folderChosen();
    });
    connect(this, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) { open(row(item)); });
    const std::string start = currentFolder();
    fill(start, foldersIn(start).valueOr({}));
}

QString FolderList::pathText() const
{
    return toText(m_path);
}

std::string FolderList::chosenPath() const
{
    const QListWidgetItem* chosen = currentItem();
    return chosen ? toBytes(chosen->data(kPathRole).toString()) : m_path;
}

Result<void> FolderList::setPath(const std::string& path)
{
    const std::string full = fullPath(path);
    const auto inside = foldersIn(full);
    if (!inside)
        return inside.error();
    const bool changed = full != m_path;
    fill(full, *inside);
    if (changed)
        Q_EMIT pathChanged();
    return {};
}

void FolderList::refresh()
{
    fill(m_path, foldersIn(m_path).valueOr({}));
}

void FolderList::open(int row)
{
    if (row < 0 || !item(row)->flags())
        return;
    const std::string path = toBytes(item(row)->data(kPathRole).toString());
    if (setPath(path))
        return;
    if (!folderExists(path)) {
        refresh();
        return;
    }
    // Files may be put into a folder that does not show what it holds.
    fill(path, {});
    auto* const note = new QListWidgetItem(tr("(cannot be read)"), this);
    note->setFlags(Qt::NoItemFlags);
    Q_EMIT pathChanged();
}

void FolderList::fill(const std::string& path, const std::vector<std::string>& inside)
{
    const QScopedValueRollback filling(m_filling, true);
    m_path = path;
    clear();
    int depth = 0;
    for (const std::string& above : foldersDownTo(path)) {
        const std::string_view name = fileNamePart(above);
        addFolder(above, name.empty() || depth == 0 ? std::string_view(above) : name, depth, true);
        ++depth;
    }
    setCurrentRow(depth - 1);
    for (const std::string& name : inside)
        addFolder(inFolder(path, name), name, depth, false);
    // The open folder stands at the top, for what lies in it to be seen.
    scrollToItem(item(depth - 1), QAbstractItemView::PositionAtTop);
}

void FolderList::addFolder(const std::string& path, std::string_view name, int depth, bool open)
{
    auto* const row = new QListWidgetItem(
        namedPicture(open ? QStringLiteral("folder-open") : QStringLiteral("folder")), toText(name), this);
    row->setData(kPathRole, toText(path));
    row->setData(kDepthRole, depth);
}

void FolderList::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        open(currentRow());
        return;
    case Qt::Key_Backspace: {
        const auto above = foldersDownTo(m_path);
        if (above.size() > 1)
            open(int(above.size()) - 2);
        return;
    }
    default:
        QListWidget::keyPressEvent(event);
    }
}

void FolderList::mousePressEvent(QMouseEvent* event)
{
    m_told = false;
    QListWidget::mousePressEvent(event);
    const QListWidgetItem* pressed = itemAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && !m_told && pressed && pressed == currentItem())
        Q_EMIT folderChosen();
}

} // namespace zv
