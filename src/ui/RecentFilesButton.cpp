#include "ui/RecentFilesButton.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace wordbm {

RecentFilesButton::RecentFilesButton(std::string keyStem, const QString& kind, QWidget* parent)
    : QToolButton(parent), files_(std::move(keyStem)) {
    setArrowType(Qt::DownArrow);
    setPopupMode(QToolButton::InstantPopup);
    setToolTip(QStringLiteral("Zuletzt verwendete ") + kind);
    setAccessibleName(QStringLiteral("Zuletzt verwendet"));
    setFocusPolicy(Qt::TabFocus);
    menu_ = new QMenu(this);
    menu_->setTitle(QStringLiteral("Zuletzt verwendet"));
    setMenu(menu_);
    // Filled as it opens, so it shows the files as they are on disk now.
    connect(menu_, &QMenu::aboutToShow, this, &RecentFilesButton::fillMenu);
}

void RecentFilesButton::fillMenu() {
    menu_->clear();
    menu_->addSection(QStringLiteral("Zuletzt verwendet"));
    const std::vector<std::string> paths = files_.list(options_);
    int number = 0;
    for (const std::string& stored : paths) {
        const QString path = QString::fromStdString(stored);
        const QFileInfo file(path);
        // "&1 Rechnung.docx – /home/anna/Dokumente": the digit chooses it from the keyboard.
        QString text = QStringLiteral("&%1  %2  –  %3")
                           .arg(++number)
                           .arg(file.fileName().replace(QLatin1Char('&'), QStringLiteral("&&")),
                                QDir::toNativeSeparators(file.absolutePath())
                                    .replace(QLatin1Char('&'), QStringLiteral("&&")));
        const bool present = file.isFile();
        if (!present) {
            text += QStringLiteral("  (nicht gefunden)");
        }
        QAction* action = menu_->addAction(text);
        action->setData(path);
        action->setEnabled(present);
        action->setToolTip(path);
        connect(action, &QAction::triggered, this, [this, path] {
            if (chosen) {
                chosen(path);
            }
        });
    }
    if (paths.empty()) {
        menu_->addAction(QStringLiteral("(keine)"))->setEnabled(false);
        return;
    }
    menu_->addSeparator();
    QAction* clear = menu_->addAction(QStringLiteral("Liste &leeren"));
    connect(clear, &QAction::triggered, this, [this] { files_.clear(options_); });
}

void RecentFilesButton::opened(const QString& path) {
    files_.add(options_, QFileInfo(path).absoluteFilePath().toStdString());
}

QString RecentFilesButton::lastFolder() const {
    return QString::fromStdString(files_.folder(options_));
}

void RecentFilesButton::rememberFolder(const QString& folder) {
    files_.rememberFolder(options_, folder.toStdString());
}

} // namespace wordbm
