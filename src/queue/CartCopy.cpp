#include "queue/CartCopy.h"

#include "config/Keys.h"
#include "controls/CaptionFrame.h"
#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "queue/Cart.h"
#include "queue/CopyOut.h"
#include "window/TextBytes.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QProgressBar>

namespace zv {
namespace {

Cart* cartOf(const Program& program)
{
    return qobject_cast<Cart*>(program.loaded(QStringLiteral("Cart")));
}

} // namespace

CartCopy::CartCopy(Program& program)
    : CopyPlace(program, QStringLiteral("CartCopy"), QStringLiteral("Specify Copy Location"),
                QStringLiteral("Copy DWG(s) To: "))
{
    Command8->setToolTip(QStringLiteral("Cancel Copy"));
    Command11->setToolTip(QStringLiteral("Start Copy"));
    Command1->setToolTip(QStringLiteral("Create new folder"));
    Progress = named<QProgressBar>("Progress", this);
    Progress->setFormat(tr("%v of %m"));
    Progress->setAccessibleName(tr("Drawings copied"));
    // Its room is kept, so that nothing moves when the copy starts.
    QSizePolicy policy = Progress->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    Progress->setSizePolicy(policy);
    Progress->hide();
    buttons->insertWidget(1, Progress, 1);
}

void CartCopy::load()
{
    const std::string stored = profiles().text(keys::cartcopy::projectpath);
    if (!stored.empty())
        Text1->setText(toText(stored));
}

void CartCopy::unloading()
{
    if (Cart* cart = cartOf(program())) {
        cart->setEnabled(true);
        cart->activateWindow();
    }
}

void CartCopy::accept()
{
    const std::string folder = fullPath(destination());
    if (!goToDestination())
        return;
    profiles().write(keys::cartcopy::writeProjectpath, Dir1->path());
    const Cart* cart = cartOf(program());
    const auto drawings = cart ? cart->drawings() : std::vector<std::string>();
    Progress->setRange(0, int(drawings.size()));
    setCopying(true);
    const auto end = copyOut(drawings, folder,
                             {[this](const std::string& name) { return mayOverwrite(name); },
                              [this](std::size_t done) { return showProgress(done); }});
    setCopying(false);
    if (!end)
        program().fail(end.error().text);
    else if (*end == CopyOutEnd::Done)
        finish(folder);
    if (end)
        program().unload(objectName());
}

bool CartCopy::mayOverwrite(const std::string& name)
{
    // Once something was asked, the dialog stays among the other windows.
    setTopmost(false);
    return program().messages().ask({"File: " + name + " Already Exists, Would you Like to Overwrite?",
                                     "File Already Exists in Specified Directory", MessageIcon::Question});
}

bool CartCopy::showProgress(std::size_t done)
{
    Progress->setValue(int(done));
    QCoreApplication::processEvents();
    return !m_givenUp;
}

void CartCopy::setCopying(bool copying)
{
    m_copying = copying;
    m_givenUp = false;
    Progress->setValue(0);
    Progress->setVisible(copying);
    for (QWidget* control :
         {static_cast<QWidget*>(Frame1), static_cast<QWidget*>(Command1), static_cast<QWidget*>(Command11)})
        control->setEnabled(!copying);
    if (copying)
        Command8->setFocus();
}

/// Shows what was copied, and asks what is to become of the queue.
void CartCopy::finish(const std::string& folder)
{
    Cart* cart = cartOf(program());
    if (cart)
        cart->setTopmost(false);
    showFolder(folder + kPathSeparator);
    if (!cart)
        return;
    cart->setTopmost(true);
    if (cart->messages().ask({"Copy Completed, Clear Drawing Queue?", "Clear All Drawing Queue items?",
                              MessageIcon::Question}))
        cart->List1->clear();
}

void CartCopy::newFolder()
{
    if (Window* dialog = openNewFolder(QStringLiteral("sNewFolder")))
        dialog->stayOnTop();
}

void CartCopy::cancel()
{
    if (m_copying)
        m_givenUp = true;
    else
        CopyPlace::cancel();
}

void CartCopy::closeEvent(QCloseEvent* event)
{
    if (m_copying) {
        m_givenUp = true;
        event->ignore();
    } else {
        CopyPlace::closeEvent(event);
    }
}

} // namespace zv
