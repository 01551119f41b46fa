#include "DialogTestHelper.h"
#include "data/CSVfile.h"
#include "engine/WordBM.h"
#include "settings/IniSettingsStore.h"
#include "settings/MemorySettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/GermanQtTexts.h"
#include "ui/frmWordBM.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>
#include <deque>
#include <functional>
#include <memory>

using wordbm::frmWordBM;

// The window as a clerk's everyday tool, on the real engine with real dialogs answered as a
// person would: the files used last are offered again and the choosers start where the person
// was, the settings reach their file (through a link) as they change, the progress dialog names
// the invoice and its customer, the mask editor lists the variables of this system, system
// errors read German, and the questions about "Word" say what they mean here.
class OfficeToolTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    // Answers the message boxes as they come: OK alone is confirmed, a question takes the next
    // queued answer (Escape when none is queued, marked "UNANSWERED"). Keeps each box's text and
    // its explanation.
    struct Person {
        std::deque<QMessageBox::StandardButton> answers;
        QStringList texts;
        QStringList explanations;
        QTimer poll;
        Person() {
            QObject::connect(&poll, &QTimer::timeout, [this] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (!box) {
                    return;
                }
                texts << box->text();
                explanations << box->informativeText();
                if (box->buttons().size() == 1 && box->button(QMessageBox::Ok)) {
                    box->button(QMessageBox::Ok)->click();
                } else if (answers.empty()) {
                    texts.last().prepend(QStringLiteral("UNANSWERED: "));
                    box->reject();
                } else {
                    box->button(answers.front())->click();
                    answers.pop_front();
                }
            });
            poll.start(15);
        }
        // The explanation of the first box whose text holds `part`; null when none came.
        QString explanationOf(const QString& part) const {
            for (qsizetype i = 0; i < texts.size(); ++i) {
                if (texts[i].contains(part)) {
                    return explanations[i];
                }
            }
            return {};
        }
        bool asked(const QString& part) const {
            return std::any_of(texts.begin(), texts.end(),
                               [&part](const QString& t) { return t.contains(part); });
        }
    };

    static QString sample(const char* name) {
        return QStringLiteral(WORDBM_SOURCE_DIR "/examples/") + QString::fromLatin1(name);
    }

    // A copy of `source` under the test's home, in `folder`.
    QString copyInto(const QString& source, const QString& folder, const QString& name) {
        QDir(home_.path()).mkpath(folder);
        const QString path = home_.filePath(folder + QLatin1Char('/') + name);
        QFile::remove(path);
        return QFile::copy(source, path) ? path : QString();
    }

    template <typename T> static T* find(QWidget& parent, const char* name) {
        return wordbm::dialogtest::required<T>(parent, name);
    }

    static void typeForm(frmWordBM& window, const QString& path) {
        auto* box = find<QLineEdit>(window, "txtWordDoc");
        box->setFocus();
        // Pasted, as a path with umlauts is; the key events of a test know ASCII only.
        box->selectAll();
        box->insert(path);
        QTest::keyClick(box, Qt::Key_Return);
    }

    // The entries of a recent-files drop-down as it would open now.
    static QList<QAction*> recentEntries(frmWordBM& window, const char* button) {
        QMenu* menu = find<QToolButton>(window, button)->menu();
        emit menu->aboutToShow();
        QList<QAction*> entries;
        for (QAction* action : menu->actions()) {
            if (action->data().isValid()) {
                entries << action;
            }
        }
        return entries;
    }

    // Runs `act`, and handles each modal dialog that opens meanwhile with `handle` (a box is left
    // to a Person); returns when `act` has returned.
    static void withDialogs(const std::function<void()>& act, const std::function<bool(QWidget*)>& handle) {
        QTimer poll;
        QWidget* handled = nullptr;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog && dialog != handled && !qobject_cast<QMessageBox*>(dialog) &&
                !qobject_cast<QProgressDialog*>(dialog) && handle(dialog)) {
                handled = dialog;
            }
        });
        poll.start(20);
        act();
    }

    static std::unique_ptr<wordbm::DesktopSession> session(std::shared_ptr<wordbm::SettingsStore> store) {
        auto desktop = std::make_unique<wordbm::DesktopSession>(std::move(store));
        desktop->engine().Template("");
        return desktop;
    }

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void initTestCase() {
        QVERIFY(wordbm::dialogtest::useOwnHome(home_));
        QVERIFY(wordbm::GermanQtTexts::install());
    }

    void theFilesUsedLastAreOfferedAgainWhereThePersonWas();
    void theProgressNamesTheInvoiceAndItsCustomer();
    void theMaskEditorListsTheVariablesOfThisSystem();
    void aSystemErrorReadsGerman();
};

// The settings file is a link into the person's own dotfiles; what the window learns reaches the
// linked file while the window is still open, and the next run offers it again.
void OfficeToolTest::theFilesUsedLastAreOfferedAgainWhereThePersonWas() {
    const QString first =
        copyInto(sample("Rechnung.docx"), QStringLiteral("Formulare"), QStringLiteral("Rechnung.docx"));
    const QString second = copyInto(QStringLiteral(WORDBM_CORPUS_DIR "/docx/Bookmarks.docx"),
                                    QStringLiteral("Andere"), QStringLiteral("Mahnung \"Müller\" & Co.docx"));
    const QString control =
        copyInto(sample("Rechnungslauf.csv"), QStringLiteral("Lauf"), QStringLiteral("Rechnungslauf.csv"));
    QVERIFY(!first.isEmpty() && !second.isEmpty() && !control.isEmpty());
    const QString config = home_.filePath(QStringLiteral(".config/Tarvell"));
    const QString dotfile = home_.filePath(QStringLiteral("dotfiles/KDX6.ini"));
    QVERIFY(QDir().mkpath(config) && QDir().mkpath(QFileInfo(dotfile).absolutePath()));
    {
        QFile ini(dotfile);
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write("[Andere Sache]\r\nWert=String>bleibt\r\n");
    }
    const QString link = config + QStringLiteral("/KDX6.ini");
    QFile::remove(link);
    QVERIFY(QFile::link(dotfile, link));

    {
        auto desktop = session(std::make_shared<wordbm::IniSettingsStore>());
        auto& window = desktop->ui().window();
        window.show();
        Person person;
        typeForm(window, first);
        window.setCSVDoc(control);
        QCOMPARE(desktop->engine().WordDoc(), first.toStdString());

        // Written at once, through the link, beside what was there.
        QVERIFY(QFileInfo(link).isSymLink());
        const QByteArray written = bytesOf(dotfile);
        QVERIFY2(written.contains("[Andere Sache]\r\nWert=String>bleibt"), written.constData());
        QVERIFY2(written.contains(QStringLiteral("WordDocRecent=String>\"%1\"").arg(first).toLocal8Bit()),
                 written.constData());
        QVERIFY2(written.contains(
                     QStringLiteral("CSVDocFolder=String>%1").arg(home_.filePath("Lauf")).toLocal8Bit()),
                 written.constData());

        // The second form, newest first from now on. Letting go of the first asks about Word,
        // in words that fit a program without a Word window.
        person.answers = {QMessageBox::Yes};
        typeForm(window, second);
        QCOMPARE(desktop->engine().WordDoc(), second.toStdString());
        QVERIFY2(person.asked(QStringLiteral("Word schliessen?")), qPrintable(person.texts.join('|')));
        QVERIFY(person.explanationOf(QStringLiteral("Word schliessen?"))
                    .contains(QStringLiteral("Arbeitskopie")));
        QVERIFY(!person.asked(QStringLiteral("UNANSWERED")));
        desktop->engine().mfWBM_Quit(true);
    }

    // The next run: the forms in the drop-down, newest first, each with its folder; a form gone
    // meanwhile is shown but cannot be chosen.
    QVERIFY(QFile::rename(second, second + QStringLiteral(".weg")));
    auto desktop = session(std::make_shared<wordbm::IniSettingsStore>());
    auto& window = desktop->ui().window();
    window.show();
    Person person;
    QList<QAction*> forms = recentEntries(window, "btnWordDocRecent");
    QCOMPARE(forms.size(), 2);
    QCOMPARE(forms[0]->text(), QStringLiteral("&1  Mahnung \"Müller\" && Co.docx  –  %1  (nicht gefunden)")
                                   .arg(home_.filePath("Andere")));
    QVERIFY(!forms[0]->isEnabled());
    QCOMPARE(forms[1]->text(), QStringLiteral("&2  Rechnung.docx  –  %1").arg(home_.filePath("Formulare")));
    QVERIFY(forms[1]->isEnabled());
    forms[1]->trigger();
    QCOMPARE(desktop->engine().WordDoc(), first.toStdString());
    QCOMPARE(find<QLineEdit>(window, "txtWordDoc")->text(), first);
    QCOMPARE(recentEntries(window, "btnCSVDocRecent").size(), 1);

    // The control file's chooser starts in the folder the last one came from.
    QString startedIn;
    withDialogs([&] { QTest::mouseClick(find<QPushButton>(window, "btnCSVDocOpen"), Qt::LeftButton); },
                [&](QWidget* dialog) {
                    if (auto* chooser = qobject_cast<QFileDialog*>(dialog)) {
                        startedIn = chooser->directory().absolutePath();
                        QTimer::singleShot(0, chooser, &QDialog::reject);
                        return true;
                    }
                    if (dialog->objectName() == QStringLiteral("frmFileOpen")) {
                        auto* choose = find<QPushButton>(*dialog, "btnChoose");
                        // After the chooser has come and gone, the field dialog is cancelled.
                        QTimer::singleShot(0, choose, [choose, dialog] {
                            choose->click();
                            find<QPushButton>(*dialog, "btnCancel")->click();
                        });
                        return true;
                    }
                    return false;
                });
    QCOMPARE(startedIn, home_.filePath(QStringLiteral("Lauf")));
    QVERIFY(find<QLineEdit>(window, "txtCSVDoc")->text().isEmpty());
    desktop->engine().mfWBM_Quit(true);
}

// "Rechnung n von N" counts the invoices, not the control file's rows (the sample's 25 rows hold
// 24 invoices), and the line below names the customer of the row.
void OfficeToolTest::theProgressNamesTheInvoiceAndItsCustomer() {
    const QString form =
        copyInto(sample("Rechnung.docx"), QStringLiteral("Lauf2"), QStringLiteral("Rechnung.docx"));
    auto desktop = session(std::make_shared<wordbm::MemorySettingsStore>());
    auto& engine = desktop->engine();
    auto& window = desktop->ui().window();
    window.show();
    Person person;
    window.setCSVDoc(sample("Rechnungslauf.csv"));
    window.setWordDoc(form);
    std::int32_t last = 0;
    for (std::int32_t row = 1; row <= engine.CSV().LineCount(); ++row) {
        last = engine.InvoiceRow(row) ? row : last;
    }
    const QString customer = QString::fromStdString(engine.CSV().FieldStr("KliName", last)).trimmed();
    QVERIFY(!customer.isEmpty());

    QStringList seen;
    withDialogs([&] { QTest::mouseClick(find<QPushButton>(window, "btnTest"), Qt::LeftButton); },
                [&](QWidget* dialog) {
                    if (dialog->objectName() != QStringLiteral("frmList")) {
                        return false;
                    }
                    if (auto* progress = window.findChild<QProgressDialog*>(QStringLiteral("progress"))) {
                        seen << progress->windowTitle() << progress->labelText();
                    }
                    QTimer::singleShot(0, dialog, [dialog] { static_cast<QDialog*>(dialog)->accept(); });
                    return true;
                });
    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen[0], QStringLiteral("Dateinamen testen"));
    QCOMPARE(seen[1], QStringLiteral("Dateinamen testen\nRechnung 24 von 24\n") + customer);
    QCOMPARE(engine.MergeResult().total, 24);
    engine.mfWBM_Quit(true);
}

// The list offers every name a mask replaces, with the value it has here, and says where Linux
// takes a Windows name from.
void OfficeToolTest::theMaskEditorListsTheVariablesOfThisSystem() {
    qunsetenv("USERNAME");
    qunsetenv("KDX6");
    qputenv("USER", "anna");
    auto desktop = session(std::make_shared<wordbm::MemorySettingsStore>());
    auto& window = desktop->ui().window();
    window.show();
    QStringList entries;
    QStringList tips;
    withDialogs([&] { QTest::mouseClick(find<QPushButton>(window, "btnTemplate"), Qt::LeftButton); },
                [&](QWidget* dialog) {
                    auto* variables = dialog->findChild<QComboBox*>(QStringLiteral("cboVariables"));
                    if (!variables) {
                        return false;
                    }
                    for (int i = 0; i < variables->count(); ++i) {
                        entries << variables->itemText(i);
                        tips << variables->itemData(i, Qt::ToolTipRole).toString();
                    }
                    QTimer::singleShot(0, dialog, [dialog] { static_cast<QDialog*>(dialog)->reject(); });
                    return true;
                });
    const QString home = QDir::homePath();
    QCOMPARE(entries.size(), 10);
    QCOMPARE(entries.at(2), QStringLiteral("%USERNAME%  -  anna"));
    QCOMPARE(tips.at(2), QStringLiteral("Unter Linux: $USER"));
    QCOMPARE(entries.at(7), QStringLiteral("%KDX6%  -  (leer)"));
    QCOMPARE(tips.at(7), QStringLiteral("Auf diesem System nicht gesetzt: wird leer eingesetzt"));
    QCOMPARE(entries.at(8), QStringLiteral("%USERPROFILE%  -  ") + home);
    QCOMPARE(tips.at(8), QStringLiteral("Unter Linux: $HOME"));
    QCOMPARE(entries.at(9), QStringLiteral("%APPDATA%  -  ") + home + QStringLiteral("/.config"));
}

// A copy-back that the system refuses ends its German message with the system's reason in German.
void OfficeToolTest::aSystemErrorReadsGerman() {
    const QString form =
        copyInto(sample("Rechnung.docx"), QStringLiteral("Kopie"), QStringLiteral("Rechnung.docx"));
    auto desktop = session(std::make_shared<wordbm::MemorySettingsStore>());
    auto& window = desktop->ui().window();
    window.show();
    Person person;
    window.setWordDoc(form);
    // The original's place taken by a folder: no copy can land there, not even as root.
    QVERIFY(QFile::remove(form));
    QVERIFY(QDir().mkpath(form + QStringLiteral("/belegt")));
    person.answers = {QMessageBox::Yes, QMessageBox::Yes};
    QTest::mouseClick(find<QPushButton>(window, "btnWordDocCopy"), Qt::LeftButton);
    QVERIFY2(person.asked(QStringLiteral("Kann Datei nicht kopieren!")), qPrintable(person.texts.join('|')));
    const QString failure = person.texts.filter(QStringLiteral("Kann Datei nicht kopieren!")).front();
    QVERIFY2(failure.endsWith(QStringLiteral("\nDas ist ein Ordner, keine Datei")), qPrintable(failure));
    QVERIFY(QDir(form).removeRecursively());
    desktop->engine().mfWBM_Quit(true);
}

QTEST_MAIN(OfficeToolTest)
#include "OfficeToolTest.moc"
