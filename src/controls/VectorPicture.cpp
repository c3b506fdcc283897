#include "controls/VectorPicture.h"

#include <QFile>
#include <QPainter>
#include <QStringList>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>

namespace zv {
namespace {

/// What a group hands down to what stands in it.
struct Look {
    QBrush fill = QColor(Qt::black);
    QPen stroke{Qt::black, 1, Qt::NoPen, Qt::FlatCap, Qt::SvgMiterJoin};
};

std::optional<double> numberOf(QStringView text)
{
    bool read = false;
    const double value = text.toDouble(&read);
    return read ? std::optional(value) : std::nullopt;
}

double attribute(const QXmlStreamAttributes& attributes, const char* name, double otherwise = 0)
{
    return numberOf(attributes.value(QLatin1String(name))).value_or(otherwise);
}

std::optional<QColor> colourOf(QStringView text)
{
    if (text == QLatin1String("none"))
        return QColor(Qt::transparent);
    const QColor colour(text.toString());
    return colour.isValid() ? std::optional(colour) : std::nullopt;
}

/// Takes one attribute over; false when it would change the look in a way that is not known.
bool takeOver(Look& look, QStringView name, QStringView value)
{
    if (name == QLatin1String("fill") || name == QLatin1String("stroke")) {
        const auto colour = colourOf(value);
        if (!colour)
            return false;
        const bool none = colour->alpha() == 0;
        if (name == QLatin1String("fill")) {
            look.fill = none ? QBrush(Qt::NoBrush) : QBrush(*colour);
        } else {
            look.stroke.setColor(*colour);
            look.stroke.setStyle(none ? Qt::NoPen : Qt::SolidLine);
        }
        return true;
    }
    if (name == QLatin1String("stroke-width")) {
        look.stroke.setWidthF(numberOf(value).value_or(1));
        return true;
    }
    if (name == QLatin1String("stroke-linecap")) {
        look.stroke.setCapStyle(value == QLatin1String("round") ? Qt::RoundCap : Qt::FlatCap);
        return value == QLatin1String("round") || value == QLatin1String("butt");
    }
    if (name == QLatin1String("stroke-linejoin")) {
        look.stroke.setJoinStyle(value == QLatin1String("round") ? Qt::RoundJoin : Qt::SvgMiterJoin);
        return value == QLatin1String("round") || value == QLatin1String("miter");
    }
    static constexpr QLatin1String kPlaces[] = {
        QLatin1String("x"),  QLatin1String("y"),  QLatin1String("width"),  QLatin1String("height"),
        QLatin1String("rx"), QLatin1String("cx"), QLatin1String("cy"),     QLatin1String("r"),
        QLatin1String("d"),  QLatin1String("id"), QLatin1String("viewBox")};
    return std::find(std::begin(kPlaces), std::end(kPlaces), name) != std::end(kPlaces);
}

/// The words of a path: commands and numbers.
QStringList wordsOf(QStringView text)
{
    QString spaced;
    for (const QChar c : text) {
        if (c.isLetter())
            spaced += QLatin1Char(' ') + c + QLatin1Char(' ');
        else
            spaced += c == QLatin1Char(',') ? QLatin1Char(' ') : c;
    }
    return spaced.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

qsizetype numbersOf(QChar command)
{
    switch (command.toLatin1()) {
    case 'M':
    case 'L':
        return 2;
    case 'H':
    case 'V':
        return 1;
    case 'Q':
        return 4;
    case 'C':
        return 6;
    default:
        return 0;
    }
}

std::optional<QPainterPath> pathOf(QStringView text)
{
    QPainterPath path;
    const QStringList words = wordsOf(text);
    QChar command;
    for (qsizetype at = 0; at < words.size();) {
        if (words[at][0].isLetter()) {
            command = words[at++][0];
            if (command == QLatin1Char('Z')) {
                path.closeSubpath();
                continue;
            }
        }
        double n[6] = {};
        const qsizetype count = numbersOf(command);
        if (count == 0 || at + count > words.size())
            return std::nullopt;
        for (qsizetype i = 0; i < count; ++i) {
            const auto number = numberOf(words[at + i]);
            if (!number)
                return std::nullopt;
            n[i] = *number;
        }
        at += count;
        const QPointF last = path.currentPosition();
        switch (command.toLatin1()) {
        case 'M':
            path.moveTo(n[0], n[1]);
            // Further points behind a move are lines.
            command = QLatin1Char('L');
            break;
        case 'L':
            path.lineTo(n[0], n[1]);
            break;
        case 'H':
            path.lineTo(n[0], last.y());
            break;
        case 'V':
            path.lineTo(last.x(), n[0]);
            break;
        case 'Q':
            path.quadTo(n[0], n[1], n[2], n[3]);
            break;
        default:
            path.cubicTo(n[0], n[1], n[2], n[3], n[4], n[5]);
        }
    }
    return path;
}

std::optional<QPainterPath> outlineOf(QStringView element, const QXmlStreamAttributes& attributes)
{
    QPainterPath path;
    if (element == QLatin1String("path"))
        return pathOf(attributes.value(QLatin1String("d")));
    if (element == QLatin1String("circle")) {
        const double radius = attribute(attributes, "r");
        path.addEllipse(QPointF(attribute(attributes, "cx"), attribute(attributes, "cy")), radius, radius);
        return path;
    }
    if (element == QLatin1String("rect")) {
        const double corner = attribute(attributes, "rx");
        path.addRoundedRect(QRectF(attribute(attributes, "x"), attribute(attributes, "y"),
                                   attribute(attributes, "width"), attribute(attributes, "height")),
                            corner, corner);
        return path;
    }
    return std::nullopt;
}

QRectF boxOf(const QXmlStreamAttributes& attributes)
{
    const QStringList view = wordsOf(attributes.value(QLatin1String("viewBox")));
    if (view.size() == 4)
        return {view[0].toDouble(), view[1].toDouble(), view[2].toDouble(), view[3].toDouble()};
    return {0, 0, attribute(attributes, "width"), attribute(attributes, "height")};
}

} // namespace

VectorPicture::VectorPicture(const QByteArray& svg)
{
    QXmlStreamReader reader(svg);
    std::vector<Look> looks{Look()};
    bool known = true;
    while (known && !reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            looks.pop_back();
            continue;
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        Look look = looks.back();
        for (const QXmlStreamAttribute& one : reader.attributes())
            known = known && takeOver(look, one.name(), one.value());
        looks.push_back(look);
        if (reader.name() == QLatin1String("svg")) {
            m_box = boxOf(reader.attributes());
        } else if (reader.name() != QLatin1String("g")) {
            const auto path = outlineOf(reader.name(), reader.attributes());
            known = known && path;
            if (path)
                m_shapes.push_back({*path, look.fill, look.stroke});
        }
    }
    if (!known || reader.hasError() || m_box.isEmpty())
        m_shapes.clear();
}

void VectorPicture::paint(QPainter& painter, const QRectF& place) const
{
    if (isEmpty())
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.topLeft());
    painter.scale(place.width() / m_box.width(), place.height() / m_box.height());
    painter.translate(-m_box.topLeft());
    for (const Shape& shape : m_shapes) {
        painter.setPen(shape.stroke);
        painter.setBrush(shape.fill);
        painter.drawPath(shape.path);
    }
    painter.restore();
}

QIcon vectorIcon(const QString& file)
{
    QFile svg(file);
    if (!svg.open(QIODevice::ReadOnly))
        return {};
    const VectorPicture picture(svg.readAll());
    QIcon icon;
    for (const int edge : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap drawn(edge, edge);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        picture.paint(painter, QRectF(0, 0, edge, edge));
        painter.end();
        icon.addPixmap(drawn);
    }
    return icon;
}

} // namespace zv
