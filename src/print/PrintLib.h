#pragma once

#include "print/PrintRun.h"
#include "window/Window.h"

#include <QElapsedTimer>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTimer;

namespace zv {

class CaptionFrame;
class ClipPlayer;
class DwgViewX;
class PathList;

/// Prints every drawing of the chosen libraries, one after the other, through the viewer that it holds.
class PrintLib final : public Window, private PrintRunWindow {
    Q_OBJECT

public:
    explicit PrintLib(Program& program);
    void load() override;
    void unloading() override;
    void appear() override;

    CaptionFrame *Frame1, *Frame3, *Frame5;
    PathList* List1;
    QPushButton *Command1, *Command5, *Command6, *Command7;
    DwgViewX* DwgViewX1;
    QPlainTextEdit *Text1, *Text3;
    QLabel* Label1;
    ClipPlayer* Animation1;
    QProgressBar* ProgressBar1;
    QLabel* LabelTimeLeft;
    QTimer* Timer1;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeChoice();
    void makeViewer();
    void makeStatus();
    void layOut();
    void connectHandlers();

    void run();
    void printLibraries(const std::vector<PrintedLibrary>& libraries);
    std::vector<PrintedLibrary> selectedLibraries() const;
    void askForSelection();
    void setRunning(bool running);
    void showEnd(int total);
    void windUp();
    void closeRun();
    void stay();

    void beginLibrary(const std::string& name) override;
    bool showDrawing(const std::string& path) override;
    void showCount(int done, int total) override;
    void printWithDialog() override;
    void printSilently() override;
    void startHelper() override;
    void endDrawing(const std::string& path) override;
    bool turn() override;

    std::int16_t printStop = 0;
    bool m_running = false;
    bool m_leaving = false; ///< The window is unloaded when the run has wound up.
    QTimer* m_closing;      ///< Leaves a moment to read how the run ended.
    QElapsedTimer m_pace;   ///< Since the user answered the print dialog.
    int m_paced = 0;        ///< Drawings before that.
};

} // namespace zv
