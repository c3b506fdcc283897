#pragma once

#include "BenchWindow.h"
#include "Canvas.h"
#include "DocumentEdit.h"
#include "HostServer.h"

#include "drawing/Writer.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"
#include "support/TestCarrier.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

namespace zv::bench {

constexpr const char* kName = "AutoCAD.Application";

/// The bench in its own window, and another program that drives it from a thread of its own.
class BenchProgram : public testing::Test {
protected:
    BenchProgram()
    {
        window = std::make_unique<BenchWindow>();
        server =
            std::make_unique<HostServer>(HostProgram{window->workshop(), window->commandLine(), *window});
        listens = static_cast<bool>(server->listen(kName));
        window->workshop().add();
        window->show();
        canvas = window->findChild<Canvas*>(QStringLiteral("Canvas"));
        line = window->findChild<QLineEdit*>(QStringLiteral("CommandLine"));
    }

    QString prompt() const { return window->findChild<QLabel*>(QStringLiteral("Prompt"))->text(); }

    /// Runs `client` beside the window; `meanwhile` runs in the window's thread.
    void drive(const std::function<void(AutomationObject&)>& client,
               const std::function<void()>& meanwhile = {})
    {
        std::atomic<bool> done = false;
        std::thread other([&] {
            const auto pump = test::testPump();
            const auto carrier = test::testCarrier(*pump, {1'000, 200});
            if (const auto application = carrier->attach(kName))
                client(**application);
            done = true;
        });
        if (meanwhile)
            meanwhile();
        EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }, 20'000));
        other.join();
    }

    void pickAt(double x, double y)
    {
        QTest::mouseClick(canvas, Qt::LeftButton, {}, canvas->toPixels({x, y, 0}).toPoint());
    }
    bool waitForPrompt(const QString& text)
    {
        return QTest::qWaitFor([&] { return prompt() == text; }, 10'000);
    }

    /// A library drawing with a circle round its origin, to be placed by `base`.
    std::string makeRing(double radius, dwg::Point3 base = {})
    {
        dwg::Document document = emptyDocument();
        document.header.insertionBase = base;
        document.blocks[document.modelSpace].entities.push_back(
            newEntity(document, "CIRCLE", dwg::Circle{{0, 0, 0}, radius, 0, dwg::kZAxis}, 0));
        return folder.write("Bolt.dwg", dwg::writeDocument(document, {}).valueOr(""));
    }
    void typeInsertion(const std::string& path)
    {
        window->commandLine().type("(command \"_.-insert\" \"" + path +
                                   "\"\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\")\r");
    }
    /// Whether something is drawn where a point is seen.
    bool isDrawnAt(double x, double y)
    {
        const QImage picture = canvas->grab().toImage();
        const QPoint at = canvas->toPixels({x, y, 0}).toPoint();
        for (const QPoint step : {QPoint(0, 0), QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            if (picture.pixel(at + step) != picture.pixel(0, 0))
                return true;
        }
        return false;
    }

    TemporaryFolder folder;
    Environment sockets{"XDG_RUNTIME_DIR", folder.path()}, settings{"XDG_CONFIG_HOME", folder.path()};
    std::unique_ptr<BenchWindow> window;
    std::unique_ptr<HostServer> server;
    bool listens = false;
    Canvas* canvas = nullptr;
    QLineEdit* line = nullptr;
};

/// Runs `act` in the window's thread as soon as `find` gives something, also while a dialog stands.
template <class Find, class Act> class WhenThere {
public:
    WhenThere(Find find, Act act)
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this, find, act] {
            const auto found = find();
            if (found == nullptr || !found->isVisible())
                return;
            m_timer.stop();
            act(*found);
        });
        m_timer.start(5);
    }

private:
    QTimer m_timer;
};

} // namespace zv::bench
