#pragma once

#include "CommandLine.h"
#include "HostObjects.h"
#include "Workshop.h"

#include <QMainWindow>
#include <QStringList>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTabBar;

namespace zv::bench {

class Canvas;
class PromptLabel;

/// The bench's one window: the open drawings, the canvas, and the command line with its history.
class BenchWindow final : public QMainWindow, public BenchFront, public HostFrame {
    Q_OBJECT

public:
    BenchWindow();

    Workshop& workshop() { return m_workshop; }
    CommandLine& commandLine() { return m_commandLine; }

    void write(const std::string& line) override;
    void zoom(const ZoomRequest& request) override;
    void refresh() override;
    std::string chooseFile(bool toSave, const std::string& suggested) override;
    Keep askToKeep(const std::vector<std::string>& titles) override;
    bool agrees(const std::string& question, const std::string& yes) override;
    std::optional<dwg::Pixels> paintPreview(const dwg::Document& document) override;
    bool editProperties(dwg::Properties& properties) override;
    double pickRadius() const override;
    void quit() override;

    std::string caption() const override;
    bool isShown() const override { return isVisible(); }
    void setShown(bool shown) override;
    std::int64_t windowHandle() const override;
    int windowState() const override;
    void setWindowState(int state) override;
    std::string programPath() const override;
    bool isInDialog() const override { return m_dialogs > 0; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeMenus();
    void restorePlace();
    void rememberPlace();
    void recall(int step);
    void enter();
    void showPrompt();
    void fillTabs();
    bool agreesToClose();

    Workshop m_workshop;
    CommandLine m_commandLine;
    QTabBar* Drawings;
    Canvas* m_canvas;
    QPlainTextEdit* History;
    PromptLabel* m_prompt;
    QLineEdit* m_line;
    QLabel* Coordinates;
    QStringList m_typedLines; ///< The last one last.
    qsizetype m_recalled = 0; ///< The line shown, one behind the last for none.
    QString m_lastFolder;     ///< Of the file dialogs.
    int m_dialogs = 0;
    bool m_fillingTabs = false;
    bool m_forwarding = false; ///< A key goes to the command line just now.
};

} // namespace zv::bench
