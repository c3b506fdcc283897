#include "browser/frmSplash.h"

#include "config/PublicValues.h"
#include "controls/ImageList.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVersionNumber>

namespace zv {

frmSplash::frmSplash(Program& program)
    : Window(program, QStringLiteral("frmSplash"), QStringLiteral("About Zelvora"))
{
    Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* logo = new QLabel(Frame1);
    logo->setPixmap(namedPicture(QStringLiteral("logo")).pixmap(96, 72));
    logo->setAlignment(Qt::AlignCenter);
    lblProductName = new QLabel(Frame1);
    lblProductName->setObjectName(QStringLiteral("lblProductName"));
    QFont large = lblProductName->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    lblProductName->setFont(large);
    lblVersion = new QLabel(Frame1);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    auto* inside = new QVBoxLayout(Frame1);
    inside->setContentsMargins(32, 24, 32, 24);
    inside->setSpacing(8);
    for (QLabel* label : {logo, lblProductName, lblVersion}) {
        label->setAlignment(Qt::AlignCenter);
        inside->addWidget(label);
    }
    Command11 = new QPushButton(QStringLiteral("&Ok"), this);
    Command11->setObjectName(QStringLiteral("Command11"));
    Command11->setDefault(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(16);
    column->addWidget(Frame1);
    column->addWidget(Command11, 0, Qt::AlignCenter);
    column->setSizeConstraint(QLayout::SetFixedSize);
    connect(Command11, &QPushButton::clicked, this, [this] { this->program().unload(objectName()); });
}

void frmSplash::load()
{
    setTopmost(values().AlwaysOnTop == 1);
    const QVersionNumber version = QVersionNumber::fromString(QCoreApplication::applicationVersion());
    lblVersion->setText(QStringLiteral("Version %1.%2.%3")
                            .arg(version.majorVersion())
                            .arg(version.minorVersion())
                            .arg(version.microVersion()));
    lblProductName->setText(QCoreApplication::applicationName());
}

void frmSplash::unloading()
{
    program().loadAnew(QStringLiteral("Zelvora"));
}

// A click on the frame or on a text comes here as well, since neither keeps it.
void frmSplash::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        program().unload(objectName());
}

void frmSplash::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        program().unload(objectName());
    else
        Window::keyPressEvent(event);
}

} // namespace zv
