#include "DialogTestHelper.h"
#include "engine/WordBM.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/WordConstants.h"
#include "settings/MemorySettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/PagePreview.h"
#include "ui/frmWordBM.h"

#include <QFile>
#include <QLabel>
#include <QPdfDocument>
#include <QPdfSelection>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

// The preview of invoice 1 on the real engine and office worker: the sample form filled from the
// first row the merge run would make an invoice of, while the working form stays as it was.
class InvoicePreviewTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    static QString sample(const char* name) {
        return QStringLiteral(WORDBM_SOURCE_DIR "/examples/") + QString::fromLatin1(name);
    }

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // The sample control file with no invoice date in its first row, so that invoice 1 is row 2's.
    // Returns that row's fields.
    QList<QByteArray> controlFileFromRowTwo(const QString& path) {
        QList<QByteArray> lines = bytesOf(sample("Rechnungslauf.csv")).split('\n');
        const QList<QByteArray> header = lines[0].trimmed().split(';');
        QList<QByteArray> first = lines[1].split(';');
        first[header.indexOf("RgDatum")].clear();
        lines[1] = first.join(';');
        QFile out(path);
        if (!out.open(QIODevice::WriteOnly)) {
            return {};
        }
        out.write(lines.join('\n'));
        return lines[2].trimmed().split(';');
    }

    static QImage shown(wordbm::frmWordBM& window) {
        return window.findChild<QLabel*>(QStringLiteral("lblPreview"))->pixmap().toImage();
    }

private slots:
    void initTestCase() { QVERIFY(wordbm::dialogtest::useOwnHome(home_)); }

    void invoiceOneIsTheFormFilledFromTheFirstInvoiceRow() {
        const QString csv = home_.filePath(QStringLiteral("Lauf.csv"));
        const QList<QByteArray> rowTwo = controlFileFromRowTwo(csv);
        const QList<QByteArray> header =
            bytesOf(sample("Rechnungslauf.csv")).split('\n')[0].trimmed().split(';');
        QVERIFY(!rowTwo.isEmpty());
        const QString form = home_.filePath(QStringLiteral("Rechnung.docx"));
        QVERIFY(QFile::copy(sample("Rechnung.docx"), form));

        wordbm::DesktopSession session(std::make_shared<wordbm::MemorySettingsStore>());
        session.ui().answerBox = [](const std::string&, int buttons, const std::string&) {
            return buttons == wordbm::msgbox::YesNo || buttons == wordbm::msgbox::YesNoCancel
                       ? wordbm::msgbox::No
                       : wordbm::msgbox::Ok;
        };
        auto& window = session.ui().window();
        auto& engine = session.engine();
        window.setCSVDoc(csv);
        window.setWordDoc(form);
        QVERIFY(engine.Doc());
        const std::string formText = engine.Doc()->Content()->Text();
        const QByteArray working = bytesOf(QString::fromStdString(engine.WordWork()));

        window.preview().choose(wordbm::PagePreview::Source::Form);
        const QImage formPage = shown(window);
        window.preview().choose(wordbm::PagePreview::Source::Invoice);
        const QImage invoicePage = shown(window);
        QVERIFY(!formPage.isNull());
        QVERIFY(!invoicePage.isNull());
        QVERIFY(formPage != invoicePage);

        // What the preview shows: the PDF of the filled copy holds row 2's values, no placeholders.
        QTemporaryDir out;
        const QString pdf = out.filePath(QStringLiteral("vorschau.pdf"));
        QCOMPARE(engine.InvoicePreview(pdf.toStdString()), std::string());
        QPdfDocument document;
        QCOMPARE(document.load(pdf), QPdfDocument::Error::None);
        const QString text = document.getAllText(0).text();
        for (const char* field : {"KliAdr1", "RgNummer", "KliKonto", "KliTot2"}) {
            const QString value = QString::fromLatin1(rowTwo[header.indexOf(field)]).trimmed();
            QVERIFY2(text.contains(value), qPrintable(QStringLiteral("%1 = %2").arg(field, value)));
        }
        QVERIFY(!text.contains(QStringLiteral("[KliAdr1]")));

        // The working form is as it was, in the engine and on disk; the user's form was never written.
        QCOMPARE(engine.Doc()->Content()->Text(), formText);
        QCOMPARE(bytesOf(QString::fromStdString(engine.WordWork())), working);
        QCOMPARE(bytesOf(form), bytesOf(sample("Rechnung.docx")));

        // Without a control file there is no invoice 1, and the preview says so.
        window.setCSVDoc({});
        QVERIFY(!window.renderPreview());
        QCOMPARE(window.findChild<QLabel*>(QStringLiteral("lblPreview"))->text(),
                 QStringLiteral("Keine Vorschau: Keine Rechnung in der Rechnungs-Steuerdatei"));
    }

    // The verdict beside the page is the merge run's: the code of invoice 1 read back from its PDF.
    void theQRCodeOfInvoiceOneIsReadBackFromItsPdf() {
        const QString form = home_.filePath(QStringLiteral("Rechnung-QR.docx"));
        QVERIFY(QFile::copy(sample("Rechnung.docx"), form));
        wordbm::DesktopSession session(std::make_shared<wordbm::MemorySettingsStore>());
        session.ui().answerBox = [](const std::string&, int, const std::string&) {
            return wordbm::msgbox::No;
        };
        auto& window = session.ui().window();
        auto& engine = session.engine();
        window.setCSVDoc(sample("Rechnungslauf.csv"));
        window.setWordDoc(form);
        QVERIFY(engine.Doc());
        const auto verdict = [&window] {
            return window.findChild<QLabel*>(QStringLiteral("lblPreviewCode"))->text();
        };

        window.preview().choose(wordbm::PagePreview::Source::Invoice);
        QCOMPARE(verdict(), QStringLiteral("QR-Code gelesen: entspricht den Rechnungsdaten"));
        // The form shows placeholders, not a code to read.
        window.preview().choose(wordbm::PagePreview::Source::Form);
        QCOMPARE(verdict(), QString());

        // A PDF without the code, here the unfilled form's, gets the merge run's verdict.
        window.preview().setExport(
            wordbm::PagePreview::Source::Invoice, [&engine](const std::string& pdf, int) {
                engine.Doc()->ExportAsFixedFormat(pdf, wordbm::word::wd::wdExportFormatPDF);
                return std::string();
            });
        window.preview().choose(wordbm::PagePreview::Source::Invoice);
        QCOMPARE(verdict(), QStringLiteral("QR-Code: QR-Code im PDF nicht lesbar"));
        // ... and says so on the page too, in a red band across its top.
        const QImage page = shown(window);
        const QRgb band = page.pixel(page.width() / 2, 4);
        QVERIFY2(qRed(band) > 150 && qGreen(band) < 60, qPrintable(QString::number(band, 16)));
    }

    // Any invoice of the run: the chooser steps through them, each filled from its own row.
    void anyInvoiceIsPreviewedFromItsRow() {
        const QString form = home_.filePath(QStringLiteral("Rechnung-N.docx"));
        QVERIFY(QFile::copy(sample("Rechnung.docx"), form));
        const QList<QByteArray> lines = bytesOf(sample("Rechnungslauf.csv")).split('\n');
        const QList<QByteArray> header = lines[0].trimmed().split(';');
        // Invoice n is the n-th row with an invoice date; its number is what the preview must show.
        QStringList numbers;
        for (qsizetype row = 1; row < lines.size(); ++row) {
            const QList<QByteArray> values = lines[row].split(';');
            if (values.size() == header.size() && !values[header.indexOf("RgDatum")].trimmed().isEmpty()) {
                numbers << QString::fromLatin1(values[header.indexOf("RgNummer")]);
            }
        }
        const auto number = [&](int invoice) { return numbers.value(invoice - 1, QStringLiteral("?")); };
        wordbm::DesktopSession session(std::make_shared<wordbm::MemorySettingsStore>());
        session.ui().answerBox = [](const std::string&, int, const std::string&) {
            return wordbm::msgbox::No;
        };
        auto& window = session.ui().window();
        window.setCSVDoc(sample("Rechnungslauf.csv"));
        window.setWordDoc(form);
        const auto verdict = [&window] {
            return window.findChild<QLabel*>(QStringLiteral("lblPreviewCode"))->text();
        };
        const auto shownText = [&session] {
            QTemporaryDir out;
            const QString pdf = out.filePath(QStringLiteral("n.pdf"));
            QPdfDocument document;
            const int invoice =
                session.ui().window().findChild<QSpinBox*>(QStringLiteral("spnInvoice"))->value();
            if (!session.engine().InvoicePreview(pdf.toStdString(), invoice).empty() ||
                document.load(pdf) != QPdfDocument::Error::None) {
                return QString();
            }
            return document.getAllText(0).text();
        };

        window.preview().chooseInvoice(5);
        QCOMPARE(window.findChild<QLabel*>(QStringLiteral("lblInvoiceCount"))->text(),
                 QStringLiteral("von %1").arg(numbers.size()));
        QVERIFY(shownText().contains(number(5)));
        QCOMPARE(verdict(), QStringLiteral("QR-Code gelesen: entspricht den Rechnungsdaten"));
        const QImage fifth = shown(window);
        window.findChild<QToolButton*>(QStringLiteral("btnInvoiceNext"))->click();
        QVERIFY(shownText().contains(number(6)));
        QCOMPARE(verdict(), QStringLiteral("QR-Code gelesen: entspricht den Rechnungsdaten"));
        QVERIFY(shown(window) != fifth);
        // The chooser stays within the run: no step before the first or past the last.
        window.preview().chooseInvoice(99);
        QVERIFY(shownText().contains(number(static_cast<int>(numbers.size()))));
        QVERIFY(!window.findChild<QToolButton*>(QStringLiteral("btnInvoiceNext"))->isEnabled());
        window.preview().chooseInvoice(1);
        QVERIFY(!window.findChild<QToolButton*>(QStringLiteral("btnInvoicePrevious"))->isEnabled());
        const int past = static_cast<int>(numbers.size()) + 1;
        QCOMPARE(session.engine().InvoicePreview(home_.filePath("x.pdf").toStdString(), past),
                 "Keine Rechnung " + std::to_string(past) + " in der Rechnungs-Steuerdatei");
    }
};

QTEST_MAIN(InvoicePreviewTest)
#include "InvoicePreviewTest.moc"
