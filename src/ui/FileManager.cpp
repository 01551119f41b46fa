#include "ui/FileManager.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace wordbm {

namespace {

// A file manager that is not running is started by the bus first, which may take a moment.
constexpr int ShowItemsTimeout = 5000;

void sendOnSessionBus(const QDBusMessage& call, std::function<void()> failed) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        failed();
        return;
    }
    // Asynchronous, so that a slow file manager never holds the window.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, ShowItemsTimeout));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [failed = std::move(failed)](QDBusPendingCallWatcher* done) {
                         if (done->isError()) {
                             failed();
                         }
                         done->deleteLater();
                     });
}

void startDetached(const QString& program, const QStringList& arguments) {
    QProcess::startDetached(program, arguments);
}

} // namespace

FileManager::FileManager() : send(sendOnSessionBus), start(startDetached) {}

QDBusMessage FileManager::showItemsCall(const QString& path) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QString url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString(QUrl::FullyEncoded);
    call << QStringList{url} << QString();
    return call;
}

QString FileManager::folderOf(const QString& path) {
    return QFileInfo(path).absolutePath();
}

void FileManager::showItem(const QString& path) const {
    if (path.isEmpty()) {
        return;
    }
    send(showItemsCall(path),
         [start = start, folder = folderOf(path)] { start(QString::fromLatin1(FolderOpener), {folder}); });
}

} // namespace wordbm
