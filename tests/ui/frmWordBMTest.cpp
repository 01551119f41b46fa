#include "ui/frmWordBM.h"

#include "DialogTestHelper.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"

#include <QComboBox>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <utility>
#include <vector>

using wordbm::frmWordBM;
using wordbm::WindowEvent;

// The main window alone: every event it raises and every box it shows are recorded here.
class frmWordBMTest : public QObject {
    Q_OBJECT

    std::vector<std::pair<WindowEvent, std::string>> events_;
    QStringList boxes_;
    int beeps_ = 0;

    std::unique_ptr<frmWordBM> makeWindow() {
        events_.clear();
        boxes_.clear();
        beeps_ = 0;
        auto window = std::make_unique<frmWordBM>();
        window->setRaise([this](WindowEvent event, const std::string& argument) {
            // The timer's ticks are the engine's business, not the subject here.
            if (event != WindowEvent::Timer) {
                events_.emplace_back(event, argument);
            }
        });
        window->informationBox = [this](const QString& text) { boxes_ << text; };
        window->beep = [this] { ++beeps_; };
        return window;
    }

    template <typename T> static T* find(QWidget& parent, const char* name) {
        return wordbm::dialogtest::required<T>(parent, name);
    }

    // Runs `answer` on the modal dialog of type T as soon as one is shown.
    template <typename T> static void whenShown(std::function<void(T*)> answer) {
        auto* poll = new QTimer;
        QObject::connect(poll, &QTimer::timeout, [poll, answer] {
            if (auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget())) {
                poll->deleteLater();
                poll->stop();
                answer(dialog);
                // A check that failed in the answer leaves the dialog open; it must not hold the test.
                QTimer::singleShot(5000, dialog, [dialog] { dialog->reject(); });
            }
        });
        poll->start(10);
    }

    // Answers the two dialogs of a new form: double-clicks `entry` in the forms list (collecting
    // the entries into `listed`), then saves under `target`.
    static void answerNewFormDialogs(const QString& entry, const QString& target,
                                     QStringList* listed = nullptr) {
        whenShown<QDialog>([=](QDialog* dialog) {
            auto* list = dialog->findChild<QListWidget*>("lstTemplate");
            QVERIFY(list);
            for (int i = 0; listed && i < list->count(); ++i) {
                *listed << list->item(i)->text();
            }
            const auto found = list->findItems(entry, Qt::MatchExactly);
            QCOMPARE(found.size(), 1);
            whenShown<QFileDialog>([target](QFileDialog* save) {
                QCOMPARE(save->windowTitle(), QStringLiteral("Neues Word-Rechnungsformular erstellen"));
                // Typed into the name box and confirmed with Enter, as a person saves.
                auto* name = save->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                QVERIFY(name);
                name->setText(target);
                QTest::keyClick(name, Qt::Key_Return);
            });
            // A double click is two presses on the same entry, as a person makes it.
            const QPoint at = list->visualItemRect(found.front()).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
        });
    }

    static std::string formText(const QString& path) {
        return wordbm::ooxml::DocxApplication::create()
            ->Documents()
            ->Open(path.toStdString())
            ->Content()
            ->Text();
    }

    static bool enabled(frmWordBM& window, const char* name) {
        return find<QWidget>(window, name)->isEnabled();
    }

private slots:
    void enablingFollowsThePaths() {
        auto window = makeWindow();
        window->execute({"&W&\\&K&.&E&", "", "", false, {"Kunde", "-", "Betrag"}});
        const char* wordOnly[] = {"btnInsert",  "btnInsertESQR", "btnReplace", "btnVerify",
                                  "btnAnalyze", "btnReset",      "cbxFields",  "btnWordDocClose"};
        for (const char* name : wordOnly) {
            QVERIFY2(!enabled(*window, name), name);
        }
        QVERIFY(!enabled(*window, "btnMerge"));
        QVERIFY(!enabled(*window, "btnTest"));
        QVERIFY(!enabled(*window, "btnCSVDocClose"));
        QVERIFY(enabled(*window, "btnWordDocOpen"));
        QVERIFY(enabled(*window, "btnCSVDocOpen"));
        QVERIFY(enabled(*window, "btnTemplate"));
        QVERIFY(enabled(*window, "txtTemplate"));

        QVERIFY(!enabled(*window, "btnWordDocShow"));
        QVERIFY(!enabled(*window, "btnWordDocCopy"));
        QVERIFY(!enabled(*window, "btnCSVDocShow"));

        // A control file without a form: only the test run, which says what it still needs.
        window->showCSVDoc("/tmp/a.csv", "/tmp/work/a.csv");
        QVERIFY(enabled(*window, "btnTest"));
        QVERIFY(!enabled(*window, "btnMerge"));
        QVERIFY(enabled(*window, "btnCSVDocShow"));
        QTest::mouseClick(find<QPushButton>(*window, "btnTest"), Qt::LeftButton);
        QCOMPARE(boxes_.size(), 1);
        QVERIFY(boxes_[0].contains(QStringLiteral("zuerst ein Word-Rechnungsformular öffnen")));
        QVERIFY(events_.empty());
        QVERIFY(enabled(*window, "btnCSVDocClose"));
        QVERIFY(!enabled(*window, "btnInsert"));

        window->showWordDoc("/tmp/f.docx", "/tmp/work/f.docx");
        QVERIFY(enabled(*window, "btnWordDocShow"));
        QVERIFY(enabled(*window, "btnWordDocCopy"));
        for (const char* name : wordOnly) {
            QVERIFY2(enabled(*window, name), name);
        }
        QVERIFY(enabled(*window, "btnMerge"));

        window->clearCSVDoc();
        QVERIFY(!enabled(*window, "btnMerge"));
        QVERIFY(!enabled(*window, "btnTest"));
        window->clearWordDoc();
        QVERIFY(!enabled(*window, "btnInsert"));
        // Display updates never raise events.
        QVERIFY(events_.empty());
    }

    void captionsAndTooltips() {
        auto window = makeWindow();
        QCOMPARE(find<QPushButton>(*window, "btnWordDocOpen")->toolTip(),
                 QStringLiteral("Word-Rechnungsformular auswählen"));
        QCOMPARE(find<QPushButton>(*window, "btnWordDocClose")->toolTip(),
                 QStringLiteral("Word-Rechnungsformular schliessen"));
        QCOMPARE(find<QPushButton>(*window, "btnCSVDocOpen")->toolTip(),
                 QStringLiteral("Rechnungs-Steuerdatei auswählen"));
        QCOMPARE(find<QPushButton>(*window, "btnCSVDocClose")->toolTip(),
                 QStringLiteral("Rechnungs-Steuerdatei schliessen"));
        auto* tab = find<QTabWidget>(*window, "tabOptions");
        QCOMPARE(tab->widget(0)->objectName(), QStringLiteral("fraEdit"));
        QCOMPARE(tab->widget(1)->objectName(), QStringLiteral("fraMerge"));
        QVERIFY(window->findChild<QTimer*>(QStringLiteral("Timer1")));
    }

    void executeFillsBoxesAndRaisesOpens() {
        auto window = makeWindow();
        window->execute({"&K&.&E&", "/tmp/r.csv", "/tmp/f.docx", true, {"Kunde"}});
        QCOMPARE(find<QLineEdit>(*window, "txtTemplate")->text(), QStringLiteral("&K&.&E&"));
        QCOMPARE(find<QTabWidget>(*window, "tabOptions")->currentIndex(), 1);
        QCOMPARE(events_.size(), 2u);
        QCOMPARE(events_[0].first, WindowEvent::OpenCSVDoc);
        QCOMPARE(events_[0].second, std::string("/tmp/r.csv"));
        QCOMPARE(events_[1].first, WindowEvent::OpenWordDoc);
        QCOMPARE(events_[1].second, std::string("/tmp/f.docx"));

        auto other = makeWindow();
        other->execute({"", "", "", false, {}});
        QCOMPARE(find<QTabWidget>(*other, "tabOptions")->currentIndex(), 0);
        QVERIFY(events_.empty());
    }

    void commandsRaiseTheirEvents() {
        auto window = makeWindow();
        window->execute({"", "", "", false, {"Kunde", "-", "Betrag"}});
        window->showWordDoc("/tmp/f.docx", "/tmp/w.docx");
        window->showCSVDoc("/tmp/r.csv", "/tmp/w.csv");
        const std::pair<const char*, WindowEvent> buttons[] = {{"btnReplace", WindowEvent::Replace},
                                                               {"btnVerify", WindowEvent::Verify},
                                                               {"btnAnalyze", WindowEvent::Analyze},
                                                               {"btnReset", WindowEvent::Reset},
                                                               {"btnMerge", WindowEvent::Merge},
                                                               {"btnTest", WindowEvent::Test},
                                                               {"btnInsertESQR", WindowEvent::ESQRgo},
                                                               {"btnWordDocCopy", WindowEvent::WordCopy},
                                                               {"btnWordDocClose", WindowEvent::OpenWordDoc}};
        for (const auto& [name, event] : buttons) {
            events_.clear();
            QTest::mouseClick(find<QPushButton>(*window, name), Qt::LeftButton);
            QCOMPARE(events_.size(), 1u);
            QCOMPARE(events_[0].first, event);
            QCOMPARE(events_[0].second, std::string());
        }
        events_.clear();
        QTest::mouseClick(find<QPushButton>(*window, "btnCSVDocClose"), Qt::LeftButton);
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0].first, WindowEvent::OpenCSVDoc);
        QCOMPARE(events_[0].second, std::string());
    }

    void separatorOnlyBeeps() {
        auto window = makeWindow();
        window->execute({"", "", "", false, {"Kunde", "-", "Betrag"}});
        window->showWordDoc("/tmp/f.docx", "/tmp/w.docx");
        auto* fields = find<QComboBox>(*window, "cbxFields");
        QCOMPARE(fields->count(), 3);
        fields->setCurrentIndex(1);
        QCOMPARE(fields->currentText(), QStringLiteral("-"));
        QTest::mouseClick(find<QPushButton>(*window, "btnInsert"), Qt::LeftButton);
        QCOMPARE(beeps_, 1);
        QVERIFY(events_.empty());

        fields->setCurrentIndex(2);
        QTest::mouseClick(find<QPushButton>(*window, "btnInsert"), Qt::LeftButton);
        QCOMPARE(beeps_, 1);
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0].first, WindowEvent::Insert);
        QCOMPARE(events_[0].second, std::string("Betrag"));
    }

    void dropsOnTheWordBox() {
        auto window = makeWindow();
        QVERIFY(!window->dropOnWordDoc({"/a/x.docx", "/a/y.docx"}));
        QCOMPARE(boxes_, QStringList{QStringLiteral("Maximal eine Datei!")});
        QVERIFY(events_.empty());

        boxes_.clear();
        QVERIFY(!window->dropOnWordDoc({"/a/alt.doc"}));
        QCOMPARE(boxes_, QStringList{QStringLiteral("Muss eine '*.docx;*.docm' Datei sein!")});
        QVERIFY(find<QLineEdit>(*window, "txtWordDoc")->text().isEmpty());

        boxes_.clear();
        QVERIFY(window->dropOnWordDoc({"/a/FORM.DOCX"}));
        QVERIFY(boxes_.isEmpty());
        QCOMPARE(find<QLineEdit>(*window, "txtWordDoc")->text(), QStringLiteral("/a/FORM.DOCX"));
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0].first, WindowEvent::OpenWordDoc);
        QCOMPARE(events_[0].second, std::string("/a/FORM.DOCX"));
        QVERIFY(window->dropOnWordDoc({"/a/b.docm"}));
    }

    void dropsOnTheCSVBox() {
        auto window = makeWindow();
        QVERIFY(!window->dropOnCSVDoc({"/a/x.txt"}));
        QCOMPARE(boxes_, QStringList{QStringLiteral("Muss eine '*.csv' Datei sein!")});
        QVERIFY(!window->dropOnCSVDoc({"/a/x.csv", "/a/y.csv"}));
        QCOMPARE(boxes_.last(), QStringLiteral("Maximal eine Datei!"));
        QVERIFY(events_.empty());
        QVERIFY(window->dropOnCSVDoc({"/a/Lauf.CSV"}));
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0].first, WindowEvent::OpenCSVDoc);
        QVERIFY(enabled(*window, "btnTest"));
    }

    void dropsAreCopiesNeverMoves() {
        auto window = makeWindow();
        window->show();
        auto* box = find<QLineEdit>(*window, "txtWordDoc");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/a/Formular.docx"))});
        // Shift held: the file manager proposes to move the file, which would delete it there.
        const QPointF at = box->rect().center();
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::ShiftModifier);
        QCOMPARE(enter.proposedAction(), Qt::MoveAction);
        QApplication::sendEvent(box, &enter);
        QVERIFY(enter.isAccepted());
        QCOMPARE(enter.dropAction(), Qt::CopyAction);
        QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(box, &drop);
        QVERIFY(drop.isAccepted());
        QCOMPARE(drop.dropAction(), Qt::CopyAction);
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0], std::pair(WindowEvent::OpenWordDoc, std::string("/a/Formular.docx")));

        // A source that can only move is refused; nothing is taken.
        events_.clear();
        QDropEvent moveOnly(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &moveOnly);
        QVERIFY(!moveOnly.isAccepted());
        QVERIFY(events_.empty());
    }

    void typedPathRaisesOnceWhenEditingEnds() {
        auto window = makeWindow();
        window->show();
        auto* box = find<QLineEdit>(*window, "txtCSVDoc");
        box->setFocus();
        QTest::keyClicks(box, "/tmp/r.csv");
        QVERIFY(events_.empty());
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0].second, std::string("/tmp/r.csv"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(events_.size(), 1u);
    }

    void folderButtonsShowTheFileSelected() {
        auto window = makeWindow();
        window->showWordDoc("/tmp/Formulare 2024/Rechnung ä.docx", "/tmp/w.docx");
        window->showCSVDoc("/tmp/lauf/r.csv", "/tmp/w.csv");
        QList<QDBusMessage> calls;
        QList<QStringList> started;
        auto& files = window->fileManager();
        files.start = [&started](const QString& program, const QStringList& arguments) {
            started << (QStringList{program} + arguments);
        };
        // A file manager that takes the call: the file is shown selected, nothing else starts.
        files.send = [&calls](const QDBusMessage& call, const std::function<void()>&) { calls << call; };
        QTest::mouseClick(find<QPushButton>(*window, "btnWordDocShow"), Qt::LeftButton);
        QCOMPARE(calls.size(), 1);
        QCOMPARE(calls[0].service(), QStringLiteral("org.freedesktop.FileManager1"));
        QCOMPARE(calls[0].path(), QStringLiteral("/org/freedesktop/FileManager1"));
        QCOMPARE(calls[0].interface(), QStringLiteral("org.freedesktop.FileManager1"));
        QCOMPARE(calls[0].member(), QStringLiteral("ShowItems"));
        QCOMPARE(calls[0].arguments().size(), 2);
        QCOMPARE(calls[0].arguments()[0].toStringList(),
                 QStringList{QStringLiteral("file:///tmp/Formulare%202024/Rechnung%20%C3%A4.docx")});
        QCOMPARE(calls[0].arguments()[1].toString(), QString());
        QVERIFY(started.isEmpty());

        // None answers: the folder opens on its own.
        files.send = [](const QDBusMessage&, const std::function<void()>& failed) { failed(); };
        QTest::mouseClick(find<QPushButton>(*window, "btnCSVDocShow"), Qt::LeftButton);
        QCOMPARE(started, QList<QStringList>{QStringList({"xdg-open", "/tmp/lauf"})});
        QVERIFY(events_.empty());

        // Without a path there is nothing to show.
        window->clearWordDoc();
        QTest::mouseClick(find<QPushButton>(*window, "btnWordDocShow"), Qt::LeftButton);
        QCOMPARE(calls.size(), 1);
        QCOMPARE(started.size(), 1);
    }

    void withoutSessionBusTheFolderOpens() {
        // Before anything in this process reaches for the bus: there is none to be found.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/wordbm-test-bus");
        wordbm::FileManager files;
        QStringList started;
        files.start = [&started](const QString& program, const QStringList& arguments) {
            started = QStringList{program} + arguments;
        };
        files.showItem(QStringLiteral("/srv/rechnungen/lauf.csv"));
        QCOMPARE(started, QStringList({"xdg-open", "/srv/rechnungen"}));
    }

    void newFormsComeFromTheFormsFolder() {
        QTemporaryDir base;
        QVERIFY(QDir(base.path()).mkpath(QStringLiteral("billingforms/wsb")));
        const QString forms = base.filePath(QStringLiteral("billingforms"));
        const QString sample = QStringLiteral(WORDBM_SOURCE_DIR "/examples/Rechnung.docx");
        QVERIFY(QFile::copy(sample, forms + QStringLiteral("/Rechnung.docx")));
        QVERIFY(QFile::copy(QStringLiteral(WORDBM_CORPUS_DIR "/docx/Bookmarks.docx"),
                            forms + QStringLiteral("/Mahnung.docx")));
        const QByteArray debugBefore = qgetenv("TARVELL_DEBUG");
        qputenv("TARVELL_DEBUG", base.path().toLocal8Bit());
        wordbm::dialogtest::MemoryOptions options;
        options.values["DOCOpen"] = base.path().toStdString();
        auto window = makeWindow();
        window->setOptions(&options);

        // "Aus Vorlage…": the sample chosen with a double click, saved as a .docx of its own.
        QStringList listed;
        const QString fromTemplate = base.filePath(QStringLiteral("neu/Kunde A.docx"));
        QVERIFY(QDir(base.path()).mkpath(QStringLiteral("neu")));
        answerNewFormDialogs(QStringLiteral("Rechnung.docx"), fromTemplate, &listed);
        QTest::mouseClick(find<QPushButton>(*window, "btnWordTemplate"), Qt::LeftButton);
        QCOMPARE(listed.takeFirst(), QStringLiteral("(leer - ohne Vorlage)"));
        listed.sort();
        QCOMPARE(listed, QStringList({"Mahnung.docx", "Rechnung.docx"}));
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0], std::pair(WindowEvent::OpenWordDoc, fromTemplate.toStdString()));
        QCOMPARE(formText(fromTemplate), formText(sample));
        QCOMPARE(options.values["DOCOpen"], base.filePath(QStringLiteral("neu")).toStdString());

        // "Neu…" without a template: a blank form under the default extension, then the payment slip.
        events_.clear();
        answerNewFormDialogs(QStringLiteral("(leer - ohne Vorlage)"),
                             base.filePath(QStringLiteral("neu/Leer")));
        QTest::mouseClick(find<QPushButton>(*window, "btnWordDocNew"), Qt::LeftButton);
        const QString blank = base.filePath(QStringLiteral("neu/Leer.docm"));
        QCOMPARE(events_.size(), 2u);
        QCOMPARE(events_[0], std::pair(WindowEvent::OpenWordDoc, blank.toStdString()));
        QCOMPARE(events_[1].first, WindowEvent::ESQRgo);
        QCOMPARE(formText(blank), std::string("\r"));

        // Cancelled in the list: no save dialog, no form, no event.
        events_.clear();
        QTimer::singleShot(
            0, [] { QApplication::activeModalWidget()->findChild<QPushButton*>("btnCancel")->click(); });
        QTest::mouseClick(find<QPushButton>(*window, "btnWordDocNew"), Qt::LeftButton);
        QVERIFY(events_.empty());
        QVERIFY(boxes_.isEmpty());
        qputenv("TARVELL_DEBUG", debugBefore);
    }

    void everyCommandHasItsKey() {
        auto window = makeWindow();
        window->execute({"", "", "", false, {"Kunde", "-", "Betrag"}});
        window->showWordDoc("/tmp/f.docx", "/tmp/w.docx");
        window->showCSVDoc("/tmp/r.csv", "/tmp/w.csv");
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        auto* pages = find<QTabWidget>(*window, "tabOptions");
        // Each page in view: every button and every label that names a field has a mnemonic,
        // none taken twice.
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            QStringList keys;
            const auto take = [&keys](const QString& caption, const QString& name) {
                const auto at = caption.indexOf(QLatin1Char('&'));
                QVERIFY2(at >= 0 && at + 1 < caption.size(),
                         qPrintable(name + QStringLiteral(": ") + caption));
                const QString key = caption.mid(at + 1, 1).toLower();
                QVERIFY2(!keys.contains(key), qPrintable(name + QStringLiteral(" repeats ") + key));
                keys << key;
            };
            for (QAbstractButton* b : window->findChildren<QAbstractButton*>()) {
                if (b->isVisibleTo(window.get()) && !b->text().isEmpty()) {
                    take(b->text(), b->objectName());
                }
            }
            for (QLabel* label : window->findChildren<QLabel*>()) {
                if (label->isVisibleTo(window.get()) && label->buddy()) {
                    take(label->text(), label->objectName());
                }
            }
            for (QTabWidget* tabs : window->findChildren<QTabWidget*>()) {
                for (int i = 0; i < tabs->count(); ++i) {
                    take(tabs->tabText(i), tabs->objectName());
                }
            }
        }

        // The frequent commands by keyboard: the merge and the test from either page.
        pages->setCurrentIndex(0);
        events_.clear();
        QTest::keyClick(window.get(), Qt::Key_M, Qt::ControlModifier);
        QTest::keyClick(window.get(), Qt::Key_T, Qt::ControlModifier);
        QCOMPARE(events_.size(), 2u);
        QCOMPARE(events_[0].first, WindowEvent::Merge);
        QCOMPARE(events_[1].first, WindowEvent::Test);
        QCOMPARE(pages->currentIndex(), 1);
        // Strg+O opens the form's chooser, Strg+Umschalt+O the control file's.
        for (const auto& [modifiers, caption] :
             {std::pair(Qt::KeyboardModifiers(Qt::ControlModifier), QStringLiteral("Word-Rechnungsformular")),
              std::pair(Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier),
                        QStringLiteral("Rechnungs-Steuerdatei"))}) {
            QString shown;
            whenShown<QDialog>([&shown](QDialog* dialog) {
                if (auto* label = dialog->findChild<QLabel*>(QStringLiteral("lblFile"))) {
                    shown = label->text();
                }
                dialog->reject();
            });
            window->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(window.get()));
            QTest::keyClick(window.get(), Qt::Key_O, modifiers);
            QCOMPARE(shown, caption);
        }

        // Tab from the field list goes into the form's text, then on to the insert button.
        pages->setCurrentIndex(0);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        auto* fields = find<QComboBox>(*window, "cbxFields");
        fields->setFocus();
        QTest::keyClick(fields, Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget());
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("txtForm"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget());
        QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("btnInsert"));
    }

    void closingRaisesQuit() {
        auto window = makeWindow();
        window->show();
        window->close();
        QCOMPARE(events_.size(), 1u);
        QCOMPARE(events_[0].first, WindowEvent::Quit);
    }
};

QTEST_MAIN(frmWordBMTest)
#include "frmWordBMTest.moc"
