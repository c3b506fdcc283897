#include "support/PdfFacts.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTransform>
#include <QVector>
#include <QtEndian>

#include <cmath>

namespace zv {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;

QByteArray inflated(const QByteArray& packed)
{
    QByteArray sized(4, '\0');
    qToBigEndian<quint32>(quint32(packed.size()) * 4, sized.data());
    return qUncompress(sized + packed);
}

/// Follows the words of a page's content as far as lines and areas go.
class ContentReader {
public:
    explicit ContentReader(PdfFacts& facts) : m_facts(facts) {}

    void read(const QByteArray& content)
    {
        for (const QByteArray& word : content.simplified().split(' ')) {
            bool isNumber = false;
            const double number = word.toDouble(&isNumber);
            if (isNumber)
                m_numbers.append(number);
            else {
                operate(word);
                m_numbers.clear();
            }
        }
    }

private:
    void operate(const QByteArray& word)
    {
        const auto n = [this](qsizetype i) { return i < m_numbers.size() ? m_numbers[i] : 0; };
        if (word == "q") {
            m_kept.append(m_map);
        } else if (word == "Q") {
            m_map = m_kept.isEmpty() ? QTransform() : m_kept.takeLast();
        } else if (word == "cm") {
            m_map = QTransform(n(0), n(1), n(2), n(3), n(4), n(5)) * m_map;
        } else if (word == "w") {
            m_width = n(0) * std::sqrt(std::abs(m_map.determinant())) * kMillimetresPerPoint;
        } else if (word == "SCN" || word == "scn") {
            m_color = m_numbers.size() == 1 ? qRgb(int(n(0) * 255), int(n(0) * 255), int(n(0) * 255))
                                            : qRgb(int(n(0) * 255), int(n(1) * 255), int(n(2) * 255));
            (word == "SCN" ? m_stroke : m_fill) = m_color;
        } else if (word == "m" || word == "l") {
            m_points.append(m_map.map(QPointF(n(0), n(1))) * kMillimetresPerPoint);
        } else if (word == "c") {
            m_points.append(m_map.map(QPointF(n(4), n(5))) * kMillimetresPerPoint);
        } else if (word == "S" || word == "B" || word == "B*") {
            m_facts.thinnest = m_facts.thinnest == 0 ? m_width : std::min(m_facts.thinnest, m_width);
            draw(m_stroke);
        } else if (word == "f" || word == "f*") {
            draw(m_fill);
        } else if (word == "n") {
            m_points.clear();
        }
    }

    void draw(QRgb color)
    {
        ++m_facts.paths;
        m_facts.colors.insert(color);
        for (const QPointF& point : std::as_const(m_points))
            m_facts.ink = m_facts.ink.isNull() ? QRectF(point, QSizeF(1e-9, 1e-9))
                                               : m_facts.ink.united(QRectF(point, QSizeF(1e-9, 1e-9)));
        m_points.clear();
    }

    PdfFacts& m_facts;
    QVector<double> m_numbers;
    QVector<QPointF> m_points;
    QTransform m_map;
    QVector<QTransform> m_kept;
    double m_width = 0;
    QRgb m_color = 0, m_stroke = 0, m_fill = 0;
};

/// A text of the file's information: two bytes a letter, with the marks that a text's end needs.
QString infoText(const QByteArray& bytes, const QByteArray& key)
{
    qsizetype at = bytes.indexOf(key + " (\xfe\xff");
    if (at < 0)
        return {};
    at += key.size() + 4;
    QByteArray text;
    for (; at < bytes.size() && bytes[at] != ')'; ++at)
        text += bytes[at] == '\\' ? bytes[++at] : bytes[at];
    QString result;
    for (qsizetype i = 0; i + 1 < text.size(); i += 2)
        result += QChar(qFromBigEndian<quint16>(text.constData() + i));
    return result;
}

} // namespace

PdfFacts readPdf(const QString& name)
{
    PdfFacts facts;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return facts;
    const QByteArray bytes = file.readAll();
    facts.whole = bytes.startsWith("%PDF-") && bytes.trimmed().endsWith("%%EOF");
    facts.title = infoText(bytes, "/Title");
    static const QRegularExpression box(
        QStringLiteral("/MediaBox\\s*\\[\\s*([0-9.]+)\\s+([0-9.]+)\\s+([0-9.]+)\\s+([0-9.]+)"));
    auto boxes = box.globalMatch(QString::fromLatin1(bytes));
    while (boxes.hasNext()) {
        const auto found = boxes.next();
        ++facts.pages;
        facts.millimetres =
            QSizeF(found.captured(3).toDouble(), found.captured(4).toDouble()) * kMillimetresPerPoint;
    }
    facts.images = int(bytes.count("/Subtype /Image"));
    ContentReader reader(facts);
    for (qsizetype at = bytes.indexOf("stream\n"); at >= 0; at = bytes.indexOf("stream\n", at)) {
        at += 7;
        const qsizetype end = bytes.indexOf("endstream", at);
        if (end < 0)
            break;
        if (const QByteArray content = inflated(bytes.mid(at, end - at)); content.contains(" cm\n"))
            reader.read(content);
        at = end + 10;
    }
    return facts;
}

double inkOnPage(const QString& file)
{
    QProcess poppler;
    poppler.start(QStringLiteral("pdftoppm"),
                  {QStringLiteral("-r"), QStringLiteral("40"), QStringLiteral("-gray"), file});
    if (!poppler.waitForFinished() || poppler.exitCode() != 0)
        return -1;
    const QImage page = QImage::fromData(poppler.readAllStandardOutput());
    if (page.isNull())
        return -1;
    double dark = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            dark += 255 - qGray(page.pixel(x, y));
    return dark / 255 / page.width() / page.height();
}

} // namespace zv
