#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace zv {

/// A list of pictures indexed from 1. The pictures are line drawings that take the text colour of the
/// program's palette at the moment of painting, so they read on light and dark and at any pixel ratio.
class ImageList {
public:
    /// The pictures of the tabs and the list-action buttons.
    static const ImageList& a();
    /// The pictures of the tools and the action button.
    static const ImageList& b();
    /// The pictures of the search window's buttons.
    static const ImageList& c();
    /// The pictures of the windows that make libraries.
    static const ImageList& d();

    /// The letter of the list, 'A' to 'D'.
    char letter() const { return m_letter; }
    int count() const;
    /// The picture of an index from 1 to count(); a null icon for any other index.
    QIcon picture(int index) const;

private:
    explicit ImageList(char letter) : m_letter(letter) {}
    char m_letter;
};

/// A picture of the program by its name (the file's, without folder and ending), for use outside the
/// lists. A lit one stands on a ground of the accent colour. A null icon when there is no such picture.
QIcon namedPicture(const QString& name, bool lit = false);

/// The program's one accent, in the shade that reads on the present palette.
QColor accentColor();

} // namespace zv
