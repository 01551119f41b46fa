#include "ui/BackgroundTask.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

namespace wordbm {

BackgroundTask::BackgroundTask(std::function<void()> work, QObject* parent)
    : QObject(parent), work_(std::move(work)) {}

BackgroundTask::~BackgroundTask() {
    if (thread_) {
        thread_->wait();
    }
}

void BackgroundTask::start() {
    if (thread_) {
        return;
    }
    thread_.reset(QThread::create([this] {
        try {
            work_();
        } catch (...) {
            // Handed to the window's thread by wait(), where the caller can answer it.
            failure_ = std::current_exception();
        }
    }));
    // The thread's own signal comes from the thread; this object lives on the window's thread, so
    // the connection queues it there.
    connect(thread_.get(), &QThread::finished, this, [this] {
        done_ = true;
        emit finished();
    });
    thread_->start();
}

void BackgroundTask::wait() {
    start();
    // A loop ended early (the application quitting) is run again: the work may be waiting for
    // an answer from this thread, and it must end before the task goes.
    while (!done_) {
        QEventLoop loop;
        connect(this, &BackgroundTask::finished, &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (failure_) {
        std::rethrow_exception(std::exchange(failure_, nullptr));
    }
}

void BackgroundTask::run(std::function<void()> work) {
    if (!onWindowThread()) {
        work();
        return;
    }
    BackgroundTask task(std::move(work));
    task.wait();
}

bool BackgroundTask::onWindowThread() {
    const QCoreApplication* application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

} // namespace wordbm
