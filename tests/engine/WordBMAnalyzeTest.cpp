#include "EngineFixture.h"
#include "support/Strings.h"

namespace wordbm::testing {
namespace {

class Analysis : public EngineTest {
protected:
    // Known and unknown merge fields in the main text, a text box and a header; engine, foreign
    // and unknown-field bookmarks.
    static TestForm invoice() {
        TestForm form;
        form.text("Sehr geehrte ").mergeField("KliName").text(" ").mergeField("Unbekannt").text(" ");
        form.field(" PAGE ", "1").text("\r");
        form.bookmark("kdx6_KliName_123456", "[KliName]").bookmark("Fremd", "x");
        form.bookmark("kdx6_Foo_123456", "[Foo]");
        form.textBox("Textfeld 1", TestForm().mergeField("KliKonto"));
        return form.header(TestForm().mergeField("RgDatum"));
    }
    std::vector<std::string> traceLines() const { return split(ui.trace, "\r\n"); }
};

TEST_F(Analysis, ReportsExportFieldsBookmarksAndMergeFields) {
    ASSERT_TRUE(open(form("Rechnung.docx", invoice())));

    engine->mfWBM_Analyze();

    ASSERT_EQ(ui.boxes.size(), 1u);
    EXPECT_EQ(ui.boxes[0].text, "KDX5-Exportfelder: 63-total\r\n"
                                "Textfelder: 3-total, 1-bekannt, 2-unbekannt\r\n"
                                "Seriendruckfelder: 4-total, 3-bekannt, 1-unbekannt");
    EXPECT_EQ(ui.boxes[0].buttons, 64);
    EXPECT_EQ(ui.boxes[0].title, "Word-Rechnungsformular");
    ASSERT_TRUE(ui.counts);
    EXPECT_EQ(ui.counts->mergeFieldsKnown, 3);
    EXPECT_EQ(engine->Gathered().size(), 3u);
    expectOriginalsUntouched();
}

TEST_F(Analysis, AnEmptyFormCountsNothing) {
    ASSERT_TRUE(open(form("Leer.docx", TestForm())));
    engine->mfWBM_Analyze();
    EXPECT_EQ(ui.texts(), std::vector<std::string>{"KDX5-Exportfelder: 63-total\r\n"
                                                   "Textfelder: 0-total, 0-bekannt, 0-unbekannt\r\n"
                                                   "Seriendruckfelder: 0-total, 0-bekannt, 0-unbekannt"});
}

TEST_F(Analysis, TheTraceIndentsWhatItVisits) {
    ASSERT_TRUE(open(form("Rechnung.docx", invoice())));

    engine->DocumentWalk();

    const std::vector<std::string> expectedStart{
        "Document=Rechnung.docx Filds=3",
        "  Fields=3",
        "  Field=KliName( MERGEFIELD KliName ) ISKNOWN",
        "  Field=Unbekannt( MERGEFIELD Unbekannt )",
        "  Fields done",
        "Shapes=1",
        "  Shape Textfeld 1",
        "      Fields=1",
        "      Field=KliKonto( MERGEFIELD KliKonto ) ISKNOWN",
        "      Fields done",
        "  Shape Textfeld 1 done",
        "Shapes done",
        "Sections=1",
        "  Section 1",
        "    Headers=3",
        "      Header 1",
        "        Shapes=0",
        "        Shapes done",
        "          Fields=1",
        "          Field=RgDatum( MERGEFIELD RgDatum ) ISKNOWN",
        "          Fields done",
        "      Header1 done",
    };
    const std::vector<std::string> lines = traceLines();
    ASSERT_GE(lines.size(), expectedStart.size());
    EXPECT_EQ(
        std::vector<std::string>(lines.begin(), lines.begin() + static_cast<long>(expectedStart.size())),
        expectedStart);
    EXPECT_EQ(std::vector<std::string>(lines.end() - 5, lines.end()),
              (std::vector<std::string>{"      Footer 3 done", "    Footers done", "  Section done",
                                        "Sections done", "Document done"}));
}

TEST_F(Analysis, AHeaderSharedBySectionsIsWalkedOncePerSection) {
    ASSERT_TRUE(open(form("Rechnung.docx", invoice().sections(2))));

    engine->DocumentWalk();

    EXPECT_EQ(engine->MergeFieldsTotal(), 5);
    EXPECT_EQ(engine->Gathered().size(), 4u);
}

TEST_F(Analysis, AHeaderTextBoxIsSeenFromEveryHeaderAndFooter) {
    const TestForm box = TestForm().textBox("Kopf", TestForm().mergeField("KliName"));
    ASSERT_TRUE(open(form("Rechnung.docx", TestForm().header(box))));

    engine->DocumentWalk();

    EXPECT_EQ(engine->Gathered().size(), 6u);
}

} // namespace
} // namespace wordbm::testing
