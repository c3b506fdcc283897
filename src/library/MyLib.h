#pragma once

#include "platform/Result.h"
#include "window/Window.h"

#include <cstdint>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace zv {

class CaptionFrame;
class DwgThumbnail;
class PathList;
class PictureButton;
class Resizer;

/// The user's own library, filled from the catalogue of the installation folder and, where the administrator
/// allows it, from anywhere. Every change is written at once. However the window closes, the main window
/// comes back.
class MyLib final : public Window {
    Q_OBJECT

public:
    explicit MyLib(Program& program);
    void load() override;
    void unloading() override;

    std::string MyListPath;          ///< The user's own list.
    std::string SourcePath;          ///< The list that is read from.
    std::int16_t MyListExisted = 0;  ///< 0 when this load made the list.
    std::int16_t ClosedByButton = 1; ///< 2 once Ok or Cancel was pressed.

    CaptionFrame *FrameSource, *FrameMine, *FrameExternal, *FrameInfo;
    QComboBox* Combo1;
    PathList *List2, *List1;
    PictureButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6, *Command11, *Command8;
    QLineEdit *Text1, *Text4;
    QLabel *LabelLabel, *LabelComments, *LabelKeywords;
    DwgThumbnail* DwgThumbnail1;
    QPlainTextEdit *Text3, *Text2;

    Resizer* Resizer1;

private:
    void makeLists();
    void makeDetails();
    void placeControls();
    void setTabOrders();
    void connectHandlers();

    void findUser();
    void findSource();
    void fillCatalogue(const std::string& shown);
    void chooseLibrary();
    void clickSource(int row);
    void clickMine(int row);
    void showDrawing(const std::string& path);
    void add();
    void browse();
    void removeLine();
    void removeAll();
    void relabel();
    bool fillMine(const std::string& list);
    void append(const std::vector<std::string>& drawings);
    void tellTooLong(const Error& error);
    void takePaths();
    bool wentWell(const std::string& path, const Result<void>& done);
    void closeByButton();
};

} // namespace zv
