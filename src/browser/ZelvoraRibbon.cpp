#include "browser/Zelvora.h"

#include "controls/PictureButton.h"

#include <QRadioButton>

namespace zv {
namespace {

constexpr int kToolsTab = 0;
constexpr int kSettingsTab = 2;

} // namespace

void Zelvora::selectTab(int ribSet)
{
    fields.RibbonTab = std::int16_t(ribSet);
    showTab(ribSet);
    writeSetting("RibSet", std::to_string(ribSet));
}

void Zelvora::showTab(int ribSet)
{
    const bool settings = ribSet == kSettingsTab;
    Picture5->setChosen(ribSet == kToolsTab);
    Picture9->setChosen(settings);
    Picture5->setPicture(ImageList::a(), settings ? 4 : 3);
    Picture9->setPicture(ImageList::a(), settings ? 10 : 11);
    Picture3->setVisible(!settings);
    Picture14->setVisible(settings);
}

void Zelvora::resetTools()
{
    Command10->setPicture(ImageList::b(), 27);
    Command13->setPicture(ImageList::b(), 25);
    Command14->setPicture(ImageList::b(), 33);
    Command15->setPicture(ImageList::b(), 35);
    Command16->setPicture(ImageList::b(), 21);
    Command18->setPicture(ImageList::b(), 29);
    Command21->setPicture(ImageList::b(), 31);
    Command22->setPicture(ImageList::b(), 23);
}

void Zelvora::resetPictures()
{
    resetTools();
    setEnlargePicture();
    setActionPicture(false);
    showTab(fields.RibbonTab);
    Command1->setPicture(ImageList::a(), 1);
    Command8->setPicture(ImageList::a(), 6);
    Command9->setPicture(ImageList::a(), 8);
    Command7->setPicture(ImageList::b(), 29);
    Command5->setPicture(ImageList::a(), 13);
    Command4->setPicture(ImageList::b(), 10);
    Command2->setPicture(ImageList::b(), 3);
    Command3->setPicture(ImageList::b(), 4);
    Command24->setPicture(ImageList::b(), 6);
    Picture12->setPicture(ImageList::b(), 11);
    for (PictureBox* logo : {Picture2, Picture11})
        logo->setPicture(QStringLiteral("logo"));
}

void Zelvora::setActionPicture(bool lit)
{
    int reset = 15;
    if (Option2->isChecked())
        reset = 19;
    else if (Option3->isChecked())
        reset = 17;
    else if (Option4->isChecked())
        reset = 13;
    Command11->setPicture(ImageList::b(), lit ? reset + 1 : reset);
}

void Zelvora::setEnlargePicture()
{
    Command12->setPicture(ImageList::b(), fields.EnlargeMode == 1 ? 2 : 1);
}

bool Zelvora::handleHover(QObject*, QEvent*)
{
    return false;
}

} // namespace zv
