#include "BenchDrawing.h"

#include "DocumentEdit.h"
#include "FindFile.h"

#include "drawing/Amend.h"
#include "drawing/Reader.h"
#include "drawing/Writer.h"
#include "drawing/fonts/FontFolder.h"
#include "drawing/properties/PropertiesReader.h"
#include "drawing/scene/SceneBuilder.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "platform/Text.h"
#include "platform/WithinMemory.h"

#include <algorithm>
#include <span>

namespace zv::bench {

namespace {

constexpr int kContentMark = 1, kVariableMark = 4;
/// Places in a drawing's file are signed numbers of 32 bits.
constexpr std::uint64_t kLargestFile = 0x7FFFFFFF;

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

/// The largest of the pictures that the file carries, where it is a bitmap.
std::optional<dwg::Pixels> storedPreview(const ByteSource& source)
{
    const auto previews = dwg::readPreviews(source);
    if (!previews || previews->empty() || previews->front().kind != dwg::PreviewKind::Bmp)
        return std::nullopt;
    auto pixels = dwg::decodeBitmap(previews->front().bytes);
    return pixels ? std::optional(std::move(*pixels)) : std::nullopt;
}

/// Writes in the place of a file, if one is there; a link to it stays one.
Result<void> replaced(const std::string& path, const std::string& bytes)
{
    const std::string target = behindLink(path);
    return replaceFile(target, target + ".sv$", bytes);
}

} // namespace

BenchDrawing::BenchDrawing(std::string title) : m_document(emptyDocument()), m_title(std::move(title))
{
    addVariables();
}

bool isSameFile(const std::string& a, const std::string& b)
{
    return a == b || zv::isSameFile(a, b);
}

Result<std::shared_ptr<BenchDrawing>> BenchDrawing::load(const std::string& path)
{
    using Loaded = Result<std::shared_ptr<BenchDrawing>>;
    Loaded loaded = withinMemory([&]() -> Loaded {
        std::shared_ptr<BenchDrawing> drawing(new BenchDrawing());
        const Result<void> read = drawing->read(path);
        return read ? Loaded(std::move(drawing)) : read.error();
    });
    if (!loaded)
        return Error{loaded.error().code, namingFile(path, loaded.error())};
    return loaded;
}

Result<void> BenchDrawing::read(const std::string& path)
{
    fileIsNow(path);
    Result<std::string> bytes = readFile(path, kLargestFile);
    if (!bytes)
        return bytes.error();
    const MemorySource source(std::as_bytes(std::span(*bytes)));
    Result<dwg::Document> document = dwg::readDocument(source);
    if (!document)
        return document.error();
    const Result<std::optional<dwg::Properties>> properties = dwg::readProperties(source);
    m_document = std::move(*document);
    if (properties && *properties)
        m_properties = **properties;
    m_outlook = saveOutlook(*bytes, m_document, properties ? *properties : std::optional<dwg::Properties>());
    m_preview = storedPreview(source);
    if (m_outlook.way == SaveWay::Amended) {
        m_file = std::move(*bytes);
        m_fileDocument = m_document;
    }
    addVariables();
    return {};
}

void BenchDrawing::fileIsNow(const std::string& path)
{
    m_path = fullPath(path);
    const Result<FileStamp> stamp = fileStamp(m_path);
    m_fileStamp = stamp ? std::optional(*stamp) : std::nullopt;
}

/// Whether the file is still the one that this drawing was read from or written to.
Result<void> BenchDrawing::checkFile() const
{
    if (!fileExists(m_path))
        return Error{ErrorCode::NotFound, m_path + " is not there any more"};
    const Result<FileStamp> stamp = fileStamp(m_path);
    if (stamp && m_fileStamp && *stamp == *m_fileStamp)
        return {};
    return Error{ErrorCode::Busy, m_path + " was changed by another program meanwhile"};
}

bool BenchDrawing::isFileReadOnly() const
{
    return isMarkedReadOnly(m_path);
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
        return AutomationValue(std::int64_t{unsavedMarks() | (m_propertiesChanged ? kContentMark : 0)});
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
    finishChange();
    m_before = m_document;
    ++m_revision;
}

/// What a change did is known only when the next one begins.
void BenchDrawing::finishChange()
{
    if (!m_before)
        return;
    UndoStep step;
    step.content.emplace(*m_before, m_document);
    step.marks = kContentMark;
    m_before.reset();
    push(std::move(step));
}

void BenchDrawing::push(UndoStep step)
{
    if (m_saved && *m_saved > m_done)
        m_saved.reset(); // What was saved can not be had back any more.
    m_steps.resize(m_done);
    m_steps.push_back(std::move(step));
    ++m_done;
}

void BenchDrawing::apply(const UndoStep& step, bool back)
{
    if (step.content && back)
        step.content->undo(m_document);
    else if (step.content)
        step.content->redo(m_document);
    else
        static_cast<void>(m_variables.set(step.variable, back ? step.before : step.after));
    ++m_revision;
}

bool BenchDrawing::undo()
{
    finishChange();
    if (m_done == 0)
        return false;
    apply(m_steps[--m_done], true);
    return true;
}

bool BenchDrawing::redo()
{
    finishChange();
    if (m_done == m_steps.size())
        return false;
    apply(m_steps[m_done++], false);
    return true;
}

void BenchDrawing::abandonChange()
{
    if (!m_before)
        return;
    m_document = std::move(*m_before);
    m_before.reset();
    ++m_revision;
}

Result<void> BenchDrawing::setVariable(std::string_view name, const AutomationValue& value)
{
    const AutomationValue before = m_variables.get(name).valueOr({});
    if (const Result<void> set = m_variables.set(name, value); !set)
        return set;
    UndoStep step;
    step.variable = upper(name);
    step.before = before;
    step.after = m_variables.get(name).valueOr({});
    if (step.after == before)
        return {};
    constexpr std::string_view kInTheFile[] = {"DIMSCALE", "LTSCALE", "INSUNITS", "CLAYER"};
    const bool isKept =
        std::find(std::begin(kInTheFile), std::end(kInTheFile), step.variable) != std::end(kInTheFile);
    step.marks = isKept ? kVariableMark : 0;
    finishChange();
    push(std::move(step));
    return {};
}

/// What was done, or undone, since it was saved.
int BenchDrawing::unsavedMarks() const
{
    int marks = m_before ? kContentMark : 0;
    if (!m_saved)
        return marks | kContentMark;
    for (std::size_t at = std::min(*m_saved, m_done); at < std::max(*m_saved, m_done); ++at)
        marks |= m_steps[at].marks;
    return marks;
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

std::string BenchDrawing::blockSource(dwg::Handle block) const
{
    const auto found = m_blockSources.find(block);
    return found == m_blockSources.end() ? std::string() : found->second;
}

Result<void> BenchDrawing::save()
{
    if (m_path.empty())
        return Error{ErrorCode::NotFound, "The drawing has no name yet"};
    if (const Result<void> same = checkFile(); !same)
        return same;
    if (!isModified())
        return {};
    const bool isSealed = m_outlook.way == SaveWay::NewFile;
    if (isSealed && unsavedMarks() != 0)
        return Error{ErrorCode::Unsupported, m_path + " itself cannot be written: " + m_outlook.reason};
    if (isFileReadOnly())
        return Error{ErrorCode::Denied, m_path + " is read-only"};
    return isSealed ? savePropertiesOnly() : writeTo(m_path, true);
}

Result<void> BenchDrawing::saveAs(const std::string& path, bool mayReplace)
{
    const bool isOwn = !m_path.empty() && isSameFile(path, m_path);
    if (isOwn && m_outlook.way == SaveWay::NewFile)
        return Error{ErrorCode::Unsupported, m_path + " itself cannot be written: " + m_outlook.reason};
    if (mayReplace && isMarkedReadOnly(path))
        return Error{ErrorCode::Denied, path + " is read-only"};
    return writeTo(path, mayReplace);
}

std::vector<std::string> BenchDrawing::lossOfSaving(const std::string& path) const
{
    const bool isOwn = path.empty() || (!m_path.empty() && isSameFile(path, m_path));
    if (m_outlook.way == SaveWay::Amended)
        return unsavable(m_document, &*m_fileDocument);
    if (m_outlook.way == SaveWay::Whole)
        return unsavable(m_document);
    return isOwn ? std::vector<std::string>() : m_outlook.missing;
}

Result<std::string> BenchDrawing::wholeFile(const dwg::Document& document)
{
    dwg::WriteOptions options;
    options.properties = m_properties;
    if (m_outlook.way == SaveWay::NewFile && m_properties.custom.size() > kMostCustomProperties)
        options.properties->custom.resize(kMostCustomProperties);
    options.preview = m_preview;
    return dwg::writeDocument(document, options);
}

Result<void> BenchDrawing::writeTo(const std::string& path, bool mayReplace)
{
    finishChange();
    const dwg::Document* const kept = m_fileDocument ? &*m_fileDocument : nullptr;
    const bool loses = !unsavable(m_document, kept).empty();
    dwg::Document document = loses ? savable(m_document, kept) : m_document;
    document.header = keptVariables();
    document.header.handleSeed = m_document.header.handleSeed;
    storeExtents(document, seen());
    const std::optional<dwg::Pixels> painted = paintPreview ? paintPreview(seen()) : std::nullopt;
    if (painted)
        m_preview = painted;
    const bool amends = m_outlook.way == SaveWay::Amended;
    Result<std::string> bytes = Error{ErrorCode::Failed, {}};
    if (amends) {
        dwg::WriteOptions options;
        if (m_propertiesChanged)
            options.properties = m_properties;
        options.preview = painted;
        bytes = dwg::amendDocument(m_file, document, options);
    } else {
        bytes = wholeFile(document);
    }
    if (!bytes)
        return bytes.error();
    if (const Result<void> written = mayReplace ? replaced(path, *bytes) : createFile(path, *bytes); !written)
        return written;
    if (m_outlook.way == SaveWay::NewFile) {
        m_outlook = {};
        m_properties.custom.resize(std::min(m_properties.custom.size(), kMostCustomProperties));
    }
    document.version = dwg::Version::R2000;
    document.damage.clear();
    if (amends) {
        m_file = std::move(*bytes);
        m_fileDocument = document;
    }
    if (loses) {
        // What is gone from the file is gone from the drawing, and cannot be undone to.
        m_steps.clear();
        m_done = 0;
        ++m_revision;
    }
    m_document = std::move(document);
    fileIsNow(path);
    m_saved = m_done;
    m_propertiesChanged = false;
    return {};
}

Result<void> BenchDrawing::savePropertiesOnly()
{
    const Result<std::string> old = readFile(m_path);
    if (!old)
        return old.error();
    const Result<std::string> bytes = dwg::replaceProperties(*old, m_properties);
    if (!bytes)
        return bytes.error();
    if (const Result<void> written = replaced(m_path, *bytes); !written)
        return written;
    fileIsNow(m_path);
    m_propertiesChanged = false;
    return {};
}

} // namespace zv::bench
