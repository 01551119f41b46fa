#include "ui/QtUserInterface.h"

#include "ui/frmESQR.h"
#include "ui/frmFileNameTemplate.h"
#include "ui/frmList.h"
#include "ui/frmMerge.h"
#include "ui/frmWordBM.h"

#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTimer>

namespace wordbm {

QtUserInterface::QtUserInterface() : window_(std::make_unique<frmWordBM>()) {
    window_->setRaise([this](WindowEvent event, const std::string& argument) { raise(event, argument); });
}

QtUserInterface::~QtUserInterface() {
    if (progress_) {
        delete progress_.data();
    }
}

void QtUserInterface::documentSource(std::function<word::DocumentPtr()> source) {
    window_->setDocumentSource(std::move(source));
}

void QtUserInterface::options(OptionsPort* options) {
    window_->setOptions(options);
}

void QtUserInterface::raise(WindowEvent event, const std::string& argument) {
    pending_.emplace_back(event, argument);
    if (dispatching_ || !handler_) {
        return;
    }
    dispatching_ = true;
    while (!pending_.empty() && handler_) {
        auto [next, value] = pending_.front();
        pending_.pop_front();
        handler_(next, value);
        // The form view follows every command; the timer's check changes nothing, and rebuilding
        // the view on each tick would throw away where the person clicked.
        if (next != WindowEvent::Timer) {
            if (afterCommand) {
                afterCommand(next);
            }
            window_->refreshForm();
        }
    }
    dispatching_ = false;
}

int QtUserInterface::messageBox(const std::string& text, int buttons, const std::string& title) {
    if (answerBox) {
        return answerBox(text, buttons, title);
    }
    QMessageBox box(window_.get());
    box.setWindowTitle(QString::fromStdString(title.empty() ? mainWindowCaption() : title));
    box.setText(QString::fromStdString(text));
    switch (buttons) {
    case msgbox::Stop:
        box.setIcon(QMessageBox::Critical);
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case msgbox::YesNoCancel:
        box.setIcon(QMessageBox::Question);
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    case msgbox::YesNo:
        box.setIcon(QMessageBox::Question);
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    default:
        box.setIcon(QMessageBox::Information);
        box.setStandardButtons(QMessageBox::Ok);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return msgbox::Yes;
    case QMessageBox::No:
        return msgbox::No;
    case QMessageBox::Ok:
        return msgbox::Ok;
    default:
        // Escape or the window's close button on a question means Cancel, or No where there is none.
        return buttons == msgbox::YesNo ? msgbox::No
                                        : (buttons == msgbox::YesNoCancel ? msgbox::Cancel : msgbox::Ok);
    }
}

std::string QtUserInterface::mainWindowCaption() const {
    return window_->windowTitle().toStdString();
}

void QtUserInterface::processEvents() {
    QCoreApplication::processEvents();
}

void QtUserInterface::waitEvents() {
    // The short wait: a timer bounds it so the engine's loop checks its running flag again.
    QEventLoop loop;
    QTimer::singleShot(100, &loop, &QEventLoop::quit);
    loop.processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
}

void QtUserInterface::mainWindowExecute(const MainWindowSetup& setup) {
    window_->execute(setup);
}

void QtUserInterface::wordDocDisplay(const std::string& original, const std::string& working) {
    window_->showWordDoc(original, working);
}

void QtUserInterface::wordDocDisplayClear() {
    window_->clearWordDoc();
}

void QtUserInterface::csvDocDisplay(const std::string& original, const std::string& working) {
    window_->showCSVDoc(original, working);
}

void QtUserInterface::csvDocDisplayClear() {
    window_->clearCSVDoc();
}

void QtUserInterface::traceDisplay(const std::string& trace) {
    window_->showTrace(trace);
}

void QtUserInterface::countsDisplay(const DocumentCounts& counts) {
    window_->showCounts(counts);
}

void QtUserInterface::progressStart(const std::string& title, int maximum) {
    stop_ = false;
    if (!progress_) {
        // Parent-owned: the window deletes it when it goes first.
        progress_ = new QProgressDialog(window_.get());
        progress_->setObjectName(QStringLiteral("progress"));
        progress_->setWindowModality(Qt::WindowModal);
        progress_->setCancelButtonText(QStringLiteral("Abbrechen"));
        progress_->setMinimumDuration(0);
        progress_->setAutoReset(false);
        progress_->setAutoClose(false);
        QObject::connect(progress_, &QProgressDialog::canceled, [this] { stop_ = true; });
    }
    progress_->setWindowTitle(QString::fromStdString(title));
    progress_->setLabelText(QString::fromStdString(title));
    progress_->setRange(0, maximum);
    progress_->setValue(0);
    progress_->show();
    QCoreApplication::processEvents();
}

void QtUserInterface::progressStep(int position, int maximum) {
    if (progress_) {
        if (progress_->maximum() != maximum) {
            progress_->setMaximum(maximum);
        }
        progress_->setValue(maximum > 0 ? std::min(position, maximum) : 0);
    }
    QCoreApplication::processEvents();
}

void QtUserInterface::progressStop() {
    if (progress_) {
        progress_->hide();
    }
    window_->refreshForm();
}

std::optional<MergeChoices> QtUserInterface::mergeChoicesDialog(OptionsPort& options) {
    return frmMerge::ask(window_.get(), options);
}

void QtUserInterface::resultListDialog(const ResultList& result) {
    frmList::showResults(window_.get(), result);
}

std::optional<SlipChoices> QtUserInterface::slipChoicesDialog(const std::string& wordDoc) {
    return frmESQR::ask(window_.get(), wordDoc);
}

std::optional<std::string> QtUserInterface::fileNameTemplateDialog(const FileNameTemplate& owner,
                                                                   const std::string& mask) {
    return frmFileNameTemplate::edit(window_.get(), owner, mask);
}

} // namespace wordbm
