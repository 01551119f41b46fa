#include "ui/QtUserInterface.h"

#include "ui/BackgroundTask.h"
#include "ui/LayoutView.h"
#include "ui/PagePreview.h"
#include "ui/PlatformWords.h"
#include "ui/frmESQR.h"
#include "ui/frmFileNameTemplate.h"
#include "ui/frmList.h"
#include "ui/frmMerge.h"
#include "ui/frmWordBM.h"

#include <QApplication>
#include <QEventLoop>
#include <QFontMetrics>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>
#include <type_traits>

namespace wordbm {

namespace {

constexpr int ProgressMinimumWidth = 380;

} // namespace

QtUserInterface::QtUserInterface() : window_(std::make_unique<frmWordBM>()) {
    window_->setRaise([this](WindowEvent event, const std::string& argument) { raise(event, argument); });
    // The preview's exports read the engine's document: they take their turn with the commands.
    window_->preview().setRunner([this](const std::function<void()>& work) { return engineWork(work); });
    window_->layout().setRunner([this](const std::function<void()>& work) { return engineWork(work); });
}

template <typename Call> auto QtUserInterface::onWindow(Call call) -> decltype(call()) {
    if (BackgroundTask::onWindowThread()) {
        return call();
    }
    // The engine's thread waits until the window's thread has answered.
    if constexpr (std::is_void_v<decltype(call())>) {
        QMetaObject::invokeMethod(window_.get(), call, Qt::BlockingQueuedConnection);
    } else {
        decltype(call()) result{};
        QMetaObject::invokeMethod(
            window_.get(), [&result, &call] { result = call(); }, Qt::BlockingQueuedConnection);
        return result;
    }
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
    if (event == WindowEvent::Timer && (dispatching_ || working_)) {
        // The session is checked after the command anyway; a tick would only queue up.
        return;
    }
    pending_.emplace_back(event, argument);
    if (dispatching_ || !handler_) {
        return;
    }
    dispatching_ = true;
    while (!pending_.empty() && handler_) {
        auto [next, value] = pending_.front();
        pending_.pop_front();
        if (next == WindowEvent::Timer) {
            // A quick look at the session, right here; it changes nothing the views show.
            handler_(next, value);
            continue;
        }
        engineWork([this, next, value] {
            handler_(next, value);
            if (afterCommand) {
                afterCommand(next);
            }
        });
        if (next != WindowEvent::Quit) {
            followState();
        }
    }
    dispatching_ = false;
}

bool QtUserInterface::engineWork(const std::function<void()>& work) {
    if (working_) {
        return false;
    }
    working_ = true;
    window_->setBusy(true);
    try {
        BackgroundTask::run(work);
    } catch (const std::exception& failure) {
        // The engine catches its own failures; one that escapes it still must not end the program.
        window_->setBusy(false);
        working_ = false;
        messageBox(failure.what(), msgbox::Stop, {});
        return true;
    }
    window_->setBusy(false);
    working_ = false;
    return true;
}

void QtUserInterface::followState() {
    window_->showFormChanged(formChanged && formChanged());
    window_->refreshForm();
    window_->previewFollow();
}

int QtUserInterface::messageBox(const std::string& text, int buttons, const std::string& title) {
    return onWindow([&] { return windowMessageBox(text, buttons, title); });
}

int QtUserInterface::windowMessageBox(const std::string& text, int buttons, const std::string& title) {
    if (answerBox) {
        return answerBox(text, buttons, title);
    }
    QMessageBox box(window_.get());
    box.setWindowTitle(QString::fromStdString(title.empty() ? mainWindowCaption() : title));
    box.setText(QString::fromStdString(text));
    box.setInformativeText(PlatformWords::explanation(box.text()));
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
    return window_->caption().toStdString();
}

void QtUserInterface::processEvents() {
    // Off the window's thread the window runs its events itself.
    if (BackgroundTask::onWindowThread()) {
        QCoreApplication::processEvents();
    }
}

void QtUserInterface::waitEvents() {
    // The short wait: a timer bounds it so the engine's loop checks its running flag again.
    QEventLoop loop;
    QTimer::singleShot(100, &loop, &QEventLoop::quit);
    loop.processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
}

void QtUserInterface::mainWindowExecute(const MainWindowSetup& setup) {
    onWindow([&] { window_->execute(setup); });
}

void QtUserInterface::wordDocDisplay(const std::string& original, const std::string& working) {
    onWindow([&] { window_->showWordDoc(original, working); });
}

void QtUserInterface::wordDocDisplayClear() {
    onWindow([this] { window_->clearWordDoc(); });
}

void QtUserInterface::csvDocDisplay(const std::string& original, const std::string& working) {
    onWindow([&] { window_->showCSVDoc(original, working); });
}

void QtUserInterface::csvDocDisplayClear() {
    onWindow([this] { window_->clearCSVDoc(); });
}

void QtUserInterface::traceDisplay(const std::string& trace) {
    onWindow([&] { window_->showTrace(trace); });
}

void QtUserInterface::countsDisplay(const DocumentCounts& counts) {
    onWindow([&] { window_->showCounts(counts); });
}

void QtUserInterface::progressStart(const std::string& title, int maximum) {
    stop_ = false;
    onWindow([&] { windowProgressStart(title, maximum); });
}

void QtUserInterface::windowProgressStart(const std::string& title, int maximum) {
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
    // Wide enough that a window manager shows the whole title, and that the label does not make
    // the dialog jump with every customer's name.
    const QFontMetrics metrics(progress_->font());
    progress_->setMinimumWidth(
        std::max(ProgressMinimumWidth,
                 metrics.horizontalAdvance(progress_->windowTitle()) + metrics.averageCharWidth() * 16));
    progress_->setRange(0, maximum);
    progress_->setValue(0);
    progress_->show();
    QCoreApplication::processEvents();
}

void QtUserInterface::progressStep(int position, int maximum) {
    onWindow([=, this] { windowProgressStep(position, maximum); });
}

void QtUserInterface::windowProgressStep(int position, int maximum) {
    if (progress_) {
        if (progress_->maximum() != maximum) {
            progress_->setMaximum(maximum);
        }
        progress_->setValue(maximum > 0 ? std::min(position, maximum) : 0);
    }
    processEvents();
}

void QtUserInterface::progressLabel(const std::string& text) {
    const QString shown = QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    onWindow([&] { windowProgressLabel(shown); });
}

void QtUserInterface::windowProgressLabel(const QString& text) {
    if (!progress_) {
        return;
    }
    // A name longer than the dialog is shortened in its middle, so the line still fits.
    const QFontMetrics metrics(progress_->font());
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        line = metrics.elidedText(line, Qt::ElideMiddle, ProgressMinimumWidth);
    }
    progress_->setLabelText(progress_->windowTitle() + QLatin1Char('\n') + lines.join(QLatin1Char('\n')));
}

void QtUserInterface::progressStop() {
    onWindow([this] {
        if (progress_) {
            progress_->hide();
        }
    });
}

std::optional<MergeChoices> QtUserInterface::mergeChoicesDialog(OptionsPort& options) {
    const frmMerge::Plan plan = mergePlan ? mergePlan() : frmMerge::Plan{};
    return onWindow([&] { return frmMerge::ask(window_.get(), options, plan); });
}

void QtUserInterface::resultListDialog(const ResultList& result) {
    onWindow([&] { frmList::showResults(window_.get(), result); });
}

std::optional<SlipChoices> QtUserInterface::slipChoicesDialog(const std::string& wordDoc) {
    return onWindow([&] { return frmESQR::ask(window_.get(), wordDoc); });
}

std::optional<std::string> QtUserInterface::fileNameTemplateDialog(const FileNameTemplate& owner,
                                                                   const std::string& mask) {
    return onWindow([&] { return frmFileNameTemplate::edit(window_.get(), owner, mask); });
}

} // namespace wordbm
