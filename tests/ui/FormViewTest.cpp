#include "DialogTestHelper.h"
#include "engine/WordBM.h"
#include "engine/word/Application.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Range.h"
#include "engine/word/Selection.h"
#include "settings/MemorySettingsStore.h"
#include "ui/DesktopSession.h"
#include "ui/frmWordBM.h"

#include <QComboBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

// The form view of the main window on the real engine: every story of a form under its label, and
// a click in a header, footer or text box puts the word processor's cursor there, so that a
// bookmark inserted at the cursor lands in that story.
class FormViewTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    struct Session {
        wordbm::DesktopSession desktop{std::make_shared<wordbm::MemorySettingsStore>()};
        wordbm::frmWordBM& window() { return desktop.ui().window(); }
        wordbm::WordBM& engine() { return desktop.engine(); }
        QTextEdit* form() { return window().findChild<QTextEdit*>(QStringLiteral("txtForm")); }
    };

    // Opens the form as a person would; every question is answered No, so nothing is copied back.
    static std::unique_ptr<Session> open(const QString& path) {
        auto session = std::make_unique<Session>();
        session->desktop.ui().answerBox = [](const std::string&, int buttons, const std::string&) {
            return buttons == wordbm::msgbox::YesNo || buttons == wordbm::msgbox::YesNoCancel
                       ? wordbm::msgbox::No
                       : wordbm::msgbox::Ok;
        };
        session->window().resize(900, 600);
        session->window().show();
        session->window().setWordDoc(path);
        return session;
    }

    // Where `text` first stands in the view below the label line `label`; -1 when it does not.
    static int positionOf(QTextEdit* form, const QString& label, const QString& text) {
        const QString view = form->toPlainText();
        const auto heading = view.indexOf(QStringLiteral("── %1 ──").arg(label));
        return heading < 0 ? -1 : static_cast<int>(view.indexOf(text, heading + label.size() + 6));
    }

    // A mouse click on the character at `position`, scrolled into sight first.
    static void clickAt(QTextEdit* form, int position) {
        QTextCursor cursor(form->document());
        cursor.setPosition(position);
        QRect rect = form->cursorRect(cursor);
        form->verticalScrollBar()->setValue(form->verticalScrollBar()->value() + rect.top() - 20);
        rect = form->cursorRect(cursor);
        QTest::mouseClick(form->viewport(), Qt::LeftButton, {}, rect.center() + QPoint(1, 0));
    }

    // Inserts a bookmark for `field` through the window's insert button.
    static void insert(Session& session, const QString& field) {
        auto* fields = session.window().findChild<QComboBox*>(QStringLiteral("cbxFields"));
        fields->clear();
        fields->addItem(field);
        session.window().findChild<QPushButton*>(QStringLiteral("btnInsert"))->click();
    }

    // The bookmark the engine made for `field`; null when there is none.
    static wordbm::word::BookmarkPtr bookmarkFor(wordbm::WordBM& engine, const std::string& field) {
        auto bookmarks = engine.Doc()->Bookmarks();
        for (int i = 1; i <= bookmarks->Count(); ++i) {
            auto bookmark = bookmarks->Item(i);
            if (bookmark->Name().starts_with("kdx6_" + field + "_")) {
                return bookmark;
            }
        }
        return nullptr;
    }

private slots:
    void initTestCase() { QVERIFY(wordbm::dialogtest::useOwnHome(home_)); }

    void sampleFormShowsItsSlipTextBoxes() {
        auto session = open(QStringLiteral(WORDBM_SOURCE_DIR "/examples/Rechnung.docx"));
        QTextEdit* form = session->form();
        // The main text still starts the view, offset for offset.
        QVERIFY(form->toPlainText().startsWith(
            QString::fromStdString(session->engine().Doc()->Content()->Text()).left(20).replace('\r', '\n')));
        const int at = positionOf(form, QStringLiteral("Textfeld Text Box 6"), QStringLiteral("Referenz"));
        QVERIFY(at > 0);
        clickAt(form, at);
        auto selection = session->engine().Word()->Selection();
        QCOMPARE(selection->Range()->StoryType(), 5);
        QCOMPARE(selection->Range()->Text(), std::string());
        QVERIFY(selection->Range()->Start() > 0);

        insert(*session, QStringLiteral("KliName"));
        auto bookmark = bookmarkFor(session->engine(), "KliName");
        QVERIFY(bookmark);
        QCOMPARE(bookmark->StoryType(), 5);
        QCOMPARE(bookmark->Range()->Text(), std::string("[KliName]"));
        // The view follows: the new text stands in the text box, before the word clicked on.
        QCOMPARE(positionOf(form, QStringLiteral("Textfeld Text Box 6"), QStringLiteral("[KliName]Referenz")),
                 at);
        QVERIFY(!QString::fromStdString(session->engine().Doc()->Content()->Text()).contains("[KliName]"));
    }

    void clicksInHeadersFootersAndHeaderTextBoxes() {
        auto session = open(QStringLiteral(WORDBM_CORPUS_DIR "/docx/Fax.docx"));
        QTextEdit* form = session->form();
        auto selection = [&session] { return session->engine().Word()->Selection(); };

        // A label is no text of the form: clicking it leaves the cursor where it was.
        const int body = static_cast<int>(form->toPlainText().indexOf(QStringLiteral("Office/Company")));
        clickAt(form, body);
        QCOMPARE(selection()->Start(), long(body));
        QCOMPARE(selection()->Range()->StoryType(), 1);
        clickAt(form,
                static_cast<int>(form->toPlainText().indexOf(QStringLiteral("── Fusszeile (Abschnitt 1)"))) +
                    4);
        QCOMPARE(selection()->Range()->StoryType(), 1);
        QCOMPARE(selection()->Start(), long(body));

        // The footer's first character, before its page number.
        const int footer = positionOf(form, QStringLiteral("Fusszeile (Abschnitt 1)"), QStringLiteral("2"));
        QVERIFY(footer > 0);
        clickAt(form, footer);
        QCOMPARE(selection()->Range()->StoryType(), 9);
        QCOMPARE(selection()->Start(), 0L);
        insert(*session, QStringLiteral("RgNummer"));
        auto inFooter = bookmarkFor(session->engine(), "RgNummer");
        QVERIFY(inFooter);
        QCOMPARE(inFooter->StoryType(), 9);

        // The address box stands in the first-page header; the bookmark goes before "Address".
        const int box = positionOf(form, QStringLiteral("Textfeld Address (Kopf- und Fusszeilen)"),
                                   QStringLiteral("Address"));
        QVERIFY(box > 0);
        clickAt(form, box);
        QCOMPARE(selection()->Range()->StoryType(), 5);
        insert(*session, QStringLiteral("KliAdr1"));
        auto inBox = bookmarkFor(session->engine(), "KliAdr1");
        QVERIFY(inBox);
        QCOMPARE(inBox->StoryType(), 5);
        QVERIFY(positionOf(form, QStringLiteral("Textfeld Address (Kopf- und Fusszeilen)"),
                           QStringLiteral("[KliAdr1]Address")) > 0);
    }

    void headerTakenOverIsShownOnce() {
        // Section 2 has a header of its own and takes the others over from section 1.
        auto session = open(QStringLiteral(WORDBM_CORPUS_DIR "/docx/sections_multiple.docx"));
        QTextEdit* form = session->form();
        const QString view = form->toPlainText();
        QCOMPARE(view.count(QStringLiteral("── Kopfzeile")), 4);
        QCOMPARE(view.count(QStringLiteral("── Fusszeile")), 3);
        QCOMPARE(view.count(QStringLiteral("Abschnitt 2")), 1);
        const int header = positionOf(form, QStringLiteral("Kopfzeile (Abschnitt 2)"), QStringLiteral("2"));
        QVERIFY(header > 0);
        clickAt(form, header);
        auto selection = session->engine().Word()->Selection();
        QCOMPARE(selection->Range()->StoryType(), 7);
        QCOMPARE(selection->Start(), long(QStringLiteral("Section ").size()));
        insert(*session, QStringLiteral("KliName"));
        QCOMPARE(
            positionOf(form, QStringLiteral("Kopfzeile (Abschnitt 2)"), QStringLiteral("Section [KliName]2")),
            header - static_cast<int>(QStringLiteral("Section ").size()));
        QVERIFY(positionOf(form, QStringLiteral("Kopfzeile (Abschnitt 1)"), QStringLiteral("Section 1 –")) >
                0);
    }
};

QTEST_MAIN(FormViewTest)
#include "FormViewTest.moc"
