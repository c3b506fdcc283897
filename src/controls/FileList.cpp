#include "controls/FileList.h"

#include "controls/FolderList.h"
#include "platform/Folders.h"
#include "window/TextBytes.h"

namespace zv {

FileList::FileList(std::string ending, QWidget* parent) : PathList(parent), m_ending(std::move(ending))
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAccessibleName(tr("Files"));
}

QString FileList::pathText() const
{
    return toText(m_path);
}

void FileList::setPath(const std::string& path)
{
    m_path = path;
    refresh();
}

void FileList::refresh()
{
    clear();
    QStringList names;
    if (const auto found = filesIn(m_path, m_ending)) {
        for (const std::string& name : *found)
            names << toText(name);
    }
    addItemsWithExtent(names);
}

void chainLists(FolderList& folders, FileList& files)
{
    files.setPath(folders.path());
    QObject::connect(&folders, &FolderList::pathChanged, &files, [&] { files.setPath(folders.path()); });
}

} // namespace zv
