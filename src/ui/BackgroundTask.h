#pragma once

#include <QObject>
#include <exception>
#include <functional>
#include <memory>

class QThread;

namespace wordbm {

// Long work off the window's thread: one function run on a thread of its own, its end handed back
// to the window's thread by a queued signal. The window keeps drawing and answering meanwhile.
// This is the one way the window runs the engine's commands and the office worker's exports.
class BackgroundTask : public QObject {
    Q_OBJECT
public:
    explicit BackgroundTask(std::function<void()> work, QObject* parent = nullptr);
    // Waits for the thread, so that no work outlives the task.
    ~BackgroundTask() override;
    BackgroundTask(const BackgroundTask&) = delete;
    BackgroundTask& operator=(const BackgroundTask&) = delete;

    void start();
    bool done() const { return done_; }
    // Lets the window's events run until the work has ended; rethrows what the work threw.
    void wait();

    // Runs `work` off the window's thread and returns when it has ended, the window's events
    // running meanwhile. Called off the window's thread, it runs the work right there.
    static void run(std::function<void()> work);
    // Whether the caller runs on the window's thread.
    static bool onWindowThread();

signals:
    // Emitted on the window's thread once the work has ended.
    void finished();

private:
    std::function<void()> work_;
    std::unique_ptr<QThread> thread_;
    std::exception_ptr failure_;
    bool done_ = false;
};

} // namespace wordbm
