#include "drawing/paint/SystemFonts.h"

#include "platform/Text.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QPainterPath>
#include <QRawFont>
#include <QTextLayout>

#include <unordered_map>

namespace zv::dwg {

namespace {

constexpr double kPixels = 1000; ///< Outlines are taken at this size, at which hinting changes nothing.
/// The common substitute on Linux runs wider than the fonts of drawings, and its texts would overlap.
constexpr double kSubstituteWidth = 0.88;

QString qstring(const Text& text)
{
    return QString::fromUtf16(text.data(), qsizetype(text.size()));
}

/// The outline of a figure of the system's, capitals 1 high.
Glyph glyphOf(const QRawFont& font, quint32 index, double wide)
{
    const double cap = font.capHeight() > 0 ? font.capHeight() : font.ascent() * 0.72;
    const double unit = cap > 0 ? 1 / cap : 1 / kPixels;
    Glyph glyph;
    glyph.filled = true;
    const QPainterPath shape = font.pathForGlyph(index);
    const auto at = [&](double x, double y) { return Point2{x * unit * wide, -y * unit}; };
    Point2 start, last;
    for (int i = 0; i < shape.elementCount(); ++i) {
        const QPainterPath::Element e = shape.elementAt(i);
        const Point2 to = at(e.x, e.y);
        if (e.isMoveTo()) {
            if (i > 0)
                glyph.path.close(start);
            glyph.path.moveTo(to);
            start = last = to;
        } else if (e.isCurveTo() && i + 2 < shape.elementCount()) {
            const QPainterPath::Element e2 = shape.elementAt(i + 1), e3 = shape.elementAt(i + 2);
            const Point2 second = at(e2.x, e2.y), end = at(e3.x, e3.y);
            constexpr int kPieces = 8;
            for (int k = 1; k <= kPieces; ++k) {
                const double t = double(k) / kPieces, s = 1 - t;
                glyph.path.lineTo(last * (s * s * s) + to * (3 * s * s * t) + second * (3 * s * t * t) +
                                  end * (t * t * t));
            }
            last = end;
            i += 2;
        } else {
            glyph.path.lineTo(to);
            last = to;
        }
    }
    if (!glyph.path.elements.empty())
        glyph.path.close(start);
    glyph.bounds = glyph.path.bounds();
    const QList<QPointF> advances = font.advancesForGlyphIndexes({index});
    glyph.advance = advances.isEmpty() ? 0 : advances.first().x() * unit * wide;
    return glyph;
}

class OutlineFont final : public Font {
public:
    OutlineFont(QRawFont font, double wide) : m_font(std::move(font)), m_wide(wide) {}
    const Glyph* glyph(char32_t character) override
    {
        const auto known = m_glyphs.find(character);
        if (known != m_glyphs.end())
            return known->second.get();
        std::unique_ptr<Glyph>& glyph = m_glyphs[character];
        // Drawings write the diameter sign as the one of sets, which text fonts rarely have.
        const char32_t shown =
            character == U'\u2205' && !m_font.supportsCharacter(uint(character)) ? U'\u00d8' : character;
        if (m_font.supportsCharacter(uint(shown))) {
            const QString text = QString::fromUcs4(&shown, 1);
            const QList<quint32> indexes = m_font.glyphIndexesForString(text);
            if (!indexes.isEmpty() && indexes.first() != 0)
                glyph = std::make_unique<Glyph>(glyphOf(m_font, indexes.first(), m_wide));
        }
        return glyph.get();
    }

private:
    QRawFont m_font;
    double m_wide;
    std::unordered_map<char32_t, std::unique_ptr<Glyph>> m_glyphs;
};

/// Finds for each character whatever font of the system has it.
class AnyFont final : public Font {
public:
    const Glyph* glyph(char32_t character) override
    {
        const auto known = m_glyphs.find(character);
        if (known != m_glyphs.end())
            return known->second.get();
        std::unique_ptr<Glyph>& glyph = m_glyphs[character];
        QFont font;
        font.setPixelSize(int(kPixels));
        QTextLayout layout(QString::fromUcs4(&character, 1), font);
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        for (const QGlyphRun& run : layout.glyphRuns())
            if (!run.glyphIndexes().isEmpty() && run.glyphIndexes().first() != 0 && !glyph)
                glyph = std::make_unique<Glyph>(glyphOf(run.rawFont(), run.glyphIndexes().first(), 1));
        return glyph.get();
    }

private:
    std::unordered_map<char32_t, std::unique_ptr<Glyph>> m_glyphs;
};

bool isOutlineFile(const QString& name)
{
    return name.endsWith(QLatin1String(".ttf"), Qt::CaseInsensitive) ||
           name.endsWith(QLatin1String(".otf"), Qt::CaseInsensitive) ||
           name.endsWith(QLatin1String(".ttc"), Qt::CaseInsensitive);
}

/// The family of a font file of the common ones, by the names that systems give these files.
QString familyOfFile(QString file)
{
    file = file.left(file.lastIndexOf(QLatin1Char('.'))).toLower();
    static const std::pair<const char*, const char*> kFamilies[] = {
        {"arial", "Arial"},       {"times", "Times New Roman"}, {"cour", "Courier New"},
        {"verdana", "Verdana"},   {"tahoma", "Tahoma"},         {"calibri", "Calibri"},
        {"cambria", "Cambria"},   {"georgia", "Georgia"},       {"trebuc", "Trebuchet MS"},
        {"simsun", "SimSun"},     {"msgothic", "MS Gothic"},    {"gulim", "Gulim"},
        {"isocpeur", "ISOCPEUR"}, {"isocteur", "ISOCTEUR"},     {"romans", "RomanS"},
        {"swiss", "Swis721 BT"},  {"segoeui", "Segoe UI"},      {"consola", "Consolas"}};
    for (const auto& [start, family] : kFamilies)
        if (file.startsWith(QLatin1String(start)))
            return QString::fromLatin1(family);
    return file;
}

} // namespace

std::shared_ptr<FontProvider> SystemFonts::shared(const std::string& folder)
{
    static std::map<std::string, std::shared_ptr<FontProvider>> all;
    std::shared_ptr<FontProvider>& fonts = all[folder];
    if (!fonts)
        fonts = std::make_shared<SystemFonts>(folder);
    return fonts;
}

std::shared_ptr<Font> SystemFonts::findOther(const FontRequest& request)
{
    const std::u16string wideFile = request.file;
    const QString file = qstring(wideFile).section(QLatin1Char('\\'), -1).section(QLatin1Char('/'), -1);
    const bool byFile = isOutlineFile(file);
    if (!byFile && request.typeface.empty())
        return nullptr;
    if (byFile) {
        const QByteArray name = file.toUtf8();
        const std::string bytes = fileOfFolder(std::string_view(name.constData(), std::size_t(name.size())));
        QRawFont font(QByteArray(bytes.data(), qsizetype(bytes.size())), kPixels);
        if (!bytes.empty() && font.isValid())
            return std::make_shared<OutlineFont>(font, 1);
    }
    const QString family = request.typeface.empty() ? familyOfFile(file) : qstring(request.typeface);
    QFont wanted(family);
    wanted.setPixelSize(int(kPixels));
    wanted.setBold(request.bold || (byFile && request.typeface.empty() &&
                                    file.contains(QLatin1String("bd"), Qt::CaseInsensitive)));
    wanted.setItalic(request.italic);
    const QRawFont font = QRawFont::fromFont(wanted);
    if (!font.isValid())
        return nullptr;
    const bool substitute = !QFontDatabase::hasFamily(family);
    return std::make_shared<OutlineFont>(font, substitute ? kSubstituteWidth : 1);
}

std::shared_ptr<Font> SystemFonts::lastResort()
{
    return std::make_shared<AnyFont>();
}

} // namespace zv::dwg
