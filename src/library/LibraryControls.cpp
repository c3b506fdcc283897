#include "library/LibraryControls.h"

#include "controls/NamedControls.h"
#include "controls/PictureButton.h"

#include <QPlainTextEdit>

namespace zv {

PictureButton* libraryButton(const char* name, const QString& caption, const QString& tip, QWidget* parent)
{
    auto* made = named<PictureButton>(name, parent, PictureButton::Caption::Beside, false);
    made->setText(caption);
    made->setToolTip(tip);
    return made;
}

QPlainTextEdit* shownLines(const char* name, QWidget* parent)
{
    auto* text = named<QPlainTextEdit>(name, parent);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    return text;
}

} // namespace zv
