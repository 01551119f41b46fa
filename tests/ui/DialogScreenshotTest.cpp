// Writes a picture of every dialog under the screenshot folder, for a person to look at, and checks
// that no caption is cut short.
#include "DialogTestHelper.h"
#include "ui/frmESQR.h"
#include "ui/frmFileNameTemplate.h"
#include "ui/frmFileOpen.h"
#include "ui/frmList.h"
#include "ui/frmMerge.h"
#include "ui/frmTemplateLoad.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace wordbm {

class DialogScreenshotTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        folder_ = dialogtest::screenshotFolder();
        QVERIFY(QDir(folder_).exists());
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

    void shoot(QWidget& dialog, const char* name) {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        verifyNothingClipped(dialog);
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
