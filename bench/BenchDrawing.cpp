#include "BenchDrawing.h"

#include "DocumentEdit.h"
#include "FindFile.h"

#include "drawing/Reader.h"
#include "drawing/Writer.h"
#include "drawing/fonts/FontFolder.h"
#include "drawing/properties/PropertiesReader.h"
#include "drawing/scene/SceneBuilder.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "platform/Text.h"

namespace zv::bench {

namespace {

constexpr std::size_t kMostUndo = 50;

/// Puts what the model space covers, seen from above, where a drawing keeps it.
void storeExtents(dwg::Document& document, const dwg::Document& seen)
{
    dwg::FontFolder fonts(joinPath(installationFolder(), "fonts"));
    const dwg::Box bounds = dwg::buildScene(seen, fonts).bounds;
    const dwg::HeaderVariables none;
    dwg::HeaderVariables& header = document.header;
    header.extentsMin = bounds.empty() ? none.extentsMin : dwg::lift(bounds.min);
    header.extentsMax = bounds.empty() ? none.extentsMax : dwg::lift(bounds.max);
    for (dwg::Layout& layout : document.layouts) {
        if (!layout.model)
            continue;
        layout.extentsMin = header.extentsMin;
        layout.extentsMax = header.extentsMax;
    }
}

} // namespace

BenchDrawing::BenchDrawing(std::string title) : m_document(emptyDocument()), m_title(std::move(title))
{
    addVariables();
}

Result<std::shared_ptr<BenchDrawing>> BenchDrawing::load(const std::string& path)
{
    const Result<std::unique_ptr<ByteSource>> source = openByteSource(path);
    if (!source)
        return source.error();
    Result<dwg::Document> document = dwg::readDocument(**source);
    if (!document)
        return document.error();
    Result<std::optional<dwg::Properties>> properties = dwg::readProperties(**source);
    std::shared_ptr<BenchDrawing> drawing(new BenchDrawing());
    drawing->m_document = std::move(*document);
    if (properties && *properties)
        drawing->m_properties = std::move(**properties);
    drawing->m_path = path;
    drawing->m_lossReason = lossOfRewriting(**source, drawing->m_document);
    drawing->addVariables();
    return drawing;
}

void BenchDrawing::addVariables()
{
    const dwg::HeaderVariables& header = m_document.header;
    m_variables.add("DIMSCALE", header.dimScale, [](const AutomationValue& value) {
        const auto* scale = std::get_if<double>(&value);
        return scale != nullptr && *scale >= 0;
    });
    m_variables.add("LTSCALE", header.linetypeScale);
    m_variables.add("INSUNITS", std::int64_t{header.insertionUnits}, between(0, 20));
    m_variables.add("OSMODE", std::int64_t{4133}, between(0, 32767));
    m_variables.add("ORTHOMODE", std::int64_t{0}, between(0, 1));
    m_variables.add("CLAYER", layerName(m_document, m_document.header.currentLayer),
                    [this](const AutomationValue& value) {
                        const auto* name = std::get_if<std::string>(&value);
                        return name != nullptr && findLayer(m_document, wide(*name)) != nullptr;
                    });
    m_variables.addComputed("DWGNAME", [this] { return AutomationValue(title()); });
    m_variables.addComputed("DWGPREFIX", [this] { return AutomationValue(folderPart(m_path)); });
    m_variables.addComputed("DWGTITLED",
                            [this] { return AutomationValue(std::int64_t{m_path.empty() ? 0 : 1}); });
    m_variables.addComputed("DBMOD", [this] {
        constexpr int kContent = 1, kVariables = 4;
        return AutomationValue(std::int64_t{(m_geometryChanged || m_propertiesChanged ? kContent : 0) |
                                            (variablesChanged() ? kVariables : 0)});
    });
    m_variables.addComputed("TILEMODE", [] { return AutomationValue(std::int64_t{1}); });
}

void BenchDrawing::setProperties(dwg::Properties properties)
{
    m_properties = std::move(properties);
    m_propertiesChanged = true;
}

std::string BenchDrawing::title() const
{
    return m_path.empty() ? m_title : std::string(fileNamePart(m_path));
}

void BenchDrawing::beginChange()
{
    if (m_undo.size() == kMostUndo)
        m_undo.erase(m_undo.begin());
    m_undo.push_back({std::make_shared<const dwg::Document>(m_document), m_geometryChanged});
    m_geometryChanged = true;
    ++m_revision;
}

bool BenchDrawing::undo()
{
    if (m_undo.empty())
        return false;
    m_document = *m_undo.back().document;
    m_undo.pop_back();
    m_geometryChanged = true;
    ++m_revision;
    return true;
}

void BenchDrawing::abandonChange()
{
    if (m_undo.empty())
        return;
    const bool changedBefore = m_undo.back().geometryChanged;
    undo();
    m_geometryChanged = changedBefore;
}

const dwg::Document& BenchDrawing::seen()
{
    if (!hasXrefs(m_document))
        return m_document;
    if (m_seenRevision != m_revision) {
        m_seen = withXrefs(m_document, m_path, m_xrefFiles);
        m_seenRevision = m_revision;
    }
    return m_seen;
}

void BenchDrawing::reloadXrefs()
{
    m_xrefFiles.forget();
    ++m_revision;
}

/// The variables that a drawing's file keeps, as the file would have them now.
dwg::HeaderVariables BenchDrawing::keptVariables() const
{
    dwg::HeaderVariables kept = m_document.header;
    kept.dimScale = m_variables.real("DIMSCALE");
    kept.linetypeScale = m_variables.real("LTSCALE");
    kept.insertionUnits = static_cast<int>(m_variables.whole("INSUNITS"));
    if (const dwg::Layer* layer = findLayer(m_document, wide(m_variables.text("CLAYER"))))
        kept.currentLayer = layer->handle;
    return kept;
}

bool BenchDrawing::variablesChanged() const
{
    const dwg::HeaderVariables& saved = m_document.header;
    const dwg::HeaderVariables now = keptVariables();
    return now.dimScale != saved.dimScale || now.linetypeScale != saved.linetypeScale ||
           now.insertionUnits != saved.insertionUnits || now.currentLayer != saved.currentLayer;
}

Result<void> BenchDrawing::save(const std::string& path)
{
    const std::string target = path.empty() ? m_path : path;
    if (target.empty())
        return Error{ErrorCode::NotFound, "The drawing has no name yet"};
    const bool inPlace = target == m_path;
    if (inPlace && !isModified())
        return {};
    const bool onlyProperties = inPlace && !m_lossReason.empty() && !m_geometryChanged && !variablesChanged();
    const Result<void> saved = onlyProperties ? savePropertiesOnly(target) : saveWhole(target);
    if (!saved)
        return saved;
    m_path = target;
    m_geometryChanged = false;
    m_propertiesChanged = false;
    return {};
}

Result<void> BenchDrawing::saveWhole(const std::string& path)
{
    if (!m_lossReason.empty())
        return Error{ErrorCode::Unsupported, "Not saved, for something would be lost: " + m_lossReason};
    dwg::Document document = m_document;
    document.header = keptVariables();
    storeExtents(document, seen());
    dwg::WriteOptions options;
    options.properties = m_properties;
    const Result<std::string> bytes = dwg::writeDocument(document, options);
    if (!bytes)
        return bytes.error();
    if (const Result<void> written = replaceFile(path, path + ".new", *bytes); !written)
        return written;
    m_document = std::move(document);
    return {};
}

Result<void> BenchDrawing::savePropertiesOnly(const std::string& path)
{
    const Result<std::string> old = readFile(path);
    if (!old)
        return old.error();
    const Result<std::string> bytes = dwg::replaceProperties(*old, m_properties);
    if (!bytes)
        return bytes.error();
    return replaceFile(path, path + ".new", *bytes);
}

} // namespace zv::bench
