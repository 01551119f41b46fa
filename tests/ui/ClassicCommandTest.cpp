#include "app/ClassicCommand.h"

#include "app/Version.h"

#include <QtTest>
#include <vector>

using wordbm::ClassicCommand;

// The classic command line the window run reads: which lines give the help box, and which paths
// and flag reach the engine.
class ClassicCommandTest : public QObject {
    Q_OBJECT

    static ClassicCommand read(std::vector<const char*> arguments) {
        arguments.insert(arguments.begin(), "wordbm");
        return ClassicCommand::read(static_cast<int>(arguments.size()), arguments.data());
    }

private slots:
    void noArgumentsOpensTheFirstPage() {
        const auto command = read({});
        QVERIFY(!command.help);
        QVERIFY(!command.mergePage);
        QVERIFY(command.WordDoc.empty());
        QVERIFY(command.CSVDoc.empty());
        QVERIFY(command.Template.empty());
    }

    void mergePageAlone() {
        const auto command = read({"/m"});
        QVERIFY(!command.help);
        QVERIFY(command.mergePage);
        QVERIFY(read({"-m"}).mergePage);
    }

    void helpWins() {
        QVERIFY(read({"/?"}).help);
        QVERIFY(read({"-h"}).help);
        QVERIFY(read({"--help"}).help);
        QVERIFY(read({"/w", "/tmp/f.docx", "/m", "/?"}).help);
    }

    void faultyLinesGiveTheHelpBox() {
        QVERIFY(read({"/x"}).help);
        QVERIFY(read({"-x"}).help);
        QVERIFY(read({"/w", "/tmp/f.docx", "/q", "1"}).help);
        QVERIFY(read({"loose-argument"}).help);
    }

    void pathsInAnyOrder() {
        const auto command = read({"/c", "/tmp/a-b.csv", "/m", "/w", "/home/u/x.docx", "/t", "&K&.&E&"});
        QVERIFY(!command.help);
        QCOMPARE(command.WordDoc, std::string("/home/u/x.docx"));
        QCOMPARE(command.CSVDoc, std::string("/tmp/a-b.csv"));
        QCOMPARE(command.Template, std::string("&K&.&E&"));
        QVERIFY(command.mergePage);
    }

    void quotedPathsArriveWithoutQuotes() {
        const auto blanks = read({"-w", "/home/u/my form.docx", "-c", "/home/u/Lauf 2024.csv"});
        QVERIFY(!blanks.help);
        QCOMPARE(blanks.WordDoc, std::string("/home/u/my form.docx"));
        QCOMPARE(blanks.CSVDoc, std::string("/home/u/Lauf 2024.csv"));
        // Quotes that reach argv themselves, as from a launcher that passes the line on unchanged.
        const auto quoted = read({"/w", "\"/home/u/form.docx\"", "/t", "\"&K&.&E&\""});
        QVERIFY(!quoted.help);
        QCOMPARE(quoted.WordDoc, std::string("/home/u/form.docx"));
        QCOMPARE(quoted.Template, std::string("&K&.&E&"));
        // A quoted path with a blank, whole or split at the blank by a launcher.
        for (const auto& line : {std::vector<const char*>{"/w", "\"/home/u/my form.docx\""},
                                 std::vector<const char*>{"/w", "\"/home/u/my", "form.docx\""}}) {
            const auto blank = read(line);
            QVERIFY(!blank.help);
            QCOMPARE(blank.WordDoc, std::string("/home/u/my form.docx"));
        }
    }

    void helpTextLines() {
        const std::string text = ClassicCommand::helpText("wordbm");
        char version[64];
        std::snprintf(version, sizeof version, "Version (%02d.%02d.%03d - %s)", wordbm::version::Major,
                      wordbm::version::Minor, wordbm::version::Revision, wordbm::version::ReleaseDate);
        const std::string expected = std::string(wordbm::version::Title) + "\r\nCommand Line Interface\r\n" +
                                     version +
                                     "\r\n\r\nSyntax: wordbm  [/w <word-file>] [/c <csv-file>] "
                                     "[/t <template>] [/m] [/?]";
        QCOMPARE(text, expected);
        QCOMPARE(ClassicCommand::programName("/usr/local/bin/wordbm"), std::string("wordbm"));
        QCOMPARE(ClassicCommand::programName("C:\\Programme\\WordBM.exe"), std::string("WordBM"));
    }
};

QTEST_GUILESS_MAIN(ClassicCommandTest)
#include "ClassicCommandTest.moc"
