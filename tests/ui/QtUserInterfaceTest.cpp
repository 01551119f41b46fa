#include "ui/QtUserInterface.h"

#include "ui/frmWordBM.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QtTest>
#include <vector>

using wordbm::QtUserInterface;
using wordbm::WindowEvent;
namespace msgbox = wordbm::msgbox;

// The Qt side of the engine's port: the boxes each code shows and what their buttons answer,
// the progress dialog's stop, and window events handed over one at a time.
class QtUserInterfaceTest : public QObject {
    Q_OBJECT

    // Presses `button` on the box that opens next, after noting its icon and buttons.
    static void pressOnNextBox(QMessageBox::StandardButton button, QMessageBox::Icon& icon,
                               QMessageBox::StandardButtons& buttons, QString& title) {
        QTimer::singleShot(0, [&icon, &buttons, &title, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) {
                return;
            }
            icon = box->icon();
            buttons = box->standardButtons();
            title = box->windowTitle();
            box->button(button)->click();
        });
    }

private slots:
    void boxesByCode_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("icon");
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("press");
        QTest::addColumn<int>("answer");
        QTest::newRow("16 stop") << msgbox::Stop << int(QMessageBox::Critical) << int(QMessageBox::Ok)
                                 << int(QMessageBox::Ok) << msgbox::Ok;
        QTest::newRow("35 yes") << msgbox::YesNoCancel << int(QMessageBox::Question)
                                << int(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel)
                                << int(QMessageBox::Yes) << msgbox::Yes;
        QTest::newRow("35 cancel") << msgbox::YesNoCancel << int(QMessageBox::Question)
                                   << int(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel)
                                   << int(QMessageBox::Cancel) << msgbox::Cancel;
        QTest::newRow("36 no") << msgbox::YesNo << int(QMessageBox::Question)
                               << int(QMessageBox::Yes | QMessageBox::No) << int(QMessageBox::No)
                               << msgbox::No;
        QTest::newRow("64 info") << msgbox::Information << int(QMessageBox::Information)
                                 << int(QMessageBox::Ok) << int(QMessageBox::Ok) << msgbox::Ok;
    }

    void boxesByCode() {
        QFETCH(int, code);
        QFETCH(int, icon);
        QFETCH(int, buttons);
        QFETCH(int, press);
        QFETCH(int, answer);
        QtUserInterface ui;
        QMessageBox::Icon seenIcon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons seenButtons;
        QString title;
        pressOnNextBox(QMessageBox::StandardButton(press), seenIcon, seenButtons, title);
        QCOMPARE(ui.messageBox("Word schliessen?", code, ""), answer);
        QCOMPARE(int(seenIcon), icon);
        QCOMPARE(int(seenButtons), buttons);
        // An empty title stands for the main window's caption.
        QCOMPARE(title.toStdString(), ui.mainWindowCaption());
    }

    void progressStopsOnCancel() {
        QtUserInterface ui;
        ui.progressStart("Serienbrief", 1000);
        auto* dialog = ui.window().findChild<QProgressDialog*>(QStringLiteral("progress"));
        QVERIFY(dialog);
        QVERIFY(dialog->isVisible());
        ui.progressStep(10, 1000);
        QCOMPARE(dialog->value(), 10);
        QVERIFY(!ui.stopRequested());
        auto* cancel = dialog->findChild<QPushButton*>();
        QVERIFY(cancel);
        QCOMPARE(cancel->text(), QStringLiteral("Abbrechen"));
        cancel->click();
        QVERIFY(ui.stopRequested());
        ui.progressStop();
        QVERIFY(!dialog->isVisible());
        // A new run starts without the old stop.
        ui.progressStart("Test", 0);
        QVERIFY(!ui.stopRequested());
        ui.progressStop();
    }

    void commandsRunOffTheWindowsThread();

    void eventsOneAtATime() {
        QtUserInterface ui;
        std::vector<WindowEvent> handled;
        int depth = 0;
        int deepest = 0;
        ui.attach([&](WindowEvent event, const std::string&) {
            ++depth;
            deepest = std::max(deepest, depth);
            handled.push_back(event);
            if (event == WindowEvent::Analyze) {
                // A click that arrives on the window while the engine is busy waits for its turn.
                QMetaObject::invokeMethod(
                    &ui.window(),
                    [&ui] {
                        ui.window().findChild<QPushButton*>(QStringLiteral("btnReplace"))->setEnabled(true);
                        ui.window().findChild<QPushButton*>(QStringLiteral("btnReplace"))->click();
                    },
                    Qt::BlockingQueuedConnection);
            }
            --depth;
        });
        ui.window().findChild<QPushButton*>(QStringLiteral("btnAnalyze"))->setEnabled(true);
        ui.window().findChild<QPushButton*>(QStringLiteral("btnAnalyze"))->click();
        QCOMPARE(handled, (std::vector<WindowEvent>{WindowEvent::Analyze, WindowEvent::Replace}));
        QCOMPARE(deepest, 1);
    }
};

// Commands run off the window's thread: what the engine asks of a person from there is shown by
// the window's thread and answered back, and the window is busy meanwhile and answers its events.
void QtUserInterfaceTest::commandsRunOffTheWindowsThread() {
    QtUserInterface ui;
    ui.window().show();
    const QThread* windowThread = QThread::currentThread();
    const QThread* commandThread = nullptr;
    bool busyDuringCommand = false;
    int answer = 0;
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(5);
    ui.attach([&](WindowEvent event, const std::string&) {
        if (event != WindowEvent::Analyze) {
            return;
        }
        commandThread = QThread::currentThread();
        QMetaObject::invokeMethod(
            &ui.window(), [&] { busyDuringCommand = ui.window().busy(); }, Qt::BlockingQueuedConnection);
        const int before = ticks;
        // Long work: the window's timer keeps ticking meanwhile.
        while (ticks < before + 5) {
            QThread::msleep(5);
        }
        answer = ui.messageBox("Weiterfahren?", msgbox::YesNo, "Zurückkopieren");
    });
    // The person answers the box where it shows, on the window's thread.
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            box->button(QMessageBox::Yes)->click();
        }
    });
    person.start(10);
    auto* analyze = ui.window().findChild<QPushButton*>(QStringLiteral("btnAnalyze"));
    analyze->setEnabled(true);
    analyze->click();
    QVERIFY(commandThread != nullptr);
    QVERIFY(commandThread != windowThread);
    QVERIFY(busyDuringCommand);
    QVERIFY(!ui.window().busy());
    QCOMPARE(answer, msgbox::Yes);
}

QTEST_MAIN(QtUserInterfaceTest)
#include "QtUserInterfaceTest.moc"
