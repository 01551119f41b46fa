#pragma once

#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <functional>

namespace wordbm {

// Opens a file's folder in the desktop's file manager with the file selected. File managers of
// the freedesktop family take the ShowItems call on the session bus; where none answers it,
// xdg-open shows the folder alone. Nothing is reported: a folder that cannot be shown leaves the
// person nothing to do.
class FileManager {
public:
    // Hands the call to the session bus; `failed` runs when no file manager took it.
    using Send = std::function<void(const QDBusMessage& call, std::function<void()> failed)>;
    // Starts a program without waiting for it.
    using Start = std::function<void(const QString& program, const QStringList& arguments)>;

    FileManager();

    // Replaceable, so that tests see what would be launched instead of a file manager opening.
    Send send;
    Start start;

    // Does nothing for an empty path.
    void showItem(const QString& path) const;

    // org.freedesktop.FileManager1.ShowItems with the file's URL and no startup id.
    static QDBusMessage showItemsCall(const QString& path);
    // The folder holding the file, as an absolute path.
    static QString folderOf(const QString& path);
    static constexpr const char* FolderOpener = "xdg-open";
};

} // namespace wordbm
