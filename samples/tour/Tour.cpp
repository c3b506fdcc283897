#include "Tour.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPrintDialog>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace zv::tour {

namespace {

constexpr int kPatienceMs = 15000;

} // namespace

Tour::Tour(Program& program, QString pictures) : m_program(program), m_pictures(std::move(pictures)) {}

QWidget* Tour::control(const char* name, const char* window) const
{
    Window* loaded = m_program.loaded(QString::fromLatin1(window));
    return loaded ? loaded->findChild<QWidget*>(QString::fromLatin1(name)) : nullptr;
}

bool Tour::start()
{
    m_program.load(QStringLiteral("Zelvora"));
    return appears("Zelvora");
}

bool Tour::appears(const char* window)
{
    return until(window, [this, window] {
        Window* loaded = m_program.loaded(QString::fromLatin1(window));
        return loaded && loaded->isVisible();
    });
}

bool Tour::until(const char* what, const std::function<bool()>& holds)
{
    if (QTest::qWaitFor(holds, kPatienceMs))
        return true;
    std::fprintf(stderr, "zelvora-tour: waited in vain for %s\n", what);
    return false;
}

void Tour::picture(const QString& name, const char* window)
{
    QWidget* loaded = m_program.loaded(QString::fromLatin1(window));
    if (!loaded)
        return;
    QCoreApplication::processEvents();
    keep(loaded->grab(), name);
}

void Tour::pictureOfScreen(const QString& name)
{
    QCoreApplication::processEvents();
    keep(QGuiApplication::primaryScreen()->grabWindow(0), name);
}

void Tour::keep(const QPixmap& picture, const QString& name)
{
    const QString file =
        QStringLiteral("%1/%2-%3.png").arg(m_pictures).arg(++m_count, 2, 10, QLatin1Char('0')).arg(name);
    if (!picture.save(file))
        std::fprintf(stderr, "zelvora-tour: %s cannot be written\n", qPrintable(file));
}

bool Tour::chooseLibrary(const QString& name, const char* window, const char* combo)
{
    auto* libraries = qobject_cast<QComboBox*>(control(combo, window));
    const int index = libraries ? libraries->findText(name) : -1;
    if (index < 0)
        return false;
    libraries->setCurrentIndex(index);
    Q_EMIT libraries->activated(index);
    QCoreApplication::processEvents();
    return true;
}

void Tour::click(const char* name, const char* window)
{
    if (QWidget* widget = control(name, window))
        QTest::mouseClick(widget, Qt::LeftButton, {},
                          {std::min(10, widget->width() / 2), widget->height() / 2});
}

void Tour::enter(const char* field, const QString& text, const char* window)
{
    if (auto* edit = qobject_cast<QLineEdit*>(control(field, window)))
        edit->setText(text);
}

void Tour::doubleClick(const char* name)
{
    if (QWidget* widget = control(name)) {
        QTest::mouseClick(widget, Qt::LeftButton);
        QTest::mouseDClick(widget, Qt::LeftButton);
    }
}

void Tour::jumpToRow(int row, const char* window)
{
    auto* labels = qobject_cast<QListWidget*>(control("List1", window));
    if (!labels || row >= labels->count())
        return;
    labels->scrollToItem(labels->item(row), QAbstractItemView::PositionAtCenter);
    QCoreApplication::processEvents();
    // A row can be wider than what is seen of it.
    QTest::mouseClick(labels->viewport(), Qt::LeftButton, {},
                      {3, labels->visualItemRect(labels->item(row)).center().y()});
    QCoreApplication::processEvents();
}

void Tour::answerNextMessage(const QString& name)
{
    auto* poll = new QTimer(QApplication::instance());
    QObject::connect(poll, &QTimer::timeout, poll, [this, poll, name] {
        if (answerMessage(name))
            poll->deleteLater();
    });
    poll->start(50);
}

std::unique_ptr<QObject> Tour::answerMessages(const QString& name)
{
    auto poll = std::make_unique<QTimer>();
    QObject::connect(poll.get(), &QTimer::timeout, poll.get(), [this, name] { answerMessage(name); });
    poll->start(50);
    return poll;
}

bool Tour::answerMessage(const QString& name)
{
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box)
        return false;
    keep(box->grab(), name);
    QAbstractButton* yes = box->button(QMessageBox::Yes);
    (yes ? yes : box->buttons().first())->click();
    return true;
}

void Tour::printNextTo(const QString& file, const QString& name)
{
    auto* poll = new QTimer(QApplication::instance());
    QObject::connect(poll, &QTimer::timeout, poll, [this, poll, file, name] {
        auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        auto* printers = dialog ? dialog->findChild<QComboBox*>(QStringLiteral("printers")) : nullptr;
        auto* field = dialog ? dialog->findChild<QLineEdit*>(QStringLiteral("filename")) : nullptr;
        if (!printers || !field)
            return;
        poll->deleteLater();
        // Behind the printers there are, if any, stands the file.
        printers->setCurrentIndex(printers->count() - 1);
        field->setText(file);
        keep(dialog->grab(), name);
        dialog->accept();
    });
    poll->start(50);
}

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    static_cast<void>(
        QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, kPatienceMs));
}

} // namespace zv::tour
