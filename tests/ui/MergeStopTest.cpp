#include "DialogTestHelper.h"
#include "engine/WordBM.h"
#include "settings/MemorySettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/frmWordBM.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

// A long run in the window: 1,000 invoice rows, the progress dialog moving while the window keeps
// handling events, and its cancel button stopping the run between two invoices.
class MergeStopTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    static QString sample(const char* name) {
        return QDir(QStringLiteral(WORDBM_SOURCE_DIR "/examples")).filePath(QString::fromLatin1(name));
    }

    // The sample's header and its rows repeated up to `rows` data lines, bytes as they are.
    QString longControlFile(int rows) {
        QFile in(sample("Rechnungslauf.csv"));
        if (!in.open(QIODevice::ReadOnly)) {
            return {};
        }
        QList<QByteArray> lines = in.readAll().split('\n');
        while (!lines.isEmpty() && lines.last().trimmed().isEmpty()) {
            lines.removeLast();
        }
        const QString path = home_.filePath(QStringLiteral("Lauf1000.csv"));
        QFile out(path);
        if (lines.size() < 2 || !out.open(QIODevice::WriteOnly)) {
            return {};
        }
        out.write(lines.front() + '\n');
        for (int row = 0; row < rows; ++row) {
            out.write(lines[1 + row % (lines.size() - 1)] + '\n');
        }
        return path;
    }

private slots:
    void initTestCase() {
        // The working copies and settings go to a home of the test's own.
        QVERIFY(wordbm::dialogtest::useOwnHome(home_));
    }

    void cancelStopsTheTestRun() {
        const QString csv = longControlFile(1000);
        QVERIFY(!csv.isEmpty());
        wordbm::DesktopSession session(std::make_shared<wordbm::MemorySettingsStore>());
        auto& engine = session.engine();
        auto& ui = session.ui();
        ui.answerBox = [](const std::string&, int buttons, const std::string&) {
            return buttons == wordbm::msgbox::YesNo || buttons == wordbm::msgbox::YesNoCancel
                       ? wordbm::msgbox::No
                       : wordbm::msgbox::Ok;
        };
        engine.WordDoc(sample("Rechnung.docx").toStdString());
        engine.CSVDoc(csv.toStdString());
        auto& window = ui.window();

        int progressSeen = 0;
        int lastValue = -1;
        bool valueGrew = false;
        bool listShown = false;
        bool started = false;
        // Two timers: a timer does not fire again while its own handler runs, and the run is
        // started from one handler while the other watches it.
        QTimer starter;
        QObject::connect(&starter, &QTimer::timeout, [&] {
            if (!started && engine.Doc() && !engine.CSVWork().empty()) {
                started = true;
                auto* mask = window.findChild<QLineEdit*>(QStringLiteral("txtTemplate"));
                mask->setText(QStringLiteral("&W&\\&K&-&R&-Rechnung.&E&"));
                emit mask->editingFinished();
                // The test run starts here and lets this timer tick between its invoices.
                window.findChild<QPushButton*>(QStringLiteral("btnTest"))->click();
                window.close();
            }
        });
        QTimer watcher;
        QObject::connect(&watcher, &QTimer::timeout, [&] {
            auto* modal = QApplication::activeModalWidget();
            if (auto* progress = qobject_cast<QProgressDialog*>(modal)) {
                ++progressSeen;
                valueGrew = valueGrew || (lastValue >= 0 && progress->value() > lastValue);
                lastValue = progress->value();
                if (progress->value() >= 20) {
                    progress->findChild<QPushButton*>()->click();
                }
            } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
                listShown = listShown || dialog->objectName() == QStringLiteral("frmList");
                dialog->accept();
            }
        });
        starter.start(10);
        watcher.start(0);
        engine.Execute(false);
        watcher.stop();
        starter.stop();
        QVERIFY(started);
        QVERIFY(progressSeen > 1);
        QVERIFY(valueGrew);
        QVERIFY(listShown);
        const auto& result = engine.MergeResult();
        QVERIFY(result.testOnly);
        QVERIFY2(result.total > 0 && result.total < 1000, qPrintable(QString::number(result.total)));
    }
};

QTEST_MAIN(MergeStopTest)
#include "MergeStopTest.moc"
