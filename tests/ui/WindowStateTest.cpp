#include "DialogTestHelper.h"
#include "engine/WordBM.h"
#include "settings/MemorySettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/GermanQtTexts.h"
#include "ui/PagePreview.h"
#include "ui/frmWordBM.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>
#include <deque>
#include <functional>

using wordbm::frmWordBM;

// The real window on the real engine, with real message boxes answered as a person would: an
// edited form is never dropped without a question, a failed save never puts a stale copy over
// the original, the counts, trace and preview follow every command, the office worker's start
// leaves the window answering, and Qt's own texts speak German.
class WindowStateTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    // Answers the message boxes as they come and keeps what each said: a box with OK alone is
    // confirmed, a question takes the next button queued in `answers`; a question with none
    // queued is cancelled by Escape and marked in `texts`.
    struct Person {
        std::deque<QMessageBox::StandardButton> answers;
        QStringList texts;
        QStringList buttonTexts;
        QTimer poll;
        Person() {
            QObject::connect(&poll, &QTimer::timeout, [this] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (!box) {
                    return;
                }
                texts << box->text();
                for (QAbstractButton* button : box->buttons()) {
                    buttonTexts << button->text();
                }
                if (box->buttons().size() == 1 && box->button(QMessageBox::Ok)) {
                    box->button(QMessageBox::Ok)->click();
                    return;
                }
                if (answers.empty()) {
                    texts.last().prepend(QStringLiteral("UNANSWERED: "));
                    box->reject();
                    return;
                }
                const auto answer = answers.front();
                answers.pop_front();
                QAbstractButton* button = box->button(answer);
                if (!button) {
                    texts.last().prepend(QStringLiteral("NO SUCH BUTTON: "));
                    box->reject();
                    return;
                }
                button->click();
            });
            poll.start(15);
        }
        bool asked(const QString& part) const {
            return std::any_of(texts.begin(), texts.end(),
                               [&part](const QString& t) { return t.contains(part); });
        }
    };

    static QString sample(const char* name) {
        return QStringLiteral(WORDBM_SOURCE_DIR "/examples/") + QString::fromLatin1(name);
    }

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString copyOf(const QString& source, const QString& name) {
        const QString path = home_.filePath(name);
        QFile::remove(path);
        return QFile::copy(source, path) ? path : QString();
    }

    template <typename T> static T* find(QWidget& parent, const char* name) {
        return wordbm::dialogtest::required<T>(parent, name);
    }

    // Types a path into the form's box and confirms it, as a person opens a form.
    static void typeForm(frmWordBM& window, const QString& path) {
        auto* box = find<QLineEdit>(window, "txtWordDoc");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, path);
        QTest::keyClick(box, Qt::Key_Return);
    }

    static void insertField(frmWordBM& window, const char* field) {
        auto* fields = find<QComboBox>(window, "cbxFields");
        fields->setCurrentIndex(fields->findText(QString::fromLatin1(field)));
        QTest::mouseClick(find<QPushButton>(window, "btnInsert"), Qt::LeftButton);
    }

    // The bookmark count the window shows; -1 when it shows none.
    static int shownBookmarks(frmWordBM& window) {
        const auto match = QRegularExpression(QStringLiteral("Textmarken: (\\d+)"))
                               .match(find<QLabel>(window, "lblCounts")->text());
        return match.hasMatch() ? match.captured(1).toInt() : -1;
    }

    static std::unique_ptr<wordbm::DesktopSession> session() {
        auto desktop =
            std::make_unique<wordbm::DesktopSession>(std::make_shared<wordbm::MemorySettingsStore>());
        // As the program starts: no mask given, the remembered one (or the first standard mask).
        desktop->engine().Template("");
        return desktop;
    }

private slots:
    void initTestCase() {
        QVERIFY(wordbm::dialogtest::useOwnHome(home_));
        QVERIFY(wordbm::GermanQtTexts::install());
    }

    void anEditedFormIsNeverDroppedWithoutAQuestion() {
        const QString first = copyOf(sample("Rechnung.docx"), QStringLiteral("Rechnung.docx"));
        const QString second = copyOf(QStringLiteral(WORDBM_CORPUS_DIR "/docx/Bookmarks.docx"),
                                      QStringLiteral("Bookmarks.docx"));
        QVERIFY(!first.isEmpty() && !second.isEmpty());
        auto desktop = session();
        auto& engine = desktop->engine();
        auto& window = desktop->ui().window();
        Person person;
        const auto script = [&] {
            typeForm(window, first);
            QCOMPARE(window.windowTitle(), QStringLiteral("Rechnung.docx[*] – WordBM"));
            QVERIFY(!window.isWindowModified());
            insertField(window, "KliName");
            QVERIFY(window.isWindowModified());

            // Another form while the change is only in the working copy: asked, and cancelled.
            person.answers = {QMessageBox::Cancel};
            typeForm(window, second);
            QVERIFY(person.asked(QStringLiteral("Änderungen ins Original zurückkopieren?")));
            QCOMPARE(engine.WordDoc(), first.toStdString());
            QCOMPARE(find<QLineEdit>(window, "txtWordDoc")->text(), first);
            QVERIFY(window.isWindowModified());

            // Asked again and answered No: the change is given up, the original never written.
            // ("Word schliessen?" comes once in a program's life, with the first form let go of.)
            person.answers = {QMessageBox::No, QMessageBox::Yes};
            typeForm(window, second);
            QCOMPARE(engine.WordDoc(), second.toStdString());
            QCOMPARE(bytesOf(first), bytesOf(sample("Rechnung.docx")));
            QCOMPARE(window.windowTitle(), QStringLiteral("Bookmarks.docx[*] – WordBM"));
            QVERIFY(!window.isWindowModified());

            // Closing the window with a change: cancelled, the window stays and keeps the form.
            insertField(window, "KliName");
            person.answers = {QMessageBox::Cancel};
            QVERIFY(!window.close());
            QVERIFY(window.isVisible());
            QVERIFY(engine.Running());
            QVERIFY(engine.Doc());

            // And answered Yes: copied back after the two confirmations, then the program ends.
            person.answers = {QMessageBox::Yes, QMessageBox::Yes, QMessageBox::Yes};
            QVERIFY(window.close());
        };
        bool scripted = false;
        QTimer::singleShot(0, &window, [&] {
            scripted = true;
            script();
            if (engine.Running()) {
                // A check failed on the way: the program is let go of without a copy-back.
                person.answers = {QMessageBox::No, QMessageBox::No, QMessageBox::No};
                window.close();
            }
        });
        window.show();
        engine.Execute(false);
        QVERIFY(scripted);
        QVERIFY(!engine.Running());
        QVERIFY2(!person.asked(QStringLiteral("UNANSWERED")), qPrintable(person.texts.join('|')));
        QVERIFY(person.asked(QStringLiteral("Kopiert")));
        QVERIFY(bytesOf(second) != bytesOf(QStringLiteral(WORDBM_CORPUS_DIR "/docx/Bookmarks.docx")));
        QVERIFY(person.answers.empty());
    }

    void aFailedSaveIsNeverFollowedByACopyBack() {
        const QString form = copyOf(sample("Rechnung.docx"), QStringLiteral("Rechnung.docx"));
        auto desktop = session();
        auto& engine = desktop->engine();
        auto& window = desktop->ui().window();
        window.show();
        Person person;
        window.setWordDoc(form);
        insertField(window, "KliName");
        // The working copy's place taken by a folder: no save can land there, not even as root.
        const QString working = QString::fromStdString(engine.WordWork());
        QVERIFY(QFile::remove(working));
        QVERIFY(QDir().mkpath(working + QStringLiteral("/blocked")));
        insertField(window, "KliAdr1");
        QVERIFY(person.asked(QStringLiteral("Das Word-Rechnungsformular wurde nicht gespeichert!")));
        QVERIFY(window.isWindowModified());

        person.texts.clear();
        person.answers = {QMessageBox::Yes};
        QTest::mouseClick(find<QPushButton>(window, "btnWordDocClose"), Qt::LeftButton);
        QVERIFY2(person.asked(QStringLiteral("Weiterfahren?")), qPrintable(person.texts.join('|')));
        QVERIFY(person.asked(QStringLiteral("nicht gespeichert")));
        QVERIFY(!person.asked(QStringLiteral("zurückkopieren?")));
        QCOMPARE(bytesOf(form), bytesOf(sample("Rechnung.docx")));
        // The session stays, with the form the person still sees.
        QVERIFY(engine.Doc());
        QCOMPARE(find<QLineEdit>(window, "txtWordDoc")->text(), form);
        QVERIFY(QDir(working).removeRecursively());
        engine.mfWBM_Quit(true);
    }

    void viewsFollowEveryCommandWhileTheWindowAnswers() {
        const QString form = copyOf(sample("Rechnung.docx"), QStringLiteral("Rechnung.docx"));
        auto desktop = session();
        auto& engine = desktop->engine();
        auto& window = desktop->ui().window();
        window.resize(1000, 700);
        window.show();
        Person person;
        window.setCSVDoc(sample("Rechnungslauf.csv"));
        window.setWordDoc(form);
        const int opened = shownBookmarks(window);
        QCOMPARE(opened, engine.BookmarksTotal());
        QVERIFY(opened > 0);
        QVERIFY(find<QPlainTextEdit>(window, "txtTrace")
                    ->toPlainText()
                    .contains(QStringLiteral("Rechnung.docx")));

        // The preview comes into view: page 1 drawn by the office worker, its first start in
        // this program, while a timer of the window keeps ticking.
        qint64 longestGap = 0;
        QElapsedTimer clock;
        clock.start();
        qint64 last = clock.elapsed();
        QTimer ticker;
        QObject::connect(&ticker, &QTimer::timeout, [&] {
            longestGap = std::max(longestGap, clock.elapsed() - last);
            last = clock.elapsed();
        });
        ticker.start(10);
        auto* label = find<QLabel>(window, "lblPreview");
        const qint64 started = clock.elapsed();
        find<QTabWidget>(window, "tabView")->setCurrentWidget(&window.preview());
        const qint64 took = clock.elapsed() - started;
        ticker.stop();
        const QImage before = label->pixmap().toImage();
        QVERIFY2(!before.isNull(), qPrintable(label->text()));
        QVERIFY2(longestGap < 400,
                 qPrintable(QStringLiteral("frozen for %1 ms of %2 ms").arg(longestGap).arg(took)));

        // A bookmark inserted: the counts, and the page in view, follow without being asked.
        insertField(window, "KliName");
        QCOMPARE(shownBookmarks(window), opened + 1);
        const QImage after = label->pixmap().toImage();
        QVERIFY(!after.isNull());
        QVERIFY(after != before);

        // The merge dialog tells what the run is about to do; cancelled here.
        QString plan;
        QString printer;
        QTimer dialogs;
        QObject::connect(&dialogs, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog && dialog->objectName() == QStringLiteral("frmMerge")) {
                plan = dialog->findChild<QLabel*>(QStringLiteral("lblPlan"))->text();
                auto* named = dialog->findChild<QLabel*>(QStringLiteral("lblPrinter"));
                printer = named->isVisibleTo(dialog) ? named->text() : QString();
                dialog->findChild<QPushButton*>(QStringLiteral("btnCancel"))->click();
            }
        });
        dialogs.start(20);
        find<QPushButton>(window, "btnMerge")->click();
        dialogs.stop();
        // The sample's 25 rows hold 24 invoices: one row has no invoice date.
        QCOMPARE(plan, QStringLiteral("24 Rechnungen nach ") + home_.path());
        QVERIFY2(printer.startsWith(QStringLiteral("Drucker: ")) ||
                     printer.startsWith(QStringLiteral("Kein Drucker")),
                 qPrintable(printer));

        // The form closed (its copy-back declined): nothing of it is shown any more.
        person.answers = {QMessageBox::Yes, QMessageBox::No};
        QTest::mouseClick(find<QPushButton>(window, "btnWordDocClose"), Qt::LeftButton);
        QVERIFY(!engine.Doc());
        QCOMPARE(shownBookmarks(window), -1);
        QVERIFY(find<QPlainTextEdit>(window, "txtTrace")->toPlainText().isEmpty());
        QVERIFY(label->pixmap().isNull());
        QCOMPARE(label->text(), QStringLiteral("Keine Vorschau: Kein Word-Rechnungsformular geöffnet"));
        QCOMPARE(window.windowTitle(), QStringLiteral("WordBM"));
        // A missing form is refused, and the box keeps no path that nothing stands behind.
        typeForm(window, home_.filePath(QStringLiteral("fehlt.docx")));
        QVERIFY(person.asked(QStringLiteral("Datei nicht gefunden!")));
        QVERIFY(find<QLineEdit>(window, "txtWordDoc")->text().isEmpty());
        QVERIFY(!find<QPushButton>(window, "btnAnalyze")->isEnabled());
    }

    void qtsOwnTextsSpeakGerman() {
        QMessageBox box(QMessageBox::Question, QStringLiteral("Frage"), QStringLiteral("Weiterfahren?"),
                        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        QCOMPARE(box.button(QMessageBox::Yes)->text().remove('&'), QStringLiteral("Ja"));
        QCOMPARE(box.button(QMessageBox::No)->text().remove('&'), QStringLiteral("Nein"));
        QCOMPARE(box.button(QMessageBox::Cancel)->text().remove('&'), QStringLiteral("Abbrechen"));

        QFileDialog dialog(nullptr, QStringLiteral("Word-Rechnungsformular auswählen"), home_.path());
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        QStringList labels;
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            labels << label->text().remove('&');
        }
        QVERIFY2(labels.contains(QStringLiteral("Suchen in:")), qPrintable(labels.join('|')));
        QVERIFY2(labels.contains(QStringLiteral("Dateiname:")), qPrintable(labels.join('|')));
        QStringList buttons;
        for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
            buttons << button->text().remove('&');
        }
        QVERIFY2(buttons.contains(QStringLiteral("Öffnen")), qPrintable(buttons.join('|')));
    }
};

QTEST_MAIN(WindowStateTest)
#include "WindowStateTest.moc"
