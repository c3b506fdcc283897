#include "browser/Zelvora.h"

#include "browser/RibbonHover.h"
#include "config/Keys.h"
#include "controls/PictureButton.h"

namespace zv {
namespace {

constexpr int kSettingsTab = 2;

} // namespace

void Zelvora::selectTab(int ribSet)
{
    fields.RibbonTab = std::int16_t(ribSet);
    showTab(ribSet);
    writeSetting(keys::zelvora::RibSet, std::to_string(ribSet));
}

void Zelvora::showTab(int ribSet)
{
    const bool settings = ribSet == kSettingsTab;
    Picture5->setChosen(!settings);
    Picture9->setChosen(settings);
    Picture3->setVisible(!settings);
    Picture14->setVisible(settings);
    resetPictures();
}

/// What the pictures show at rest follows the tab, the mode and the view.
void Zelvora::resetPictures()
{
    m_hover->rest();
}

} // namespace zv
