#pragma once

#include <QSize>

class QPlainTextEdit;
class QString;
class QWidget;

namespace zv {

class PictureButton;

// What the windows that make libraries make their controls of.

/// The least size of these windows: every text is read whole in it.
inline constexpr QSize kSmallestLibraryWindow(433, 433);

PictureButton* libraryButton(const char* name, const QString& caption, const QString& tip, QWidget* parent);
/// Lines that are shown and can be copied; Tab leaves them.
QPlainTextEdit* shownLines(const char* name, QWidget* parent);

} // namespace zv
