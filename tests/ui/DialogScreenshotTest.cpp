// Writes a picture of every dialog under the screenshot folder, for a person to look at, and checks
// that no caption is cut short.
#include "DialogTestHelper.h"
#include "ui/GermanQtTexts.h"
#include "ui/QtUserInterface.h"
#include "ui/RecentFilesButton.h"
#include "ui/frmESQR.h"
#include "ui/frmFileNameTemplate.h"
#include "ui/frmFileOpen.h"
#include "ui/frmList.h"
#include "ui/frmMerge.h"
#include "ui/frmTemplateLoad.h"
#include "ui/frmWordBM.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>
#include <memory>

namespace wordbm {

class DialogScreenshotTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        folder_ = dialogtest::screenshotFolder();
        QVERIFY(QDir(folder_).exists());
        // As the program does: Qt's own buttons and dialogs in German.
        QVERIFY(GermanQtTexts::install());
    }

    void question() {
        QMessageBox box(
            QMessageBox::Question, QStringLiteral("Änderungen nicht zurückkopiert"),
            QStringLiteral("Das Word-Rechnungsformular wurde geändert, die Änderungen sind nur in "
                           "der Arbeitsdatei.\n\nÄnderungen ins Original zurückkopieren?"),
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        QCOMPARE(box.button(QMessageBox::No)->text().remove(QLatin1Char('&')), QStringLiteral("Nein"));
        shoot(box, "question");
    }

    void fileChooser() {
        QTemporaryDir folder;
        QFile form(folder.filePath(QStringLiteral("Rechnung.docx")));
        QVERIFY(form.open(QIODevice::WriteOnly));
        form.close();
        // Qt's own dialog, as on a desktop without a file-dialog service of its own.
        QFileDialog dialog(nullptr, QStringLiteral("Word Datei auswählen"), folder.path(),
                           QStringLiteral("Word Datei (*.docx *.docm);;Alle Dateien (*.*)"));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.resize(720, 420);
        shoot(dialog, "file-dialog", false);
    }

    void progress() {
        QtUserInterface ui;
        ui.progressStart("Rechnungen erstellen", 120);
        ui.progressStep(7, 120);
        ui.progressLabel("Rechnung 7 von 118\r\nBäckerei Müller GmbH");
        auto* dialog = ui.window().findChild<QProgressDialog*>(QStringLiteral("progress"));
        QVERIFY(dialog);
        QCOMPARE(dialog->labelText(),
                 QStringLiteral("Rechnungen erstellen\nRechnung 7 von 118\nBäckerei Müller GmbH"));
        shoot(*dialog, "progress");
        ui.progressStop();
    }

    void recentFiles() {
        QTemporaryDir folder;
        dialogtest::MemoryOptions options;
        frmWordBM window;
        window.setOptions(&options);
        auto* recent = child<QToolButton>(window, "btnWordDocRecent");
        RecentFilesButton* forms = qobject_cast<RecentFilesButton*>(recent);
        QVERIFY(forms);
        for (const char* name : {"Mahnung 2.docx", "Rechnung Treuhand.docx", "Rechnung mit QR.docm"}) {
            QFile form(folder.filePath(QString::fromUtf8(name)));
            QVERIFY(form.open(QIODevice::WriteOnly));
            forms->opened(form.fileName());
        }
        forms->opened(QStringLiteral("/home/anna/Dokumente/Rechnungen 2025/Rechnung alt.docx"));
        window.resize(1000, 680);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        recent->menu()->popup(recent->mapToGlobal(QPoint(0, recent->height())));
        QVERIFY(QTest::qWaitForWindowExposed(recent->menu()));
        const QImage picture = recent->menu()->grab().toImage();
        QVERIFY(picture.save(folder_ + QStringLiteral("/recent-files.png")));
        recent->menu()->hide();
    }

    void mergeDialog() {
        dialogtest::MemoryOptions options;
        frmMerge dialog(options);
        shoot(dialog, "frmMerge");
    }

    void resultList() {
        ResultList result;
        result.lines = {"/home/anna/Dokumente/Rechnungen/10001-20261121-1-Rechnung.docx",
                        "/home/anna/Dokumente/Rechnungen/10002-20261121-2-Rechnung.docx",
                        "Zeile 3: Ordner nicht gefunden"};
        result.total = 3;
        result.ok = 2;
        result.errors = 1;
        result.testOnly = true;
        frmList dialog(result);
        shoot(dialog, "frmList");
    }

    void templateEditor() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate dialog(*fixture.owner, "&W&\\&K&-&D&-&R&-Rechnung.&E&");
        // An open pick list shows what an entry looks like.
        child<QComboBox>(dialog, "cboTags")->setCurrentIndex(0);
        child<QComboBox>(dialog, "cboVariables")->setCurrentIndex(0);
        child<QComboBox>(dialog, "cboStandards")->setCurrentIndex(0);
        shoot(dialog, "frmFileNameTemplate");
    }

    void slipDialog() {
        frmESQR dialog("/home/anna/Dokumente/Rechnungsformular Treuhand Sonnenberg.docx");
        shoot(dialog, "frmESQR");
    }

    void fileField() {
        frmFileOpen dialog;
        dialog.SetWord();
        shoot(dialog, "frmFileOpen");
    }

    void formsList() {
        QTemporaryDir suite;
        QVERIFY(QDir(suite.path()).mkpath(QStringLiteral("billingforms")));
        for (const char* name : {"Rechnung Standard.docx", "Rechnung mit QR.docm", "Mahnung.docx"}) {
            QFile form(suite.path() + QStringLiteral("/billingforms/") + QString::fromUtf8(name));
            QVERIFY(form.open(QIODevice::WriteOnly));
        }
        frmTemplateLoad dialog(suite.path().toStdString());
        shoot(dialog, "frmTemplateLoad");
    }

private:
    template <typename Widget> static Widget* child(QWidget& parent, const char* name) {
        auto* found = dialogtest::child<Widget>(&parent, name);
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }

    // A caption narrower than it needs is cut off on screen.
    static void verifyNothingClipped(QWidget& dialog) {
        for (QWidget* widget : dialog.findChildren<QWidget*>()) {
            if (!widget->isVisible()) {
                continue;
            }
            const bool captioned = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                                   qobject_cast<QLabel*>(widget) != nullptr ||
                                   qobject_cast<QGroupBox*>(widget) != nullptr;
            if (captioned) {
                QVERIFY2(widget->width() >= widget->minimumSizeHint().width(),
                         qPrintable(widget->objectName() + QStringLiteral(" is cut off")));
                QVERIFY2(widget->height() >= widget->minimumSizeHint().height(),
                         qPrintable(widget->objectName() + QStringLiteral(" is cut off")));
            }
        }
    }

    // A dialog of Qt's own is not checked for clipping: its layout is Qt's.
    void shoot(QWidget& dialog, const char* name, bool ours = true) {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        if (ours) {
            verifyNothingClipped(dialog);
        }
        const QImage picture = dialog.grab().toImage();
        QVERIFY(!picture.isNull());
        const QString path = folder_ + QLatin1Char('/') + QString::fromLatin1(name) + QStringLiteral(".png");
        QVERIFY2(picture.save(path), qPrintable(path));
        dialog.close();
    }

    QString folder_;
};

} // namespace wordbm

QTEST_MAIN(wordbm::DialogScreenshotTest)
#include "DialogScreenshotTest.moc"
