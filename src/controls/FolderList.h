#pragma once

#include "platform/Result.h"

#include <QListWidget>

#include <string>

namespace zv {

/// The folders from the root down to the open one, and those in it. One click, or the arrows, choose a
/// folder; a double-click or Enter opens it, Backspace the one above. At first the process's current folder
/// is open.
class FolderList : public QListWidget {
    Q_OBJECT
    /// The open folder.
    Q_PROPERTY(QString path READ pathText)

public:
    explicit FolderList(QWidget* parent = nullptr);

    /// The open folder, in full, in the program's own text.
    const std::string& path() const { return m_path; }
    QString pathText() const;
    /// The folder chosen; the open one at first.
    std::string chosenPath() const;

    /// Opens a folder. Errors: it cannot be read; the list is as it was.
    Result<void> setPath(const std::string& path);
    /// Reads the open folder anew.
    void refresh();

Q_SIGNALS:
    /// Another folder was opened, by the user or by the program.
    void pathChanged();
    /// The user chose a folder, or the chosen one once more.
    void folderChosen();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void open(int row);
    void fill(const std::string& path, const std::vector<std::string>& inside);
    void addFolder(const std::string& path, std::string_view name, int depth, bool open);

    std::string m_path;
    bool m_filling = false;
    bool m_told = false; ///< The press under way chose another folder.
};

} // namespace zv
