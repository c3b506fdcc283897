#pragma once

#include "DocumentChange.h"
#include "SaveOutlook.h"
#include "Variables.h"
#include "Xrefs.h"

#include "drawing/Document.h"
#include "drawing/preview/Preview.h"
#include "platform/Files.h"
#include "platform/Result.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zv::bench {

/// One open drawing: its content, the file that it came from, its own variables, and what can be undone.
class BenchDrawing {
public:
    /// A new, empty drawing that has no file yet.
    explicit BenchDrawing(std::string title);
    /// Errors: NotFound, Denied, Unsupported, Damaged, as reading gives them.
    static Result<std::shared_ptr<BenchDrawing>> load(const std::string& path);

    dwg::Document& document() { return m_document; }
    const dwg::Document& document() const { return m_document; }
    /// The content as it is seen, with that of its external references. Good until the next change.
    const dwg::Document& seen();
    /// Reads the files of the external references anew.
    void reloadXrefs();
    dwg::BlockRecord& modelSpace() { return m_document.blocks[m_document.modelSpace]; }
    const dwg::Properties& properties() const { return m_properties; }
    void setProperties(dwg::Properties properties);
    Variables& variables() { return m_variables; }
    /// Of what is drawn now, as the variable CLAYER says.
    dwg::Handle currentLayer() const { return keptVariables().currentLayer; }
    /// What was taken for a command last, erased or not.
    std::vector<dwg::Handle> previousSelection;

    /// The file's full path; empty for a drawing that was never saved.
    const std::string& path() const { return m_path; }
    /// The file name, or the working title.
    std::string title() const;
    bool isModified() const { return unsavedMarks() != 0 || m_propertiesChanged; }
    /// Counts up with every change of the content.
    int revision() const { return m_revision; }
    /// How its work can go to a file.
    const SaveOutlook& outlook() const { return m_outlook; }
    /// Whether its file may be written, whoever the user is.
    bool isFileReadOnly() const;

    /// Must be called before the content is changed; what it was can then be had back.
    void beginChange();
    /// Tells that a change that has been seen unfinished, as while its command asked on, has gone on.
    void continueChange() { ++m_revision; }
    /// False when there is nothing to undo, or to do again.
    bool undo();
    bool redo();
    /// Takes back what was begun last, as if it had never been.
    void abandonChange();
    /// Sets a variable of the drawing as a change that can be undone. Errors: as Variables::set.
    Result<void> setVariable(std::string_view name, const AutomationValue& value);

    /// Draws the picture that a saved file carries. Without one the file keeps the picture that it has.
    using PreviewPainter = std::function<std::optional<dwg::Pixels>(const dwg::Document&)>;
    PreviewPainter paintPreview;

    /// Saves under its own name what is not saved yet. Errors: NotFound, it has no name, or its file is gone;
    /// Busy, another program has changed the file since; Denied, its file may not be written; Unsupported,
    /// the file cannot be written by this program; Failed.
    Result<void> save();
    /// Saves under `path`, from then on its own name. Errors: Busy, a file is there that is not to be
    /// replaced; Denied, Failed, and Unsupported where the drawing's own file is meant that cannot be
    /// written.
    Result<void> saveAs(const std::string& path, bool mayReplace = true);
    Result<void> save(const std::string& path) { return path.empty() ? save() : saveAs(path); }
    /// What a file under this name would not have of the drawing; it goes with the next saving there.
    std::vector<std::string> lossOfSaving(const std::string& path) const;

    /// The file that a block of this drawing was read from in this session; empty for any other.
    std::string blockSource(dwg::Handle block) const;
    void setBlockSource(dwg::Handle block, const std::string& path) { m_blockSources[block] = path; }

private:
    BenchDrawing() = default;
    /// One thing that can be undone.
    struct UndoStep {
        std::optional<DocumentChange> content;
        std::string variable; ///< Or this one, with its values.
        AutomationValue before, after;
        int marks = 0; ///< What of DBMOD it sets.
    };
    Result<void> read(const std::string& path);
    void addVariables();
    dwg::HeaderVariables keptVariables() const;
    int unsavedMarks() const;
    void finishChange();
    void push(UndoStep step);
    void apply(const UndoStep& step, bool back);
    void fileIsNow(const std::string& path);
    Result<void> checkFile() const;
    Result<void> writeTo(const std::string& path, bool mayReplace);
    Result<std::string> wholeFile(const dwg::Document& document);
    Result<void> savePropertiesOnly();

    dwg::Document m_document;
    dwg::Properties m_properties;
    Variables m_variables;
    std::string m_path;
    std::string m_title;
    SaveOutlook m_outlook;
    std::string m_file;                          ///< The bytes of a file of which only records are replaced.
    std::optional<dwg::Document> m_fileDocument; ///< What those hold.
    std::optional<FileStamp> m_fileStamp;        ///< As it was read or written.
    std::optional<dwg::Pixels> m_preview;        ///< That the file has.
    bool m_propertiesChanged = false;
    int m_revision = 0;
    XrefFiles m_xrefFiles;
    dwg::Document m_seen;
    int m_seenRevision = -1;
    std::optional<dwg::Document> m_before; ///< A change that has begun.
    std::vector<UndoStep> m_steps;         ///< Done ones, then undone ones.
    std::size_t m_done = 0;
    std::optional<std::size_t> m_saved = 0; ///< How many were done when it was saved.
    std::map<dwg::Handle, std::string> m_blockSources;
};

/// Whether both paths are one file, whatever they look like.
bool isSameFile(const std::string& a, const std::string& b);

/// An empty document with what every drawing has: model space, a layer "0", the common linetypes and a text
/// style.
dwg::Document emptyDocument();

} // namespace zv::bench
