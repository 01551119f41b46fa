#include "kit/ScriptedUserInterface.h"

#include <gtest/gtest.h>

namespace wordbm {
namespace {

TEST(ScriptedUserInterface, OkBoxesLeaveTheScriptForTheQuestions) {
    ScriptedUserInterface ui;
    ui.answers = {msgbox::No};
    EXPECT_EQ(ui.messageBox("a", msgbox::Information, "t"), msgbox::Ok);
    EXPECT_EQ(ui.messageBox("b", msgbox::Stop, "t"), msgbox::Ok);
    EXPECT_EQ(ui.messageBox("c", msgbox::YesNoCancel, "t"), msgbox::No);
    EXPECT_EQ(ui.unanswered, 0);
}

TEST(ScriptedUserInterface, AnUnscriptedQuestionIsCountedAndAnsweredCautiously) {
    ScriptedUserInterface ui;
    EXPECT_EQ(ui.messageBox("a", msgbox::YesNo, "t"), msgbox::No);
    EXPECT_EQ(ui.messageBox("b", msgbox::YesNoCancel, "t"), msgbox::Cancel);
    EXPECT_EQ(ui.unanswered, 2);
}

TEST(ScriptedUserInterface, DeliversOneEventAtATimeAndQuitsWhenTheScriptEnds) {
    ScriptedUserInterface ui;
    std::vector<WindowEvent> seen;
    ui.attach([&](WindowEvent event, const std::string&) {
        seen.push_back(event);
        ui.processEvents(); // a command letting events run must not start the next one
    });
    ui.raise(WindowEvent::Analyze);
    ui.raise(WindowEvent::Verify);

    ui.waitEvents();
    ui.waitEvents();
    ui.waitEvents();

    EXPECT_EQ(seen, (std::vector<WindowEvent>{WindowEvent::Analyze, WindowEvent::Verify, WindowEvent::Quit}));
}

TEST(ScriptedUserInterface, TheWindowOpensTheGivenPathsControlFileFirst) {
    ScriptedUserInterface ui;
    std::vector<std::string> opened;
    ui.attach([&](WindowEvent, const std::string& path) { opened.push_back(path); });
    ui.mainWindowExecute({"mask", "lauf.csv", "form.docx", false, {}});
    ui.mainWindowExecute({"mask", "", "", false, {}});
    EXPECT_EQ(opened, (std::vector<std::string>{"lauf.csv", "form.docx"}));
}

} // namespace
} // namespace wordbm
