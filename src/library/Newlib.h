#pragma once

#include "platform/Result.h"
#include "window/Window.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace zv {

class CaptionFrame;
class DriveBox;
class DwgThumbnail;
class FileList;
class FolderList;
class LibraryCombo;
class PathList;
class PictureButton;
class Resizer;
class SizeCount;

/// The library editor: makes, fills, orders, renames and deletes libraries. A list is changed at once, in the
/// event that changes it; Save and Done touch the catalogue alone. However the window closes, the main window
/// comes back, loaded anew.
class Newlib final : public Window {
    Q_OBJECT

public:
    explicit Newlib(Program& program);
    ~Newlib() override;

    void load() override;
    void unloading() override;

    enum Mode : std::int16_t { ModeNew = 0, ModeExisting = 1, ModeIdle = 4, ModeNewStarted = 5 };

    std::int16_t EditMode = ModeIdle;
    std::string ListPath;         ///< The list in hand.
    std::string ScratchPath;      ///< Its working copy.
    std::int16_t Dirty = 0;       ///< 1 once a file has been added to a new library.
    std::int32_t AddedKB = 0;     ///< What has been added since the window opened, in units of 1024 bytes.
    std::int16_t SelectedRow = 0; ///< To be selected again after a rewrite, from 1.
    /// Set by a move, for the click on the list that the move itself causes.
    std::int16_t MoveUpPending = 0, MoveDownPending = 0;

    // Which library.
    CaptionFrame *FrameNew, *FrameRename, *FrameDelete, *FramePath;
    QLineEdit *Text1, *Text2;
    LibraryCombo *Combo1, *Combo2, *Combo3;
    QLabel *LabelSelect, *LabelTo;
    PictureButton *Command4, *Command6, *Command14;

    // Its drawings.
    CaptionFrame* FrameFiles;
    DriveBox* Drive1;
    FolderList* Dir1;
    FileList* File1;
    PictureButton *Command1, *Command2, *Command3, *Command7, *Command10, *Command5;
    PathList* List1;
    QLabel *LabelLabel, *LabelFiles, *LabelSize;
    QLineEdit *Text5, *Text7, *Text8;

    // One drawing.
    CaptionFrame *FramePreview, *FrameProperties;
    DwgThumbnail* DwgThumbnail1;
    QPlainTextEdit *Text3, *Text4;
    QLabel *LabelKeywords, *LabelFileSize, *LabelNote;
    QLineEdit* Text6;
    PictureButton* Command12;

    PictureButton *Command9, *Command8, *Command11;

    Resizer* Resizer1;

private:
    // Making the controls.
    void makeLibraryChoice();
    void makeDrawings();
    void makeDetails();
    void placeControls();
    void placeLibraryChoice();
    void placeDrawings();
    void placeDetails();
    void setTabOrders();
    void connectHandlers();

    // Choosing what is edited.
    void disableCommands();
    void setSourceInPlay(bool inPlay);
    void takeOutOfPlay();
    void typeName();
    void enterExisting();
    void chooseExisting();
    void chooseRenamed();
    void chooseDeleted();

    // The catalogue.
    std::string listOf(const QString& library) const;
    std::string masterProfile() const;
    std::optional<int> storedCount();
    Result<void> rewriteCatalogue(const LibraryCombo& rows, int count) const;
    bool saveLibrary();
    bool addToCatalogue();
    void save();
    void reset();
    void done();
    void renameLibrary();
    void deleteLibrary();
    bool finishDeletion(const std::string& list);
    void setPath();

    // The list.
    bool readList(std::vector<std::string>& paths);
    bool fillList(int expected);
    void tellTooLong(const Error& error);
    void takePaths();
    void add();
    void removeLine();
    void removeAll();
    void move(int step);
    void relabel();
    void clickFile(int row);
    void clickList(int row);
    void showLabel(int row);
    void showDrawing(const std::string& path, const std::string& told);
    bool readDrawing(const std::string& path);
    void blankDetails();

    // The host.
    void editDrawing();

    void tellUnreadCatalogue(const Error& error);
    bool wentWell(const std::string& path, const Result<void>& done);
    void endWith(const std::string& path, const Error& error);

    std::unique_ptr<SizeCount> m_sizes;
};

} // namespace zv
