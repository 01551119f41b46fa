#include "app/TerminalUserInterface.h"

#include <gtest/gtest.h>
#include <sstream>

namespace wordbm {
namespace {

class Terminal : public ::testing::Test {
protected:
    TerminalUserInterface make(int answer, bool bar = false) {
        TerminalUserInterface::Policy policy;
        policy.answer = answer;
        policy.progressBar = bar;
        return TerminalUserInterface(out, err, policy);
    }
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(Terminal, PrintsBoxesWithTheirLinesAndThePolicysAnswer) {
    auto ui = make(msgbox::Yes);
    EXPECT_EQ(ui.messageBox("Eins\r\nZwei", msgbox::YesNo, "Titel"), msgbox::Yes);
    EXPECT_EQ(ui.messageBox("Info", msgbox::Information, "T"), msgbox::Ok);
    EXPECT_EQ(out.str(), "[Titel] Eins\nZwei\n  -> Ja\n[T] Info\n");
}

TEST_F(Terminal, StopBoxesGoToTheErrorStreamAndAreCounted) {
    auto ui = make(msgbox::Yes);
    ui.messageBox("Fehler", msgbox::Stop, "T");
    EXPECT_EQ(err.str(), "[T] Fehler\n");
    EXPECT_EQ(ui.stopBoxes(), 1);
}

TEST_F(Terminal, CancelAnswersAYesNoQuestionWithNo) {
    auto ui = make(msgbox::Cancel);
    EXPECT_EQ(ui.messageBox("?", msgbox::YesNo, "T"), msgbox::No);
    EXPECT_EQ(ui.messageBox("?", msgbox::YesNoCancel, "T"), msgbox::Cancel);
}

TEST_F(Terminal, ListsResultsWithTheCountsOfTheListDialog) {
    auto ui = make(msgbox::Yes);
    ui.resultListDialog({{"  out/1", "**Pfad nicht gefunden->x/2"}, 2, 1, 1, true, {}});
    EXPECT_EQ(out.str(), "Dateinamen testen\n  out/1\n**Pfad nicht gefunden->x/2\n"
                         "Es wurde geprüft, ob die Ordner vorhanden sind.\n2   Total\n1   Ok\n1   Fehler\n");
}

TEST_F(Terminal, DrawsABarOnlyWhenAskedTo) {
    auto quiet = make(msgbox::Yes);
    quiet.progressStart("Lauf", 4);
    quiet.progressStep(2, 4);
    quiet.progressStop();
    EXPECT_EQ(err.str(), "");

    auto bar = make(msgbox::Yes, true);
    bar.progressStep(2, 4);
    bar.progressStop();
    EXPECT_EQ(err.str(), "\r [###############               ] 2/4\n");
}

} // namespace
} // namespace wordbm
