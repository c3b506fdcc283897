#pragma once

#include "controls/PathList.h"

#include <string>

namespace zv {

class FolderList;

/// The files of one folder that have an ending, by name; several can be selected. A click on a row is told as
/// PathList tells it.
class FileList : public PathList {
    Q_OBJECT
    Q_PROPERTY(QString path READ pathText)

public:
    /// `ending` such as ".dwg" in any case; an empty one shows all files.
    explicit FileList(std::string ending, QWidget* parent = nullptr);

    const std::string& path() const { return m_path; }
    QString pathText() const;
    /// Shows the files of a folder; none where it cannot be read.
    void setPath(const std::string& path);
    /// Reads the folder anew; nothing is selected then.
    void refresh();

private:
    std::string m_ending;
    std::string m_path;
};

/// Lets the folder that is opened set the file list.
void chainLists(FolderList& folders, FileList& files);

} // namespace zv
