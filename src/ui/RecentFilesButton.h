#pragma once

#include "ui/RecentFiles.h"

#include <QToolButton>
#include <functional>
#include <string>

class QMenu;

namespace wordbm {

class OptionsPort;

// The drop-down beside a path box: "Zuletzt verwendet", the files of its kind opened last,
// newest first, each with its folder. A file that is gone is shown but cannot be chosen.
class RecentFilesButton : public QToolButton {
    Q_OBJECT
public:
    // kind: what the tooltip calls the files ("Word-Rechnungsformulare").
    RecentFilesButton(std::string keyStem, const QString& kind, QWidget* parent = nullptr);

    // The options that keep the list; may stay unset (then the list is empty).
    void setOptions(OptionsPort* options) { options_ = options; }
    // Receives the path a person chose from the list.
    std::function<void(const QString& path)> chosen;

    const RecentFiles& files() const { return files_; }
    // A file opened: first in the list from now on.
    void opened(const QString& path);
    // Where the file chooser starts: the folder last used for this kind; "" when none is known.
    QString lastFolder() const;
    void rememberFolder(const QString& folder);

private:
    void fillMenu();

    RecentFiles files_;
    OptionsPort* options_ = nullptr;
    QMenu* menu_ = nullptr;
};

} // namespace wordbm
