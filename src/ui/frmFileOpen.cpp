#include "ui/frmFileOpen.h"

#include "ui/FileDrop.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>
#include <QVBoxLayout>

namespace wordbm {

namespace {

void defaultInform(QWidget* parent, const QString& title, const QString& text) {
    QMessageBox::information(parent, title, text);
}

QStringList droppedFiles(const QMimeData* data) {
    QStringList files;
    for (const QUrl& url : data->urls()) {
        files << (url.isLocalFile() ? url.toLocalFile() : url.toString());
    }
    return files;
}

} // namespace

frmFileOpen::frmFileOpen(QWidget* parent) : QDialog(parent), inform(defaultInform) {
    openFile = [this](QWidget* owner, const QString& title, const QString& filter) {
        return QFileDialog::getOpenFileName(owner, title, chooserFolder(), filter);
    };
    setObjectName(QStringLiteral("frmFileOpen"));
    auto* layout = new QVBoxLayout(this);
    lblFile_ = new QLabel(this);
    lblFile_->setObjectName(QStringLiteral("lblFile"));
    layout->addWidget(lblFile_);

    auto* fileRow = new QHBoxLayout;
    File_ = new QLineEdit(this);
    File_->setObjectName(QStringLiteral("File"));
    // The misspelling is the program's own text.
    File_->setPlaceholderText(QStringLiteral("Dateiname eingben oder Datei hineinziehen"));
    File_->setMinimumWidth(420);
    File_->installEventFilter(this);
    auto* btnChoose = new QPushButton(QStringLiteral("..."), this);
    btnChoose->setObjectName(QStringLiteral("btnChoose"));
    btnChoose->setAutoDefault(false);
    fileRow->addWidget(File_, 1);
    fileRow->addWidget(btnChoose);
    layout->addLayout(fileRow);

    auto* buttons = new QHBoxLayout;
    auto* btnDone = new QPushButton(QStringLiteral("OK"), this);
    btnDone->setObjectName(QStringLiteral("btnDone"));
    btnDone->setDefault(true);
    auto* btnCancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    btnCancel->setObjectName(QStringLiteral("btnCancel"));
    btnCancel->setAutoDefault(false);
    buttons->addStretch();
    buttons->addWidget(btnDone);
    buttons->addWidget(btnCancel);
    layout->addLayout(buttons);

    connect(btnChoose, &QPushButton::clicked, this, &frmFileOpen::chooseFile);
    connect(btnDone, &QPushButton::clicked, this, &QDialog::accept);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    SetDefault();
}

std::optional<std::string> frmFileOpen::pick(QWidget* parent, Kind kind, const std::string& file,
                                             const QString& caption, const QString& startFolder) {
    frmFileOpen dialog(parent);
    dialog.setKind(kind);
    dialog.setStartFolder(startFolder);
    if (!caption.isEmpty()) {
        dialog.setCaption(caption, dialog.patterns());
    }
    dialog.setFile(QString::fromStdString(file));
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.File().toStdString();
}

void frmFileOpen::setCaption(const QString& caption, const QString& patterns) {
    lblFile_->setText(caption);
    setWindowTitle(caption);
    patterns_ = patterns;
}

void frmFileOpen::SetDefault() {
    setCaption(QStringLiteral("Datei auswählen"), QString());
}

void frmFileOpen::SetBESR() {
    setCaption(QStringLiteral("BESR Datei"), QStringLiteral("*.xml;*.bes;*.v11"));
}

void frmFileOpen::SetWord() {
    setCaption(QStringLiteral("Word Datei"), QStringLiteral("*.docx;*.docm"));
}

void frmFileOpen::SetCSV() {
    setCaption(QStringLiteral("CSV Datei"), QStringLiteral("*.csv"));
}

void frmFileOpen::setKind(Kind kind) {
    switch (kind) {
    case Kind::Default:
        SetDefault();
        break;
    case Kind::BESR:
        SetBESR();
        break;
    case Kind::Word:
        SetWord();
        break;
    case Kind::CSV:
        SetCSV();
        break;
    }
}

QString frmFileOpen::File() const {
    return File_->text();
}

void frmFileOpen::setFile(const QString& file) {
    File_->setText(file);
}

QString frmFileOpen::kindCaption() const {
    return lblFile_->text();
}

QString frmFileOpen::chooserFolder() const {
    const QFileInfo typed(File_->text().trimmed());
    if (!File_->text().trimmed().isEmpty() && typed.absoluteDir().exists()) {
        return typed.absolutePath();
    }
    if (!startFolder_.isEmpty() && QDir(startFolder_).exists()) {
        return startFolder_;
    }
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString frmFileOpen::dropRefusal(const QStringList& files, const QString& patterns, const QString& kind) {
    if (files.size() > 1) {
        return QStringLiteral("Maximal eine Datei!");
    }
    if (files.isEmpty() || patterns.isEmpty()) {
        return {};
    }
    // Compared as Windows does, whatever the letter case of name or pattern.
    const QString suffix = QFileInfo(files.front()).suffix();
    const QString extension = suffix.isEmpty() ? QString() : QStringLiteral(".") + suffix.toLower();
    for (const QString& pattern : patterns.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const qsizetype star = pattern.indexOf(QLatin1Char('*'));
        const QString wanted = pattern.mid(star + 1).toLower();
        if (!extension.isEmpty() && extension == wanted) {
            return {};
        }
    }
    return QStringLiteral("Muss eine '") + kind + QStringLiteral("' Datei sein!");
}

QString frmFileOpen::chooserFilter(const QString& kind, const QString& patterns) {
    const QString all = QStringLiteral("Alle Dateien (*)");
    if (patterns.isEmpty()) {
        return all;
    }
    QString spaced = patterns;
    spaced.replace(QLatin1Char(';'), QLatin1Char(' '));
    return kind + QStringLiteral(" (") + spaced + QStringLiteral(");;") + all;
}

bool frmFileOpen::dropFiles(const QStringList& files) {
    const QString refusal = dropRefusal(files, patterns_, kindCaption());
    if (!refusal.isEmpty()) {
        inform(this, windowTitle(), refusal);
        return false;
    }
    if (files.isEmpty()) {
        return false;
    }
    File_->setText(files.front());
    return true;
}

void frmFileOpen::chooseFile() {
    const QString chosen =
        openFile(this, kindCaption() + QStringLiteral(" auswählen"), chooserFilter(kindCaption(), patterns_));
    if (!chosen.isEmpty()) {
        File_->setText(chosen);
    }
}

// The field takes whole files only; the line edit's own drop would paste the URL as text.
bool frmFileOpen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == File_) {
        if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
            FileDrop::acceptCopy(static_cast<QDropEvent*>(event));
            return true;
        }
        if (event->type() == QEvent::Drop) {
            auto* drop = static_cast<QDropEvent*>(event);
            if (FileDrop::acceptCopy(drop)) {
                dropFiles(droppedFiles(drop->mimeData()));
            }
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace wordbm
