#include "app/CmdParser.h"

#include "app/ClassicArgs.h"
#include "support/Errors.h"

#include <gtest/gtest.h>

namespace wordbm {
namespace {

CmdParser classicParser() {
    CmdParser parser;
    for (const char* name : {"w", "c", "t", "m", "?"}) {
        parser.SwAdd(name);
    }
    return parser;
}

TEST(CmdParser, SplitsSwitchesAndTheirValues) {
    CmdParser parser = classicParser();
    parser.Cmd("  /w \"C:\\a b.docx\"   /c x.csv /m ");
    EXPECT_EQ(parser.SwCount(), 3);
    EXPECT_EQ(parser.SwVal("w"), Variant("\"C:\\a b.docx\"")); // quotes are the entry's business
    EXPECT_EQ(parser.SwVal(" c "), Variant("x.csv"));
    EXPECT_EQ(parser.SwVal("m"), Variant(""));
    EXPECT_EQ(parser.SwIsHere("m"), 3);
    EXPECT_TRUE(parser.SwVal("t").isNull());
    EXPECT_EQ(parser.Status(""), "");

    parser.Cmd("/w=C:\\x.docx /t a/b rest");
    EXPECT_EQ(parser.SwVal("w"), Variant("C:\\x.docx"));
    EXPECT_EQ(parser.SwVal("t"), Variant("a"));    // cut at the switch character
    EXPECT_EQ(parser.SwVal("b"), Variant("rest")); // the cut-off part starts a switch of its own
    parser.Cmd("/w/c / //m");
    EXPECT_EQ(parser.SwCount(), 3);
    EXPECT_EQ(parser.SwVal("w"), Variant(""));
    EXPECT_EQ(parser.SwName(3), Variant("m"));

    parser.Cmd("    ");
    EXPECT_EQ(parser.SwCount() + parser.ArgCount() + parser.Status("").size(), 0u);
}

TEST(CmdParser, ReportsGrammarProblemsInStatusAndParsing) {
    CmdParser parser = classicParser();
    parser.Cmd("/W x");
    EXPECT_TRUE(parser.SwBad());
    EXPECT_EQ(parser.Status("- "), "- bad switch(es)");
    parser.Cmd("stray /w a /x");
    EXPECT_EQ(parser.Status(""), "too many arguments\r\nbad switch(es)");
    EXPECT_EQ(parser.Parsing("> "), "> CmdLine=stray /w a /x\r\n> Arg(1:?\?\?)=stray\r\n"
                                    "> Switch(1:w)=a\r\n> Switch(2:x:?\?\?)");

    CmdParser declared;
    declared.ArgAdd(" source ");
    declared.ArgAdd("target");
    declared.Cmd("one");
    EXPECT_EQ(declared.Status(""), "argument(s) missing");
    EXPECT_EQ(declared.Parsing(""), "CmdLine=one\r\nArg(1:source)=one\r\nArg(2:target)=");
    declared.Cmd("one two three");
    EXPECT_EQ(declared.Status(""), "too many arguments");
}

TEST(CmdParser, AnswersQueriesByPositionAndName) {
    CmdParser parser;
    parser.ArgAdd("source");
    parser.ArgAdd("2");
    parser.Cmd("\"a \"\"b\"\" c\" plain /s v");
    EXPECT_EQ(parser.ArgVal("source"), Variant("a \"b\" c"));
    EXPECT_EQ(parser.ArgVal(std::int16_t{2}), Variant("plain"));
    EXPECT_EQ(parser.ArgVal("2"), Variant("plain")); // numeric text is an index
    EXPECT_EQ(parser.ArgVal(1.5), Variant("plain")); // rounded half to even
    EXPECT_TRUE(parser.ArgVal(3).isNull());
    EXPECT_TRUE(parser.ArgVal("Source").isNull()); // names are case-sensitive
    EXPECT_EQ(parser.SwVal(1), Variant("v"));
    EXPECT_TRUE(parser.SwVal(0).isNull());
    EXPECT_TRUE(parser.SwName(2).isNull());

    parser.ArgDelimStrip(false);
    EXPECT_EQ(parser.ArgVal(1), Variant("\"a \"\"b\"\" c\""));
    parser.ArgNoSplit(true);
    EXPECT_EQ(parser.ArgCount(), 1);
    EXPECT_EQ(parser.ArgVal(1), Variant("\"a \"\"b\"\" c\" plain"));
    parser.ArgNoSplit(false);
    parser.ArgDelim("'");
    EXPECT_EQ(parser.ArgVal(1), Variant("\"a"));
}

TEST(CmdParser, KeepsTheFirstSwitchCharacterMet) {
    CmdParser parser;
    parser.SwChars("/-");
    parser.Cmd("-a x /b y");
    EXPECT_EQ(parser.SwCount(), 1);
    EXPECT_EQ(parser.SwVal("a"), Variant("x /b y"));
    parser.Cmd("/b y -c");
    EXPECT_EQ(parser.SwCount(), 1); // "-" stays the switch character of this parser
    EXPECT_EQ(parser.SwVal("c"), Variant(""));
    parser.SwChars("/");
    EXPECT_EQ(parser.SwVal("b"), Variant("y -c"));
}

TEST(CmdParser, RaisesIndexErrorOnlyForTheThirtyFirstEntry) {
    std::string thirty;
    for (char name = 'a'; name < 'a' + 30; ++name) {
        thirty += std::string(" /") + name;
    }
    CmdParser parser;
    EXPECT_NO_THROW(parser.Cmd(thirty));
    EXPECT_EQ(parser.SwCount(), 30);
    EXPECT_THROW(parser.Cmd(thirty + " /z9"), IndexError);

    std::string words;
    for (int i = 0; i < 31; ++i) {
        words += " w";
    }
    EXPECT_THROW(parser.Cmd(words), IndexError);
    for (int i = 0; i < 30; ++i) {
        parser.SwAdd("s" + std::to_string(i));
        parser.ArgAdd("a" + std::to_string(i));
    }
    EXPECT_THROW(parser.SwAdd("one more"), IndexError);
    EXPECT_THROW(parser.ArgAdd("one more"), IndexError);
}

CmdParser parsedArgv(std::vector<const char*> argv) {
    argv.insert(argv.begin(), "wordbm");
    const ClassicArgs mapped = mapClassicArgs(static_cast<int>(argv.size()), argv.data());
    CmdParser parser = classicParser();
    parser.SwChars(mapped.switchChars);
    parser.CmdGet(mapped.arguments);
    return parser;
}

TEST(ClassicArgs, KeepsAbsolutePathsAndDashesInValues) {
    CmdParser parser =
        parsedArgv({"/w", "/home/u/my-form.docx", "-c=/tmp/a b.csv", "/t", "&W&\\&K&-&D&", "-m"});
    EXPECT_EQ(parser.Status(""), "");
    EXPECT_EQ(parser.SwVal("w"), Variant("/home/u/my-form.docx"));
    EXPECT_EQ(parser.SwVal("c"), Variant("\"/tmp/a b.csv\""));
    EXPECT_EQ(parser.SwVal("t"), Variant("&W&\\&K&-&D&"));
    EXPECT_GT(parser.SwIsHere("m"), 0);

    parser = parsedArgv({"-w", "x.docx", "/t", ""});
    EXPECT_EQ(parser.Cmd(), "/w x.docx /t \"\"");
    for (const char* help : {"-h", "--help", "/?", "-?"}) {
        EXPECT_GT(parsedArgv({"/m", help}).SwIsHere("?"), 0) << help;
    }
    EXPECT_NE(parsedArgv({"/x"}).Status(""), "");
    EXPECT_NE(parsedArgv({"/home/u/x.docx"}).Status(""), ""); // a bare path is a stray argument
    EXPECT_EQ(parsedArgv({"/w", "/home/u/x.docx"}).Cmd(), "-w /home/u/x.docx");
    EXPECT_EQ(parsedArgv({}).SwCount(), 0);

    CmdParser plain;
    const char* argv[] = {"wordbm", "/w", "a b", "\"q\""};
    plain.CmdGet(4, argv);
    EXPECT_EQ(plain.Cmd(), "/w \"a b\" \"q\"");
}

} // namespace
} // namespace wordbm
