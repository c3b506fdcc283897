#pragma once

#include "window/Program.h"
#include "window/Window.h"

#include <QPixmap>

#include <functional>
#include <memory>

namespace zv::tour {

/// Does with the program's real windows what a drafter would, and keeps a picture of each step.
class Tour {
public:
    /// `pictures` is the folder that takes the pictures, numbered in their order.
    Tour(Program& program, QString pictures);

    /// Loads the main window and waits until it is shown.
    bool start();
    /// Lets events run until something holds; false, with a word on stderr of what was waited for, when it
    /// does not in time.
    static bool until(const char* what, const std::function<bool()>& holds);

    void picture(const QString& name, const char* window = "Zelvora");
    void pictureOfScreen(const QString& name);

    /// A control of a window; null when it is not loaded or has none of that name.
    QWidget* control(const char* name, const char* window = "Zelvora") const;
    /// Waits until a window is shown.
    bool appears(const char* window);
    bool chooseLibrary(const QString& name, const char* window = "Zelvora", const char* combo = "Combo1");
    void click(const char* name, const char* window = "Zelvora");
    void enter(const char* field, const QString& text, const char* window);
    void doubleClick(const char* name);
    void jumpToRow(int row, const char* window = "Zelvora");
    /// Keeps a picture of the message box that comes up next and answers it, a question with Yes.
    void answerNextMessage(const QString& name);
    /// The same with every message box that comes up as long as the result lives.
    std::unique_ptr<QObject> answerMessages(const QString& name);
    /// Has the next print dialog print to a PDF file, and keeps a picture of it.
    void printNextTo(const QString& file, const QString& name);

private:
    bool answerMessage(const QString& name);
    void keep(const QPixmap& picture, const QString& name);

    Program& m_program;
    QString m_pictures;
    int m_count = 0;
};

/// Moves the real pointer and keys of the display, to reach the windows of another process.
void xdotool(const QStringList& arguments);

} // namespace zv::tour
