#include "DialogTestHelper.h"
#include "engine/WordBM.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"
#include "engine/word/Shapes.h"
#include "settings/MemorySettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/LayoutView.h"
#include "ui/PagePreview.h"
#include "ui/frmWordBM.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>
#include <algorithm>

// The real window on the real engine, the whole job done through its buttons and dialogs: the
// sample form and control file opened, analysed, converted, a bookmark inserted where the person
// clicked, the payment slip, the name test, the copy-back and the merge run with PDF files. What
// the person sees on the way is written as PNG files for review.
class MainWindowScreenshotTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;
    // Questions are answered Yes while set, No otherwise.
    bool answerYes_ = false;

    static QString sample(const char* name) {
        return QDir(QStringLiteral(WORDBM_SOURCE_DIR "/examples")).filePath(QString::fromLatin1(name));
    }

    static void save(QWidget& widget, const QString& name) {
        // Layouts settle through posted events; the picture must show the settled window.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        const QString path = QDir(wordbm::dialogtest::screenshotFolder()).filePath(name);
        QVERIFY2(widget.grab().save(path), qPrintable(path));
    }

    // Both files through the window's open buttons and the file dialog, typed into its field.
    static void openWithTheMouse(wordbm::frmWordBM& window, const QString& form, const QString& csv) {
        QString next;
        QTimer typist;
        QObject::connect(&typist, &QTimer::timeout, [&next] {
            auto* dialog = QApplication::activeModalWidget();
            if (dialog && dialog->objectName() == QStringLiteral("frmFileOpen") && !next.isEmpty()) {
                dialog->findChild<QLineEdit*>(QStringLiteral("File"))->setText(next);
                next.clear();
                dialog->findChild<QPushButton*>(QStringLiteral("btnDone"))->click();
            }
        });
        typist.start(20);
        next = form;
        window.findChild<QPushButton*>(QStringLiteral("btnWordDocOpen"))->click();
        next = csv;
        window.findChild<QPushButton*>(QStringLiteral("btnCSVDocOpen"))->click();
    }

    void lookAt(wordbm::QtUserInterface& ui, wordbm::WordBM& engine, const std::vector<std::string>& boxes) {
        auto& window = ui.window();
        window.resize(1100, 720);
        QVERIFY(window.findChild<QLineEdit*>(QStringLiteral("txtWordDoc"))
                    ->text()
                    .endsWith(QStringLiteral("/Rechnung.docx")));
        QCOMPARE(window.findChild<QLineEdit*>(QStringLiteral("txtCSVDoc"))->text(),
                 sample("Rechnungslauf.csv"));
        QVERIFY(!engine.WordWork().empty());
        QVERIFY(window.findChild<QPushButton*>(QStringLiteral("btnMerge"))->isEnabled());
        QVERIFY(window.findChild<QComboBox*>(QStringLiteral("cbxFields"))->count() > 10);
        auto* form = window.findChild<QTextEdit*>(QStringLiteral("txtForm"));
        QVERIFY(form->toPlainText().contains(QStringLiteral("Rechnung")));
        save(window, QStringLiteral("main-window-edit.png"));

        // A click in the form view is the engine's selection.
        QTextCursor cursor = form->textCursor();
        cursor.setPosition(5);
        form->setTextCursor(cursor);
        QCOMPARE(engine.Word()->Selection()->Start(), 5L);

        window.findChild<QPushButton*>(QStringLiteral("btnAnalyze"))->click();
        save(window, QStringLiteral("main-window-analyzed.png"));

        // Converting: the sample form is made of bookmarks already, so no merge field is left.
        answerYes_ = true;
        window.findChild<QPushButton*>(QStringLiteral("btnReplace"))->click();
        answerYes_ = false;
        QVERIFY(std::find(boxes.begin(), boxes.end(),
                          "0 Seriendruckfelder wurden duch Textfelder ersetzt!") != boxes.end());

        // Insert at the cursor: the bookmark goes where the person clicked in the form view.
        const int at = static_cast<int>(form->toPlainText().indexOf(QStringLiteral("Kundenkonto")));
        QVERIFY(at > 0);
        cursor.setPosition(at);
        form->setTextCursor(cursor);
        QCOMPARE(engine.Word()->Selection()->Start(), long(at));
        auto* fields = window.findChild<QComboBox*>(QStringLiteral("cbxFields"));
        const int index = fields->findText(QStringLiteral("KliName"));
        QVERIFY(index >= 0);
        fields->setCurrentIndex(index);
        const int bookmarks = engine.Doc()->Bookmarks()->Count();
        window.findChild<QPushButton*>(QStringLiteral("btnInsert"))->click();
        QCOMPARE(engine.Doc()->Bookmarks()->Count(), bookmarks + 1);
        QVERIFY(form->toPlainText().mid(at).startsWith(QStringLiteral("[KliName]Kundenkonto")));
        // Nothing else saves the working copy here; the command's change is in its file at once.
        QVERIFY(engine.Doc()->Saved());
        QCOMPARE(savedBookmarks(engine.WordWork()).size(), std::size_t(bookmarks + 1));
        save(window, QStringLiteral("main-window-inserted.png"));

        // Page 1 of the working form as the office worker renders it, the new bookmark included.
        auto* views = window.findChild<QTabWidget*>(QStringLiteral("tabView"));
        views->setCurrentWidget(&window.preview());
        QVERIFY(window.renderPreview());
        QVERIFY(!window.findChild<QLabel*>(QStringLiteral("lblPreview"))->pixmap().isNull());
        save(window, QStringLiteral("main-window-preview.png"));
        window.preview().choose(wordbm::PagePreview::Source::Invoice);
        QVERIFY(!window.findChild<QLabel*>(QStringLiteral("lblPreview"))->pixmap().isNull());
        save(window, QStringLiteral("main-window-preview-invoice.png"));
        window.preview().chooseInvoice(5);
        QVERIFY(!window.findChild<QLabel*>(QStringLiteral("lblPreview"))->pixmap().isNull());
        save(window, QStringLiteral("main-window-preview-invoice-5.png"));
        window.preview().choose(wordbm::PagePreview::Source::Form);
        // The pages as they print, the bookmarks framed, the one just inserted among them.
        views->setCurrentWidget(&window.layout());
        QVERIFY(window.layout().layout());
        save(window, QStringLiteral("main-window-layout.png"));
        views->setCurrentIndex(0);

        // The test run lists the invoice names in the result list, which a timer closes.
        window.findChild<QTabWidget*>(QStringLiteral("tabOptions"))->setCurrentIndex(1);
        save(window, QStringLiteral("main-window-merge.png"));
        QString listed;
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [&listed] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog && !qobject_cast<QProgressDialog*>(dialog)) {
                listed = dialog->objectName();
                save(*dialog, QStringLiteral("dialog-seen-%1.png").arg(listed));
                if (listed == QStringLiteral("frmMerge")) {
                    // PDF files, each invoice closed; never the printer.
                    dialog->findChild<QCheckBox*>(QStringLiteral("chkPrint"))->setChecked(false);
                    dialog->findChild<QCheckBox*>(QStringLiteral("chkPDF"))->setChecked(true);
                    dialog->findChild<QCheckBox*>(QStringLiteral("chkClose"))->setChecked(true);
                    dialog->findChild<QPushButton*>(QStringLiteral("btnDone"))->click();
                } else if (auto* go = dialog->findChild<QPushButton*>(QStringLiteral("btnGo"))) {
                    go->click();
                } else {
                    dialog->accept();
                }
            }
        });
        closer.start(20);
        // A mask typed into the window is the engine's once editing ends.
        auto* mask = window.findChild<QLineEdit*>(QStringLiteral("txtTemplate"));
        mask->setText(QStringLiteral("&W&\\&K&-&D&-&R&-Rechnung.&E&"));
        emit mask->editingFinished();
        QCOMPARE(engine.Template(), std::string("&W&\\&K&-&D&-&R&-Rechnung.&E&"));
        window.findChild<QPushButton*>(QStringLiteral("btnTest"))->click();
        QCOMPARE(listed, QStringLiteral("frmList"));
        QVERIFY(engine.MergeResult().testOnly);
        QVERIFY(engine.MergeResult().total > 0);
        QCOMPARE(engine.MergeResult().errors, 0);

        // The payment slip with the dialog's defaults: the old canvases go, the three new ones
        // (separation text, receipt, payment part) take their place.
        listed.clear();
        window.findChild<QPushButton*>(QStringLiteral("btnInsertESQR"))->click();
        QCOMPARE(listed, QStringLiteral("frmESQR"));
        QCOMPARE(engine.Doc()->Shapes()->Count(), 3);

        // Copying the working form back over the original after the two confirmations.
        QFile original(window.findChild<QLineEdit*>(QStringLiteral("txtWordDoc"))->text());
        QVERIFY(original.open(QIODevice::ReadOnly));
        original.close();
        answerYes_ = true;
        window.findChild<QPushButton*>(QStringLiteral("btnWordDocCopy"))->click();
        answerYes_ = false;
        // What is copied is the working file as last saved.
        QFile working(QString::fromStdString(engine.WordWork()));
        QVERIFY(working.open(QIODevice::ReadOnly));
        QVERIFY(original.open(QIODevice::ReadOnly));
        QCOMPARE(original.readAll(), working.readAll());
        QVERIFY(std::any_of(boxes.begin(), boxes.end(), [](const std::string& text) {
            return text.find("zurückkopieren?") != std::string::npos;
        }));

        // The merge run with PDF files: one invoice and one PDF per row, then the result list.
        QStringList seen;
        QObject::connect(&closer, &QTimer::timeout, [&seen, &listed] {
            if (!listed.isEmpty() && (seen.isEmpty() || seen.last() != listed)) {
                seen << listed;
            }
        });
        window.findChild<QPushButton*>(QStringLiteral("btnMerge"))->click();
        closer.stop();
        QVERIFY2(seen.contains(QStringLiteral("frmMerge")), qPrintable(seen.join(',')));
        QVERIFY(!engine.MergeResult().testOnly);
        QVERIFY2(engine.MergeResult().errors == 0,
                 qPrintable(QString::fromStdString(engine.MergeResult().lines.front() + "\n" +
                                                   engine.MergeResult().lines.at(1))));
        const QFileInfo formInfo(original.fileName());
        const QStringList pdfs = formInfo.dir().entryList({QStringLiteral("*.pdf")}, QDir::Files);
        QCOMPARE(pdfs.size(), qsizetype(engine.MergeResult().total));
        // Every invoice, not only the first, carries the bookmark inserted in the window.
        const QStringList invoices =
            formInfo.dir().entryList({QStringLiteral("*-Rechnung.docx")}, QDir::Files);
        QCOMPARE(invoices.size(), pdfs.size());
        for (const QString& invoice : invoices) {
            const auto names = savedBookmarks(formInfo.dir().filePath(invoice).toStdString());
            QVERIFY2(std::any_of(names.begin(), names.end(),
                                 [](const std::string& name) { return name.rfind("kdx6_KliName_", 0) == 0; }),
                     qPrintable(invoice));
        }
    }

    static std::vector<std::string> savedBookmarks(const std::string& path) {
        const auto document = wordbm::ooxml::DocxApplication::create()->Documents()->Open(path);
        std::vector<std::string> names;
        for (int i = 1; i <= document->Bookmarks()->Count(); ++i) {
            names.push_back(document->Bookmarks()->Item(i)->Name());
        }
        return names;
    }

private slots:
    void initTestCase() {
        // The working copies and settings go to a home of the test's own.
        QVERIFY(wordbm::dialogtest::useOwnHome(home_));
    }

    void sampleRunInTheWindow() {
        wordbm::DesktopSession session(std::make_shared<wordbm::MemorySettingsStore>());
        auto& ui = session.ui();
        auto& engine = session.engine();
        std::vector<std::string> boxes;
        // Every question is answered No, so closing copies nothing back over the samples.
        ui.answerBox = [&boxes, this](const std::string& text, int buttons, const std::string&) {
            if (answerYes_ && (buttons == wordbm::msgbox::YesNo || buttons == wordbm::msgbox::YesNoCancel)) {
                boxes.push_back(text);
                return wordbm::msgbox::Yes;
            }
            boxes.push_back(text);
            qInfo("box: %s", text.c_str());
            return buttons == wordbm::msgbox::YesNo || buttons == wordbm::msgbox::YesNoCancel
                       ? wordbm::msgbox::No
                       : wordbm::msgbox::Ok;
        };
        // A copy of the form, so that copying the working form back leaves the sample alone.
        const QString form = home_.filePath(QStringLiteral("Rechnung.docx"));
        QFile::remove(form);
        QVERIFY(QFile::copy(sample("Rechnung.docx"), form));

        auto& window = ui.window();
        bool checked = false;
        // Looked at once the engine's loop runs with both files open (opening the control file
        // lets events run, so a first tick may come too early); closing the window quits it, also
        // when a check failed.
        QTimer poll;
        int ticks = 0;
        QObject::connect(&poll, &QTimer::timeout, &window, [&] {
            if (checked || (!window.isVisible() && ++ticks < 1200)) {
                return;
            }
            checked = true;
            poll.stop();
            openWithTheMouse(window, form, sample("Rechnungslauf.csv"));
            lookAt(ui, engine, boxes);
            window.close();
        });
        poll.start(50);
        engine.Execute(false);
        QVERIFY(checked);
        QVERIFY(!engine.Running());
    }
};

QTEST_MAIN(MainWindowScreenshotTest)
#include "MainWindowScreenshotTest.moc"
