#include "controls/ProgramStyle.h"

#include <QCheckBox>
#include <QRadioButton>
#include <gtest/gtest.h>

#include <algorithm>

namespace zv {
namespace {

/// How far the mark of an unset button stands out from the window, of 255.
int contrastOfMark(QAbstractButton& button, QColor window)
{
    ProgramStyle style;
    button.setStyle(&style);
    button.setPalette(QPalette(window, window));
    button.resize(button.sizeHint());
    const QImage picture = button.grab().toImage();
    int most = 0;
    for (int column = 0; column < picture.width(); ++column)
        most = std::max(most, std::abs(picture.pixelColor(column, picture.height() / 2).lightness() -
                                       window.lightness()));
    return most;
}

TEST(ProgramStyle, UnsetBoxesAndOptionsStandOutFromADarkWindow)
{
    for (const QColor window : {QColor(20, 20, 20), QColor(45, 45, 48), QColor(70, 70, 70)}) {
        QCheckBox box;
        QRadioButton option;
        EXPECT_GE(contrastOfMark(box, window), 60) << window.lightness();
        EXPECT_GE(contrastOfMark(option, window), 60) << window.lightness();
    }
}

} // namespace
} // namespace zv
