#include "controls/ImageList.h"

#include "controls/VectorPicture.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

#include <span>

// Resources of a static library are only linked in when they are asked for, from outside any namespace.
static void loadPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace zv {
namespace {

// The colours that the drawings are made in; each is replaced when a picture is painted.
const char kInk[] = "#000000";
const char kAccent[] = "#ff8000";

struct Entry {
    const char* name;
    bool lit;
};

// The tabs know three states: chosen, not chosen, and the mouse over them.
constexpr Entry kListA[] = {
    {"library", false},
    {"library", true},
    {"tab-tools-chosen", false},
    {"tab-tools", false},
    {"tab-tools", true},
    {"mylib", false},
    {"mylib", true},
    {"options", false},
    {"options", true},
    {"tab-settings-chosen", false},
    {"tab-settings", false},
    {"tab-settings", true},
    {"print-libraries", false},
    {"print-libraries", true},
};

constexpr Entry kListB[] = {
    {"enlarge", false},       {"thumbnails", false},   {"previous", false},     {"next", false},
    {"previous", true},       {"queue", false},        {"pin", false},          {"pin", true},
    {"search", true},         {"search", false},       {"help", false},         {"help", true},
    {"queue-add", false},     {"queue-add", true},     {"insert", false},       {"insert", true},
    {"open", false},          {"open", true},          {"xref", false},         {"xref", true},
    {"zoom-in", false},       {"zoom-in", true},       {"zoom-out", false},     {"zoom-out", true},
    {"pan", false},           {"pan", true},           {"print", false},        {"print", true},
    {"print-library", false}, {"print-library", true}, {"zoom-extents", false}, {"zoom-extents", true},
    {"layers", false},        {"layers", true},        {"zoom-window", false},  {"zoom-window", true},
};

constexpr Entry kListC[] = {
    {"enlarge", false}, {"enlarge", true}, {"thumbnails", false}, {"thumbnails", true}, {"help", false},
    {"help", true},     {"clear", true},   {"clear", false},      {"insert", false},    {"insert", true},
    {"xref", false},    {"xref", true},    {"search", false},     {"search", true},     {"open", false},
    {"open", true},     {"stop", false},   {"queue-add", false},
};

constexpr Entry kListD[] = {
    {"list-add", false},
    {"list-remove", false},
    {"list-clear", false},
    {"delete", false},
};

std::span<const Entry> entriesOf(char letter)
{
    switch (letter) {
    case 'A':
        return kListA;
    case 'B':
        return kListB;
    case 'C':
        return kListC;
    default:
        return kListD;
    }
}

QByteArray drawing(const QString& name)
{
    loadPictures();
    QFile file(QStringLiteral(":/pictures/") + name + QStringLiteral(".svg"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Paints one drawing in the colours of the palette that holds at that moment.
class PictureEngine : public QIconEngine {
public:
    PictureEngine(QString name, bool lit) : m_name(std::move(name)), m_lit(lit) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QApplication::palette();
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor ink = palette.color(group, QPalette::ButtonText);
        const QColor accent = mode == QIcon::Disabled ? ink : accentColor();
        QByteArray text = drawing(m_name);
        text.replace(kInk, ink.name().toLatin1());
        text.replace(kAccent, accent.name().toLatin1());
        const VectorPicture picture(text);

        QRectF place(rect);
        const QSizeF natural = picture.box().size();
        if (!natural.isEmpty()) {
            place.setSize(natural.scaled(rect.size(), Qt::KeepAspectRatio));
            place.moveCenter(QRectF(rect).center());
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (m_lit && mode != QIcon::Disabled) {
            QColor ground = accent;
            ground.setAlphaF(0.30F);
            painter->setPen(Qt::NoPen);
            painter->setBrush(ground);
            const double corner = place.height() / 6;
            painter->drawRoundedRect(place, corner, corner);
        }
        picture.paint(*painter, place);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        const QPalette palette = QApplication::palette();
        const QString key = QStringLiteral("zv-picture/%1/%2/%3x%4/%5/%6")
                                .arg(m_name)
                                .arg(m_lit)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(mode)
                                .arg(palette.cacheKey());
        QPixmap picture;
        if (QPixmapCache::find(key, &picture))
            return picture;
        picture = QPixmap(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        painter.end();
        QPixmapCache::insert(key, picture);
        return picture;
    }

    QIconEngine* clone() const override { return new PictureEngine(m_name, m_lit); }

private:
    QString m_name;
    bool m_lit;
};

} // namespace

const ImageList& ImageList::a()
{
    static const ImageList list('A');
    return list;
}

const ImageList& ImageList::b()
{
    static const ImageList list('B');
    return list;
}

const ImageList& ImageList::c()
{
    static const ImageList list('C');
    return list;
}

const ImageList& ImageList::d()
{
    static const ImageList list('D');
    return list;
}

int ImageList::count() const
{
    return static_cast<int>(entriesOf(m_letter).size());
}

QIcon ImageList::picture(int index) const
{
    if (index < 1 || index > count())
        return {};
    const Entry& entry = entriesOf(m_letter)[std::size_t(index - 1)];
    return namedPicture(QString::fromLatin1(entry.name), entry.lit);
}

QIcon namedPicture(const QString& name, bool lit)
{
    if (drawing(name).isEmpty())
        return {};
    return QIcon(new PictureEngine(name, lit));
}

QColor accentColor()
{
    const bool dark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    return dark ? QColor(0xff, 0x9a, 0x3c) : QColor(0xd0, 0x62, 0x00);
}

} // namespace zv
