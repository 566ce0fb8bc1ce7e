#pragma once
// The event loop of the tests that talk over real loopback sockets: the one
// application object of a test program and a bounded pump.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace kal::test {

/// The application object of the test program, made on first use.
inline void testApp()
{
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "kalmeron_tests";
    static char *argv[] = {name, nullptr};
    new QCoreApplication(argc, argv); // kept to the end of the process
}

/// Runs the event loop until `done` holds; false when it doesn't within the
/// limit, which only keeps a broken peer from hanging the run.
inline bool pumpUntil(const std::function<bool()> &done, int limitMs = 20000)
{
    testApp();
    QElapsedTimer guard;
    guard.start();
    while (!done()) {
        if (guard.elapsed() > limitMs)
            return false;
        QEventLoop loop;
        QTimer::singleShot(5, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

} // namespace kal::test
