#pragma once

#include <QComboBox>

#include <string>

namespace zv {

class FolderList;
class Messages;

/// The drives that there are, or the mounted places. They are looked up anew when the list drops down.
class DriveBox : public QComboBox {
    Q_OBJECT
    /// The root of the drive shown; empty when it is none of the list.
    Q_PROPERTY(QString drive READ drive)

public:
    explicit DriveBox(QWidget* parent = nullptr);

    QString drive() const { return currentText(); }
    /// Shows the drive that a path lies on; nothing is told of it.
    void showDriveOf(const std::string& path);
    void showPopup() override;

Q_SIGNALS:
    /// The user chose a drive, or the one that was shown once more.
    void driveChosen(const QString& root);

private:
    void refresh();
};

/// Lets a drive that is chosen set the folder list, and the drive follow the folder that is opened. A drive
/// that cannot be read is told in a message, and both stay as they were.
void chainLists(DriveBox& drives, FolderList& folders, Messages& messages);

} // namespace zv
