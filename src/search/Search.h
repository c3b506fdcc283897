#pragma once

#include "search/KeywordScan.h"
#include "window/BrowserFields.h"
#include "window/Window.h"

#include <QElapsedTimer>
#include <QStringList>

#include <array>

class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace zv {

class CaptionFrame;
class ClipPlayer;
class DwgThumbnail;
class DwgViewX;
class ElidedLabel;
class LockedCombo;
class PathList;
class PictureBox;
class PictureButton;

/// The search window: finds drawings by keywords in one library or in all, shows them, and does with a
/// chosen one what the main window does.
class Search final : public Window {
    Q_OBJECT

public:
    explicit Search(Program& program);
    ~Search() override;

    void load() override;
    void unloading() override;

    // What is searched for.
    CaptionFrame* Frame1;
    LockedCombo* Combo1;
    QCheckBox* Check1;
    QLabel* Label1;
    QLineEdit *Text1, *Text7, *Text8, *Text9, *Text10, *Text11;
    PictureButton *Command11, *Command4;

    // The run and its results.
    ClipPlayer* Animation1;
    QLabel *Label5, *Label6;
    ElidedLabel* LabelProgress;
    QLineEdit *Text12, *Text13;
    QLabel *Label2, *Label3;
    QLineEdit* Text4;
    PathList* List1;

    // The preview.
    CaptionFrame *Frame3, *Frame5;
    DwgThumbnail* DwgThumbnail1;
    DwgViewX* DwgViewX1;
    PictureButton *Command5, *Command6;
    QPlainTextEdit* Text2;
    QLabel *Label8, *Label7;
    QLineEdit *Text5, *Text6;

    // What is done with a drawing.
    QRadioButton *Option1, *Option2, *Option3, *Option4;
    QCheckBox *Check2, *Check3;
    QLabel* Label4;
    QLineEdit* Text3;
    PictureButton *Command3, *Command2, *Command1;
    PictureBox* Picture2;

    BrowserFields& fields; ///< Kept by the program.
    DwgPropsX drawingProps;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    class RunWindow;
    enum class Action { Xref = 1, Block = 2, OpenCopy = 3, Queue = 4 }; ///< By the options' numbers.

    // Making the controls.
    void makeRequest();
    void makeRun();
    void makePreview();
    void makeActions();
    void layOut();
    QWidget* actionRows();
    void boundSize();
    void setTabOrders();
    void connectHandlers();
    std::array<QLineEdit*, kKeywords> keywordBoxes() const;

    // The load.
    void readOptions();
    void readCartOnly();
    void fillLibraries();

    // The run.
    void search();
    void clearOrStop();
    void beginRun();
    void endRun(int hits);
    void showRun();
    qint64 frameMs() const;
    void emptyPanes();

    // A result.
    std::string chosen() const;
    void selectResult();
    bool showResult(const std::string& path);
    void resultFailed(const std::string& path);
    void enlarge();
    void preview();
    bool showInViewer(const std::string& path);
    void showFailedDrawing();

    // The options and the actions.
    void setAction(Action action);
    void setAutoScale(bool on);
    void setScaleInUse(bool inUse);
    void actOnChosen();
    void actOnDoubleClick();
    void runAction();

    // Leaving.
    void closeByButton();
    void handChoiceBack();

    KeywordScan m_scan;
    QBoxLayout* m_doing;        ///< How a drawing is placed, and the buttons.
    int m_wideFrom = 0;         ///< From this width on the two stand side by side.
    bool m_deletionDue = false; ///< The program has unloaded the window, and a run is still on its way out.
    bool m_loading = false;
    int m_previewMode = 0; ///< 0 thumbnail, 1 enlarged.

    // What a run has to show, until the next frame.
    QElapsedTimer m_sinceShown;
    qint64 m_slowestTurn = 0; ///< Of the event loop since then, in milliseconds.
    std::string m_drawing, m_library;
    ScanProgress m_progress;
    QStringList m_newHits;
    int m_hits = 0;
};

} // namespace zv
