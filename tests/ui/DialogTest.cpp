// The dialogs' own behaviour: stored option text, dependent boxes, captions and counts, the mask
// editor's inserts, the slip dialog's defaults and the file field's drop checks.
#include "DialogTestHelper.h"
#include "engine/ports/UserInterface.h"
#include "ui/frmESQR.h"
#include "ui/frmFileNameTemplate.h"
#include "ui/frmFileOpen.h"
#include "ui/frmList.h"
#include "ui/frmMerge.h"
#include "ui/frmTemplateLoad.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>
#include <QtTest>
#include <filesystem>

namespace wordbm {

using dialogtest::child;
using dialogtest::MemoryOptions;

namespace {

// Clicks `button` of the modal dialog once its event loop runs, as a person would.
void clickInModal(const char* button) {
    QTimer::singleShot(0, [button] {
        QWidget* modal = QApplication::activeModalWidget();
        QVERIFY(modal != nullptr);
        auto* target = child<QPushButton>(modal, button);
        QVERIFY(target != nullptr);
        target->click();
    });
}

QStringList itemsOf(QListWidget* list) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) {
        items << list->item(i)->text();
    }
    return items;
}

int indexOfData(QComboBox* list, const QString& data) {
    return list->findData(data);
}

} // namespace

class MergeDialogTest : public QObject {
    Q_OBJECT
private slots:
    void firstUseShowsTheStandardAndStoresItsText() {
        MemoryOptions options;
        frmMerge dialog(options);
        QVERIFY(child<QCheckBox>(&dialog, "chkPrint")->isChecked());
        QVERIFY(child<QCheckBox>(&dialog, "chkPDF")->isChecked());
        QVERIFY(child<QCheckBox>(&dialog, "chkPDFA")->isChecked());
        QVERIFY(child<QCheckBox>(&dialog, "chkClose")->isChecked());
        QVERIFY(!child<QCheckBox>(&dialog, "chkDelete")->isChecked());
        QVERIFY(!child<QCheckBox>(&dialog, "chkWordClose")->isChecked());
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Rechnungen erstellen"));
        QCOMPARE(child<QCheckBox>(&dialog, "chkDelete")->text(), QStringLiteral("Rechnungen  löschen"));
        QVERIFY(dialog.cancelled());
        QCOMPARE(options.writes, 0);

        child<QPushButton>(&dialog, "btnDone")->click();
        QVERIFY(!dialog.cancelled());
        QCOMPARE(options.values["Options"], std::string("Print=1;PDF=1;PDFA=1;Close=1;WordClose=0"));
    }

    void storedTextIsReadBackWithTheDependentRules() {
        MemoryOptions options;
        options.values["Options"] = "Print=0;PDF=0;PDFA=1;Close=0;WordClose=0";
        frmMerge dialog(options);
        auto* pdfa = child<QCheckBox>(&dialog, "chkPDFA");
        QVERIFY(!child<QCheckBox>(&dialog, "chkPrint")->isChecked());
        QVERIFY(!child<QCheckBox>(&dialog, "chkPDF")->isChecked());
        QVERIFY(pdfa->isChecked());
        QVERIFY(!pdfa->isEnabled());
        QVERIFY(!child<QCheckBox>(&dialog, "chkClose")->isChecked());

        // A stored WordClose holds Close checked and locked.
        MemoryOptions closing;
        closing.values["Options"] = "Print=1;PDF=1;PDFA=0;Close=0;WordClose=1";
        frmMerge second(closing);
        QVERIFY(child<QCheckBox>(&second, "chkClose")->isChecked());
        QVERIFY(!child<QCheckBox>(&second, "chkClose")->isEnabled());
        // The PDF rule runs after loading, so PDF ticks PDF/A again.
        QVERIFY(child<QCheckBox>(&second, "chkPDFA")->isChecked());
    }

    void dependentBoxesFollowClicks() {
        MemoryOptions options;
        frmMerge dialog(options);
        auto* pdf = child<QCheckBox>(&dialog, "chkPDF");
        auto* pdfa = child<QCheckBox>(&dialog, "chkPDFA");
        auto* close = child<QCheckBox>(&dialog, "chkClose");
        auto* wordClose = child<QCheckBox>(&dialog, "chkWordClose");
        auto* remove = child<QCheckBox>(&dialog, "chkDelete");

        pdfa->click(); // off
        pdf->click();  // off: PDF/A greyed, keeps its value
        QVERIFY(!pdfa->isEnabled());
        QVERIFY(!pdfa->isChecked());
        pdf->click(); // on: PDF/A enabled and ticked
        QVERIFY(pdfa->isEnabled());
        QVERIFY(pdfa->isChecked());

        close->click(); // off
        wordClose->click();
        QVERIFY(close->isChecked());
        QVERIFY(!close->isEnabled());
        wordClose->click();
        QVERIFY(close->isEnabled());
        QVERIFY(close->isChecked());

        // Unticking Delete frees Close even while WordClose is ticked.
        wordClose->click();
        remove->click();
        QVERIFY(!close->isEnabled());
        remove->click();
        QVERIFY(close->isEnabled());
        QVERIFY(wordClose->isChecked());
    }

    void confirmingWordCloseStoresCloseAndDeleteIsNeverStored() {
        MemoryOptions options;
        options.values["Options"] = "Print=0;PDF=1;PDFA=1;Close=0;WordClose=0";
        {
            frmMerge dialog(options);
            child<QCheckBox>(&dialog, "chkWordClose")->click();
            child<QCheckBox>(&dialog, "chkDelete")->click();
            child<QPushButton>(&dialog, "btnDone")->click();
            QCOMPARE(options.values["Options"], std::string("Print=0;PDF=1;PDFA=1;Close=1;WordClose=1"));
            const MergeChoices choices = dialog.choices();
            QVERIFY(choices.Delete);
            QVERIFY(choices.Close);
            QVERIFY(choices.WordClose);
            QVERIFY(!choices.Print);
        }
        frmMerge reopened(options);
        QVERIFY(!child<QCheckBox>(&reopened, "chkDelete")->isChecked());
    }

    void cancellingStoresNothingAndStandardResets() {
        MemoryOptions options;
        options.values["Options"] = "Print=0;PDF=0;PDFA=0;Close=0;WordClose=0";
        frmMerge dialog(options);
        child<QCheckBox>(&dialog, "chkPrint")->click();
        child<QPushButton>(&dialog, "btnStd")->click();
        for (const char* name : {"chkPrint", "chkPDF", "chkPDFA", "chkClose"}) {
            QVERIFY2(child<QCheckBox>(&dialog, name)->isChecked(), name);
        }
        QVERIFY(child<QCheckBox>(&dialog, "chkPDFA")->isEnabled());
        child<QPushButton>(&dialog, "btnCancel")->click();
        QVERIFY(dialog.cancelled());
        QCOMPARE(options.writes, 0);
        QCOMPARE(options.values["Options"], std::string("Print=0;PDF=0;PDFA=0;Close=0;WordClose=0"));
    }

    void askReturnsTheChoicesOrNothing() {
        MemoryOptions options;
        clickInModal("btnDone");
        const auto confirmed = frmMerge::ask(nullptr, options);
        QVERIFY(confirmed.has_value());
        QVERIFY(confirmed->PDF && confirmed->PDFA && confirmed->Print && confirmed->Close);
        QVERIFY(!confirmed->Delete && !confirmed->WordClose);

        clickInModal("btnCancel");
        QVERIFY(!frmMerge::ask(nullptr, options).has_value());
        QCOMPARE(options.writes, 1);
    }
};

class ListDialogTest : public QObject {
    Q_OBJECT
private slots:
    void runShowsItsCountsAndLines() {
        ResultList result;
        result.lines = {"/tmp/a.docx", "Fehler in Zeile 3"};
        result.total = 12;
        result.ok = 11;
        result.errors = 1;
        frmList dialog(result);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Dateien verarbeitet"));
        QCOMPARE(child<QLabel>(&dialog, "lblResult")->text(),
                 QStringLiteral("12   Total\r\n11   Ok\r\n1   Fehler"));
        QCOMPARE(itemsOf(child<QListWidget>(&dialog, "List1")),
                 QStringList({"/tmp/a.docx", "Fehler in Zeile 3"}));
        QVERIFY(child<QPushButton>(&dialog, "btnOk") != nullptr);
        // Only the failed invoice's line is marked.
        result.failedLines = {1};
        frmList marked(result);
        const auto* list = child<QListWidget>(&marked, "List1");
        QCOMPARE(list->item(1)->foreground().color(), QColor(Qt::red));
        QVERIFY(!list->item(1)->icon().isNull());
        QVERIFY(list->item(0)->icon().isNull());
        QVERIFY(list->item(0)->foreground().color() != QColor(Qt::red));
    }

    void testModeAddsTheFolderLine() {
        ResultList result;
        result.lines = {"a.docx"};
        result.total = 1;
        result.ok = 1;
        result.testOnly = true;
        frmList dialog(result);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Dateinamen testen"));
        QCOMPARE(itemsOf(child<QListWidget>(&dialog, "List1")),
                 QStringList({"a.docx", "Es wurde geprüft, ob die Ordner vorhanden sind."}));
        QCOMPARE(frmList::countsText(0, 0, 0), QStringLiteral("0   Total\r\n0   Ok\r\n0   Fehler"));
    }

    void okCloses() {
        clickInModal("btnOk");
        frmList::showResults(nullptr, ResultList{});
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }
};

class TemplateEditorTest : public QObject {
    Q_OBJECT
private slots:
    void pickListsComeFromTheTemplateTables() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate dialog(*fixture.owner, "");
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Maske für Word-Dateinamen bearbeiten"));
        auto* tags = child<QComboBox>(&dialog, "cboTags");
        auto* variables = child<QComboBox>(&dialog, "cboVariables");
        auto* standards = child<QComboBox>(&dialog, "cboStandards");
        QCOMPARE(tags->count(), FileNameTemplate::TagsCount());
        QCOMPARE(tags->itemText(0), QStringLiteral("&W& - Pfad der Seriendruck-Worddatei"));
        // The table's variables first, then the others a mask replaces.
        QCOMPARE(variables->count(), static_cast<int>(FileNameTemplate::EnvironmentEntries().size()));
        QCOMPARE(variables->itemText(0), QString::fromStdString(FileNameTemplate::EnvVarName(1) + "  -  " +
                                                                FileNameTemplate::EnvVarValue(1)));
        QCOMPARE(standards->count(), FileNameTemplate::DefaultsCount());
        QCOMPARE(standards->itemText(0), QString::fromStdString(FileNameTemplate::DefaultsValue(1)));
        QCOMPARE(child<QLabel>(&dialog, "Label3")->text(),
                 QStringLiteral("Umgebunsvariablen (Platzhalter) einfügen"));
        QVERIFY(child<QLabel>(&dialog, "lblTemlate") != nullptr);
    }

    void insertsGoToTheCursor() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate dialog(*fixture.owner, "&W&-Rechnung");
        auto* mask = child<QLineEdit>(&dialog, "txtTemplate");
        auto* tags = child<QComboBox>(&dialog, "cboTags");

        // Nothing chosen yet: the insert button does nothing.
        child<QPushButton>(&dialog, "btnInsert1")->click();
        QCOMPARE(mask->text(), QStringLiteral("&W&-Rechnung"));

        mask->setCursorPosition(static_cast<int>(mask->text().size()));
        tags->setCurrentIndex(indexOfData(tags, "&K&"));
        child<QPushButton>(&dialog, "btnInsert1")->click();
        QCOMPARE(mask->text(), QStringLiteral("&W&-Rechnung&K&"));

        mask->setCursorPosition(3);
        child<QPushButton>(&dialog, "btnBackslash")->click();
        QCOMPARE(mask->text(), QStringLiteral("&W&\\-Rechnung&K&"));
        QCOMPARE(mask->cursorPosition(), 4);

        auto* variables = child<QComboBox>(&dialog, "cboVariables");
        variables->setCurrentIndex(0);
        child<QPushButton>(&dialog, "btnInsert2")->click();
        const QString variable = QString::fromStdString(FileNameTemplate::EnvVarName(1));
        QVERIFY(variable.startsWith('%') && variable.endsWith('%'));
        QCOMPARE(mask->text(), QStringLiteral("&W&\\") + variable + QStringLiteral("-Rechnung&K&"));
    }

    void folderGetsExactlyOneBackslash() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate dialog(*fixture.owner, "");
        auto* mask = child<QLineEdit>(&dialog, "txtTemplate");
        QString answer = QStringLiteral("/home/anna/Rechnungen");
        dialog.chooseFolder = [&answer](QWidget*) { return answer; };
        child<QPushButton>(&dialog, "btnPathSelect")->click();
        QCOMPARE(mask->text(), QStringLiteral("/home/anna/Rechnungen\\"));

        mask->clear();
        answer = QStringLiteral("C:\\Daten\\");
        child<QPushButton>(&dialog, "btnPathSelect")->click();
        QCOMPARE(mask->text(), QStringLiteral("C:\\Daten\\"));

        answer.clear(); // chooser cancelled
        child<QPushButton>(&dialog, "btnPathSelect")->click();
        QCOMPARE(mask->text(), QStringLiteral("C:\\Daten\\"));
    }

    void standardOverwritesOnlyOnYes() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate dialog(*fixture.owner, "eigene");
        auto* mask = child<QLineEdit>(&dialog, "txtTemplate");
        auto* standards = child<QComboBox>(&dialog, "cboStandards");
        const QString standard = QString::fromStdString(FileNameTemplate::DefaultsValue(1));
        int answer = msgbox::No;
        QString asked;
        QString title;
        dialog.askOverwrite = [&](QWidget*, const QString& text, const QString& caption) {
            asked = text;
            title = caption;
            return answer;
        };

        child<QPushButton>(&dialog, "btnInsert3")->click();
        QVERIFY(asked.isEmpty()); // nothing chosen, nothing asked

        standards->setCurrentIndex(0);
        child<QPushButton>(&dialog, "btnInsert3")->click();
        QCOMPARE(asked,
                 QStringLiteral("Maske mit Standard überschreiben?\r\n") + standard + QStringLiteral("\r\n"));
        QCOMPARE(title, QStringLiteral("Mit Standard überschreiben"));
        QCOMPARE(mask->text(), QStringLiteral("eigene"));
        answer = msgbox::Cancel;
        child<QPushButton>(&dialog, "btnInsert3")->click();
        QCOMPARE(mask->text(), QStringLiteral("eigene"));
        answer = msgbox::Yes;
        child<QPushButton>(&dialog, "btnInsert3")->click();
        QCOMPARE(mask->text(), standard);
    }

    void exampleFollowsTheTypedMask() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate without(*fixture.owner, "&K&.&E&");
        QCOMPARE(child<QLabel>(&without, "lblExample")->text(),
                 QStringLiteral("Keine Rechnungs-Steuerdatei geöffnet: ohne sie kann kein Beispielname "
                                "gezeigt werden."));

        fixture.owner->WordPath(WORDBM_SOURCE_DIR "/examples/Rechnung.docx");
        fixture.owner->CSVPath(WORDBM_SOURCE_DIR "/examples/Rechnungslauf.csv");
        frmFileNameTemplate dialog(*fixture.owner, "");
        auto* mask = child<QLineEdit>(&dialog, "txtTemplate");
        auto* example = child<QLabel>(&dialog, "lblExample");
        QTest::keyClicks(mask, QStringLiteral("&C&\\&K&-&R&.&E&"));
        const QString name = QStringLiteral("Zeile 1 der Steuerdatei ergibt: " WORDBM_SOURCE_DIR
                                            "/examples/10400000-024100.docx");
        QCOMPARE(example->text(), name);

        QTest::keyClicks(mask, QStringLiteral("X"));
        QCOMPARE(example->text(), name + QStringLiteral("X\nAchtung: die Endung \".docxX\" ist nicht die des "
                                                        "Formulars (\".docx\")"));
        QTest::keyClick(mask, Qt::Key_Backspace);
        QCOMPARE(example->text(), name);
    }

    void deleteAndConfirmGiveTheEmptyMask() {
        dialogtest::TemplateFixture fixture;
        frmFileNameTemplate dialog(*fixture.owner, "&W&\\&K&");
        QVERIFY(dialog.cancelled());
        child<QPushButton>(&dialog, "btnDelete")->click();
        child<QPushButton>(&dialog, "btnOk")->click();
        QVERIFY(!dialog.cancelled());
        QCOMPARE(dialog.mask(), std::string());

        clickInModal("btnOk");
        QCOMPARE(frmFileNameTemplate::edit(nullptr, *fixture.owner, "x&D&"),
                 std::optional<std::string>("x&D&"));
        clickInModal("btnCancel");
        QCOMPARE(frmFileNameTemplate::edit(nullptr, *fixture.owner, "x&D&"), std::optional<std::string>());
    }
};

class SlipDialogTest : public QObject {
    Q_OBJECT
private slots:
    void opensWithTheDefaults() {
        frmESQR dialog("/home/anna/Rechnung.docx");
        auto* doc = child<QLineEdit>(&dialog, "txtWordDoc");
        QCOMPARE(doc->text(), QStringLiteral("/home/anna/Rechnung.docx"));
        QVERIFY(doc->isReadOnly());
        QVERIFY(dialog.cancelled());
        QCOMPARE(child<QGroupBox>(&dialog, "fraForm")->title(), QStringLiteral("Einzahlungssschein"));
        QCOMPARE(child<QCheckBox>(&dialog, "chkDelete")->toolTip(),
                 QStringLiteral("Löschen des bestehenden QR-Einzahlungsschein-Teils"));
        QVERIFY(child<QRadioButton>(&dialog, "Option1_0")->isChecked());
        QCOMPARE(child<QRadioButton>(&dialog, "Option1_1")->text(), QStringLiteral("Französisch"));

        child<QPushButton>(&dialog, "btnGo")->click();
        QVERIFY(!dialog.cancelled());
        const SlipChoices choices = dialog.choices();
        const SlipChoices expected;
        QVERIFY(choices.deleteExisting && choices.ET && choices.ZT && choices.ST);
        QVERIFY(choices.ETborder && choices.ZTborder && !choices.STborder && !choices.fieldBorders);
        QCOMPARE(choices.language, std::string("Deutsch"));
        QCOMPARE(choices.ETborder, expected.ETborder);
        QCOMPARE(choices.STborder, expected.STborder);
    }

    void partsEnableTheirCutMarks() {
        frmESQR dialog("a.docx");
        for (const auto& [part, mark] : {std::pair{"chkET", "chkETborder"}, std::pair{"chkZT", "chkZTborder"},
                                         std::pair{"chkST", "chkSTborder"}}) {
            auto* partBox = child<QCheckBox>(&dialog, part);
            auto* markBox = child<QCheckBox>(&dialog, mark);
            QVERIFY2(markBox->isEnabled(), mark);
            partBox->click();
            QVERIFY2(!markBox->isEnabled(), mark);
            partBox->click();
            QVERIFY2(markBox->isEnabled(), mark);
        }
    }

    void languageAndCancel() {
        frmESQR dialog("a.docx");
        child<QRadioButton>(&dialog, "Option1_2")->click();
        QCOMPARE(dialog.Language(), std::string("Italienisch"));
        child<QRadioButton>(&dialog, "Option1_3")->click();
        QCOMPARE(dialog.choices().language, std::string("Englisch"));
        child<QPushButton>(&dialog, "btnCancel")->click();
        QVERIFY(dialog.cancelled());

        clickInModal("btnCancel");
        QVERIFY(!frmESQR::ask(nullptr, "a.docx").has_value());
        clickInModal("btnGo");
        QCOMPARE(frmESQR::ask(nullptr, "a.docx")->language, std::string("Deutsch"));
    }
};

class FileOpenTest : public QObject {
    Q_OBJECT
private slots:
    void kindsSetCaptionAndPatterns() {
        frmFileOpen dialog;
        auto* label = child<QLabel>(&dialog, "lblFile");
        QCOMPARE(label->text(), QStringLiteral("Datei auswählen"));
        QCOMPARE(child<QLineEdit>(&dialog, "File")->placeholderText(),
                 QStringLiteral("Dateiname eingben oder Datei hineinziehen"));
        dialog.SetBESR();
        QCOMPARE(label->text(), QStringLiteral("BESR Datei"));
        QCOMPARE(dialog.patterns(), QStringLiteral("*.xml;*.bes;*.v11"));
        dialog.SetWord();
        QCOMPARE(dialog.patterns(), QStringLiteral("*.docx;*.docm"));
        dialog.SetCSV();
        QCOMPARE(label->text(), QStringLiteral("CSV Datei"));
        QCOMPARE(dialog.patterns(), QStringLiteral("*.csv"));
    }

    void dropChecks() {
        const QString word = QStringLiteral("*.docx;*.docm");
        QCOMPARE(frmFileOpen::dropRefusal({"/a.docx", "/b.docx"}, word, "Word Datei"),
                 QStringLiteral("Maximal eine Datei!"));
        QCOMPARE(frmFileOpen::dropRefusal({"/x/RECHNUNG.DOCX"}, word, "Word Datei"), QString());
        QCOMPARE(frmFileOpen::dropRefusal({"/x/a.docm"}, word, "Word Datei"), QString());
        QCOMPARE(frmFileOpen::dropRefusal({"/x/a.txt"}, "*.csv", "CSV Datei"),
                 QStringLiteral("Muss eine 'CSV Datei' Datei sein!"));
        QCOMPARE(frmFileOpen::dropRefusal({"/x/csv"}, "*.csv", "CSV Datei"),
                 QStringLiteral("Muss eine 'CSV Datei' Datei sein!"));
        QCOMPARE(frmFileOpen::dropRefusal({"/x/a.docx.bak"}, word, "Word Datei"),
                 QStringLiteral("Muss eine 'Word Datei' Datei sein!"));
        QCOMPARE(frmFileOpen::dropRefusal({"/x/z.V11"}, "*.xml;*.bes;*.v11", "BESR Datei"), QString());
        QCOMPARE(frmFileOpen::dropRefusal({"/x/any.bin"}, QString(), "Datei auswählen"), QString());
    }

    void droppingOnTheField() {
        frmFileOpen dialog;
        dialog.SetCSV();
        QStringList shown;
        dialog.inform = [&shown](QWidget*, const QString&, const QString& text) { shown << text; };
        auto* field = child<QLineEdit>(&dialog, "File");
        field->setText(QStringLiteral("/alt.csv"));
        // Drops reach only a visible field.
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));

        const auto drop = [field](const QStringList& paths) {
            QMimeData data;
            QList<QUrl> urls;
            for (const QString& path : paths) {
                urls << QUrl::fromLocalFile(path);
            }
            data.setUrls(urls);
            // Qt delivers a drop only to the widget that accepted the drag's entry. Shift held: the
            // file manager proposes a move, and is answered with a copy all the same.
            const Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction;
            QDragEnterEvent enter(QPoint(5, 5), offered, &data, Qt::LeftButton, Qt::ShiftModifier);
            QCoreApplication::sendEvent(field, &enter);
            QVERIFY(enter.isAccepted());
            QCOMPARE(enter.dropAction(), Qt::CopyAction);
            QDropEvent event(QPointF(5, 5), offered, &data, Qt::LeftButton, Qt::ShiftModifier);
            QCoreApplication::sendEvent(field, &event);
            QCOMPARE(event.dropAction(), Qt::CopyAction);
        };
        drop({"/a.csv", "/b.csv"});
        QCOMPARE(shown, QStringList{"Maximal eine Datei!"});
        QCOMPARE(field->text(), QStringLiteral("/alt.csv"));
        drop({"/daten/liste.txt"});
        QCOMPARE(shown.last(), QStringLiteral("Muss eine 'CSV Datei' Datei sein!"));
        QCOMPARE(field->text(), QStringLiteral("/alt.csv"));
        drop({"/daten/Lauf.CSV"});
        QCOMPARE(shown.size(), 2);
        QCOMPARE(field->text(), QStringLiteral("/daten/Lauf.CSV"));
        QCOMPARE(dialog.File(), QStringLiteral("/daten/Lauf.CSV"));
    }

    void chooserTitleFilterAndCancel() {
        frmFileOpen dialog;
        dialog.SetWord();
        QString title;
        QString filter;
        QString answer = QStringLiteral("/f/Formular.docx");
        dialog.openFile = [&](QWidget*, const QString& caption, const QString& kinds) {
            title = caption;
            filter = kinds;
            return answer;
        };
        child<QPushButton>(&dialog, "btnChoose")->click();
        QCOMPARE(title, QStringLiteral("Word Datei auswählen"));
        QCOMPARE(filter, QStringLiteral("Word Datei (*.docx *.docm);;Alle Dateien (*)"));
        QCOMPARE(dialog.File(), answer);
        answer.clear();
        child<QPushButton>(&dialog, "btnChoose")->click();
        QCOMPARE(dialog.File(), QStringLiteral("/f/Formular.docx"));

        clickInModal("btnDone");
        QCOMPARE(frmFileOpen::pick(nullptr, frmFileOpen::Kind::CSV, "/r.csv"),
                 std::optional<std::string>("/r.csv"));
    }
};

class TemplateLoadTest : public QObject {
    Q_OBJECT
private slots:
    void listsTheFormsFolder() {
        QTemporaryDir suite;
        QVERIFY(suite.isValid());
        const std::filesystem::path root = suite.path().toStdString();
        std::filesystem::create_directories(root / "billingforms" / "wsb");
        for (const auto* name :
             {"billingforms/Rechnung.docx", "billingforms/Mahnung 10.DOCM", "billingforms/mahnung 2.docx",
              "billingforms/Mahnung 1.docx", "billingforms/notiz.txt", "billingforms/wsb/Serienbrief.docx"}) {
            QFile file(QString::fromStdString((root / name).string()));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        frmTemplateLoad dialog(root.string());
        auto* list = child<QListWidget>(&dialog, "lstTemplate");
        // As a person sorts: numbers by their value, letter case aside.
        QCOMPARE(itemsOf(list), QStringList({"(leer - ohne Vorlage)", "Mahnung 1.docx", "mahnung 2.docx",
                                             "Mahnung 10.DOCM", "Rechnung.docx"}));
        QCOMPARE(dialog.Template(), std::string()); // the empty entry
        QCOMPARE(child<QLabel>(&dialog, "lblFolder")->text(),
                 QStringLiteral("Formulare in ") + QString::fromStdString((root / "billingforms").string()));

        child<QCheckBox>(&dialog, "chkSerial")->click();
        QCOMPARE(itemsOf(list), QStringList({"(leer - ohne Vorlage)", "Serienbrief.docx"}));
        QVERIFY(child<QLabel>(&dialog, "lblFolder")->text().endsWith(QStringLiteral("/billingforms/wsb")));
        list->setCurrentRow(1);
        child<QPushButton>(&dialog, "btnOk")->click();
        QVERIFY(!dialog.cancelled());
        QCOMPARE(dialog.Template(), (root / "billingforms" / "wsb" / "Serienbrief.docx").string());
    }

    void emptyOrMissingFolderHoldsOnlyTheEmptyEntry() {
        QTemporaryDir suite;
        frmTemplateLoad dialog(suite.path().toStdString());
        QCOMPARE(itemsOf(child<QListWidget>(&dialog, "lstTemplate")), QStringList{"(leer - ohne Vorlage)"});
        clickInModal("btnCancel");
        QVERIFY(!frmTemplateLoad::Choose(nullptr, suite.path().toStdString()).has_value());
        clickInModal("btnOk");
        QCOMPARE(frmTemplateLoad::Choose(nullptr, suite.path().toStdString()),
                 std::optional<std::string>(""));
    }
};

} // namespace wordbm

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    int failed = 0;
    wordbm::MergeDialogTest merge;
    failed += QTest::qExec(&merge, argc, argv);
    wordbm::ListDialogTest list;
    failed += QTest::qExec(&list, argc, argv);
    wordbm::TemplateEditorTest editor;
    failed += QTest::qExec(&editor, argc, argv);
    wordbm::SlipDialogTest slip;
    failed += QTest::qExec(&slip, argc, argv);
    wordbm::FileOpenTest fileOpen;
    failed += QTest::qExec(&fileOpen, argc, argv);
    wordbm::TemplateLoadTest templateLoad;
    failed += QTest::qExec(&templateLoad, argc, argv);
    return failed == 0 ? 0 : 1;
}

#include "DialogTest.moc"
