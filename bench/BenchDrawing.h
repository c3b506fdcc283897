#pragma once

#include "Variables.h"
#include "Xrefs.h"

#include "drawing/Document.h"
#include "platform/Result.h"

#include <memory>
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
    bool isModified() const { return m_geometryChanged || m_propertiesChanged || variablesChanged(); }
    /// Counts up with every change of the content.
    int revision() const { return m_revision; }

    /// Must be called before the content is changed; what it was can then be had back.
    void beginChange();
    /// Tells that a change that has been seen unfinished, as while its command asked on, has gone on.
    void continueChange() { ++m_revision; }
    /// False when there is nothing to undo.
    bool undo();
    /// Takes back what was begun last, as if it had never been.
    void abandonChange();

    /// Saves under `path`, or under its own with an empty one. A file that holds more than this program keeps
    /// is not written over: of it only the properties can be changed. Errors: Unsupported, says what would be
    /// lost; NotFound, it has no path; Denied, Failed.
    Result<void> save(const std::string& path = {});

private:
    BenchDrawing() = default;
    void addVariables();
    dwg::HeaderVariables keptVariables() const;
    bool variablesChanged() const;
    Result<void> saveWhole(const std::string& path);
    Result<void> savePropertiesOnly(const std::string& path);

    dwg::Document m_document;
    dwg::Properties m_properties;
    Variables m_variables;
    std::string m_path;
    std::string m_title;
    std::string m_lossReason; ///< Why writing the whole would lose something; empty: it would not.
    bool m_geometryChanged = false;
    bool m_propertiesChanged = false;
    int m_revision = 0;
    XrefFiles m_xrefFiles;
    dwg::Document m_seen;
    int m_seenRevision = -1;
    struct Before {
        std::shared_ptr<const dwg::Document> document;
        bool geometryChanged = false;
    };
    std::vector<Before> m_undo;
};

/// An empty document with what every drawing has: model space, a layer "0", the common linetypes and a text
/// style.
dwg::Document emptyDocument();

} // namespace zv::bench
