#include "SampleOffice.h"
#include "support/PdfFacts.h"
#include "support/PrintServer.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPushButton>
#include <QTimer>

namespace zv {
namespace {

/// The print run into the queue of a real print server.
class PrintQueueTest : public SampleOffice {
protected:
    /// The user agrees to the dialog as it comes up.
    void agree()
    {
        QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this] {
            auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            ++asked;
            EXPECT_FALSE(dialog->findChild<QLineEdit*>(QStringLiteral("filename"))->isEnabled())
                << "the printer is offered first";
            dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        });
        m_poll.start(20);
    }

    static void SetUpTestSuite() { s_server = std::make_unique<PrintServer>(); }
    static void TearDownTestSuite() { s_server.reset(); }

    /// One for all tests: a process keeps to the first that it has met.
    PrintServer& server = *s_server;
    int asked = 0;

private:
    static std::unique_ptr<PrintServer> s_server;
    QTimer m_poll;
};

std::unique_ptr<PrintServer> PrintQueueTest::s_server;

TEST_F(PrintQueueTest, EachDrawingIsAJobAndTheFirstHasTheDialog)
{
    if (!server.whyNot().isEmpty())
        GTEST_SKIP() << server.whyNot().toStdString();
    ASSERT_TRUE(open());
    selectAll();
    QStringList expected;
    for (const std::string& path : readablePaths())
        expected << QFileInfo(toText(path)).fileName();
    agree();
    window().Command7->click();
    EXPECT_EQ(asked, 1);
    QStringList titles;
    for (const QString& job : server.jobs()) {
        const PdfFacts page = readPdf(job);
        EXPECT_TRUE(page.whole);
        EXPECT_EQ(page.pages, 1);
        titles << page.title;
    }
    EXPECT_EQ(titles, expected);
}

TEST_F(PrintQueueTest, APrinterThatGoesAwayLetsTheRunComeToItsEnd)
{
    if (!server.whyNot().isEmpty())
        GTEST_SKIP() << server.whyNot().toStdString();
    makeLibrary("Few", drawings(4));
    makeCatalogue({"Few"});
    ASSERT_TRUE(open());
    selectAll();
    agree();
    const auto before = server.jobs().size();
    QObject::connect(window().Text3, &QPlainTextEdit::textChanged, &window(), [this] { server.stop(); });
    window().Command7->click();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(server.jobs().size(), before + 1);
    EXPECT_EQ(window().Label1->text(), QStringLiteral("Printed: \n4 of 4"));
    EXPECT_TRUE(messages.shown.empty());
}

} // namespace
} // namespace zv
