#pragma once

#include "config/Profiles.h"
#include "controls/PanelPictures.h"
#include "window/MainWindow.h"

#include <array>
#include <memory>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;
class QStatusBar;
class QTimer;

namespace zv {

enum class ActionCaller;
class CaptionFrame;
class DwgThumbnail;
class DwgViewX;
class FlowLayout;
class OuterGeometry;
class PathList;
class PictureBox;
class PictureButton;
class Resizer;
class RibbonHover;
class SortedCombo;
struct ListLine;

constexpr int kColumns = 5; ///< Of the grid of cells.

/// The main window: shows a library in panels of twenty thumbnails and does with the chosen drawing what the
/// mode options say. It owns the run: the other windows are reached from here.
class Zelvora final : public MainWindow {
    Q_OBJECT

public:
    explicit Zelvora(Program& program);
    ~Zelvora() override;

    void load() override;
    void unloading() override;
    /// Stays invisible until Timer1 has given the window its place and size.
    void appear() override;
    void setDesignSize(QSize twips) override;
    void tellWaiting(bool waiting) override;

    // Library choice and panels.
    QWidget* LibraryRow;
    QLabel* LabelLibrary;
    SortedCombo* Combo1;
    QLabel* Labelx;
    CaptionFrame* Frame4;
    std::array<DwgThumbnail*, kPanelCells + 1>
        DwgThumbnails; ///< DwgThumbnail1 to DwgThumbnail20, from index 1.
    QWidget* TurnRow;
    PictureButton *Command2, *Command3;
    CaptionFrame* Frame1;
    PathList* List1;

    // Information.
    CaptionFrame* Frame2;
    QPlainTextEdit* Text1;
    QStatusBar* StatusBar1;
    std::array<QLabel*, 5> StatusBar1Panels; ///< From index 1.

    // Action.
    QWidget* Picture4;
    FlowLayout* ActionRows;
    QLabel* Label1;
    PictureButton *Command24, *Command11;

    // Enlarged view and its tools.
    CaptionFrame* Frame8;
    PictureButton *Command12, *Command13, *Command15, *Command21, *Command14, *Command16, *Command22,
        *Command10, *Command18;

    // Leaving.
    PictureButton *Command4, *Command1, *Command9, *Command8, *Command7, *Command5;

    // Tabs, pages, art.
    PictureBox *Picture5, *Picture9, *Picture12, *Picture2, *Picture11;
    QWidget *Picture3, *Picture14;

    // Always on top.
    QWidget* Picture13;
    QCheckBox* Check2;

    Resizer* Resizer1;
    QTimer *Timer1, *Timer2;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// The arrow keys that a cell does not use move the focus among the cells.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Mode { Block = 0, Xref = 1, OpenCopy = 2, Queue = 3 }; ///< Numbers of the key insertmode.

    // Making the controls.
    void makeLibraryChoice();
    void makePanels();
    void makeInformation();
    void makeAction();
    void layOutAction();
    void makeRibbon();
    void makeTools();
    void makeSettings();
    void makeTopControls();
    void makeTimers();
    void setTabOrders();
    void connectHandlers();
    void connectOptions();

    // Layout.
    void placeControls();
    void fitToRoom();
    void layOutCells();

    // The steps of the load.
    void markSetOption();
    void enableOffice(bool enabled);
    void readAdministratorKeys();
    void findUser();
    void registerProperties();
    bool readLastLoad();
    void fillCatalogue();
    void resetPanels();
    void readAlwaysOnTop();
    /// A number as the user has stored it. A default that stands for what cannot be read is shown, and not
    /// written back over what is stored by the control that it sets; that holds until the next one is read.
    int readSetting(const NumberKey& key);
    int readInsertMode();
    void readScaleKeys();
    void readRibbonTab();
    void loadFirstLibrary(bool hasLastLibrary);
    void setUpViewer();
    void appearAfterLoad();
    void runTimer2();
    void saveGeometry();
    void writeSetting(const ProfileKey& key, const std::string& value);

    // Panels.
    enum class Blank { No, AtFirstLine };
    void selectLibrary();
    std::string libraryPath(const std::string& name) const;
    void showLibrary(const std::vector<ListLine>& list);
    void showMissingLibrary();
    void refuseLongLibrary(const std::string& name);
    void tellLongLibrary(const std::string& path);
    void showTotalFiles(int count);
    void setCaption();
    void showButtons();
    void showCells();
    void fillCell(int cell, const std::string& path, Result<QImage> picture);
    void fillCells(const std::vector<ListLine>& list, Blank blank);
    bool fillPanel(Blank blank);
    void blankAllCells();
    void nextPanel();
    bool turnForward();
    void previousPanel();
    bool turnBack();
    void selectRow(int row, bool rowChanged);
    void jumpToCell(int cell, int line);

    // Selection.
    bool moveCellFocus(int key);
    void clearSelectionMarks();
    void markCell(int marked);
    void selectCell(int cell, int line);
    void readSelection(int cell, int target);
    bool showDrawingInformation(const std::string& path);
    /// Ends every reading of a list that is under way.
    void closeEveryFile() { ++fields.filesClosed; }
    Mode mode() const;
    void setOption(Mode chosen);
    void markOption(Mode chosen);
    void setScaleEnabled(bool enabled);
    void setScaleGround(bool inUse);
    void lockScaleOnce();
    void setAutoScale(bool on);
    void setAlwaysOnTop(bool on);
    void setExplode(bool on);

    // Enlarge mode.
    void toggleEnlargeMode();
    void enlargeFailed();
    void coverPanel(bool cover);
    bool showInViewer(const std::string& path);
    bool reloadViewer();
    void step(const PanelStep& step);
    void printFromViewer();

    // Tabs and pictures.
    void selectTab(int ribSet);
    void showTab(int ribSet);
    void resetPictures();

    // What is done with a drawing, and leaving for other windows.
    void runAction(ActionCaller caller, const std::string& drawing);
    void actOnCell(int cell);
    void actOnListFocus();
    void openNewlib();
    void openHiding(const QString& window);
    void openSearch();
    void openCart();
    void openHelp();

    std::unique_ptr<OuterGeometry> m_geometry;
    PanelPictures m_pictures;
    RibbonHover* m_hover;
    bool m_placed = false; ///< The window stands where it was remembered to stand.
    bool m_probeFailed = false;
    bool m_settingUnknown = false;     ///< What is shown stands for a setting that could not be read.
    bool m_lastLibraryTooLong = false; ///< To be told once the window stands.
};

} // namespace zv
