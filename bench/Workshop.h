#pragma once

#include "BenchDrawing.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zv::bench {

/// What the canvas is to show next.
struct ZoomRequest {
    enum class Kind { Extents, Window, Factor, Previous };
    Kind kind = Kind::Extents;
    dwg::Point3 corner1, corner2; ///< Of a window.
    double factor = 1;            ///< Over 1: closer.
};

/// What commands need of the window around them. Texts are the program's own.
class BenchFront {
public:
    virtual ~BenchFront() = default;
    virtual void write(const std::string& line) = 0; ///< To the history.
    virtual void zoom(const ZoomRequest& request) = 0;
    /// The drawing has changed, or another one is the active one.
    virtual void refresh() = 0;
    /// Asks for a file, from a suggested one on; empty when the user says no. To save, the user has agreed to
    /// replace a file that is there.
    virtual std::string chooseFile(bool toSave, const std::string& suggested) = 0;
    enum class Keep { Save, Discard, Cancel };
    /// Asks what is to become of drawings, by their titles, that are not saved and about to be closed.
    virtual Keep askToKeep(const std::vector<std::string>& titles) = 0;
    /// Tells the user something and asks whether to do what `yes` says; its ready answer is no.
    virtual bool agrees(const std::string& question, const std::string& yes) = 0;
    /// The picture that a saved file carries; none leaves the file the one that it has.
    virtual std::optional<dwg::Pixels> paintPreview(const dwg::Document&) { return std::nullopt; }
    /// Lets the user change the properties; false when he says no.
    virtual bool editProperties(dwg::Properties& properties) = 0;
    /// How far from an object a pick may be to take it, in drawing units.
    virtual double pickRadius() const = 0;
    virtual void quit() = 0;
};

/// The open drawings and what holds for all of them.
class Workshop {
public:
    explicit Workshop(BenchFront& front);

    BenchFront& front() { return m_front; }
    const std::vector<std::shared_ptr<BenchDrawing>>& drawings() const { return m_drawings; }
    /// Null when no drawing is open.
    const std::shared_ptr<BenchDrawing>& active() const { return m_active; }
    void activate(const std::shared_ptr<BenchDrawing>& drawing);

    /// An empty drawing, active. In single-drawing mode it takes the place of the one that is open, saved or
    /// not.
    std::shared_ptr<BenchDrawing> add();
    /// The drawing that a new one would take the place of, unsaved as it is; null where nothing would be
    /// lost.
    std::shared_ptr<BenchDrawing> unsavedBeforeNext() const;
    /// The open drawing of this file, whatever path leads to it; null when none is.
    std::shared_ptr<BenchDrawing> drawingOf(const std::string& path) const;
    /// Opens a file as the active drawing; one that is open already is only made active. Errors: as
    /// BenchDrawing::load; Busy, single-drawing mode and the open one is not saved.
    Result<std::shared_ptr<BenchDrawing>> open(const std::string& path);
    void close(const std::shared_ptr<BenchDrawing>& drawing);

    /// The variable's owner: the active drawing's variables, or those of the program.
    Variables& variablesFor(std::string_view name, const std::shared_ptr<BenchDrawing>& drawing);
    Variables& variables() { return m_variables; }
    /// Sets it; of a drawing's variable that is a change that can be undone. Errors: as Variables::set.
    Result<void> setVariable(std::string_view name, const AutomationValue& value,
                             const std::shared_ptr<BenchDrawing>& drawing);

    /// The name of the block that was inserted last.
    std::string lastBlock;
    /// Whether a command runs, for the variable that tells it.
    std::function<bool()> commandRuns;

private:
    bool isSingle() const { return m_variables.whole("SDI") != 0; }
    void takeIn(const std::shared_ptr<BenchDrawing>& drawing);
    void tellOutlook(const BenchDrawing& drawing);

    BenchFront& m_front;
    Variables m_variables;
    std::vector<std::shared_ptr<BenchDrawing>> m_drawings;
    std::shared_ptr<BenchDrawing> m_active;
    int m_lastNumber = 0;
};

} // namespace zv::bench
