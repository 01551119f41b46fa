// The analysis counts of every corpus document against a reading of its XML that follows Word's
// object model: Document.Fields is the main text only, Document.Shapes its floating shapes, every
// section has three headers and three footers (a missing one is the previous section's), and a
// header's Shapes are the floating shapes of all headers and footers of the document.
#include "CorpusXml.h"
#include "app/BatchSlip.h"
#include "app/EngineVerbs.h"
#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "data/MergeFieldName.h"
#include "engine/merge/BookmarkFiller.h"
#include "engine/merge/PreparedForm.h"
#include "engine/merge/PreparedForms.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/Package.h"
#include "engine/slip/SlipFit.h"
#include "engine/slip/modESQR.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/WordConstants.h"
#include "kit/EnvGuard.h"
#include "kit/FileBytes.h"
#include "kit/ScriptedUserInterface.h"
#include "kit/TempDir.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <set>
#include <sstream>

namespace wordbm::testing {
namespace {

namespace fs = std::filesystem;

struct Counts {
    int total = 0;
    int known = 0;
    bool operator==(const Counts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    return out << counts.total << " total, " << counts.known << " known";
}

struct Analysis {
    Counts bookmarks;
    Counts mergeFields;
    // Known merge fields counted once however often the walk reaches them.
    int knownPlaces = 0;
};

bool hasText(pugi::xml_node content) {
    for (const auto& t : content.select_nodes(".//w:t")) {
        if (*t.node().text().get() != '\0') {
            return true;
        }
    }
    return false;
}

// The text of the floating shapes anchored in a story: drawings with a text box and VML shapes
// placed absolutely. Inline shapes, groups, canvases and the Fallback copies hold no text frame.
std::vector<pugi::xml_node> floatingTextBoxes(pugi::xml_node story) {
    std::vector<pugi::xml_node> boxes;
    forEachElement(story, [&boxes](pugi::xml_node node) {
        if (named(node, "wp:anchor")) {
            boxes.push_back(
                node.first_element_by_path("a:graphic/a:graphicData/wps:wsp/wps:txbx/w:txbxContent"));
        } else if (named(node, "w:pict")) {
            for (const pugi::xml_node shape : node.children()) {
                if (std::regex_search(shape.attribute("style").value(),
                                      std::regex("position:\\s*absolute"))) {
                    boxes.push_back(shape.first_element_by_path("v:textbox/w:txbxContent"));
                }
            }
        }
        return !named(node, "wp:anchor") && !named(node, "w:pict") && !named(node, "w:object") &&
               !named(node, "wp:inline");
    });
    std::erase_if(boxes, [](pugi::xml_node box) { return !box || !hasText(box); });
    return boxes;
}

std::vector<pugi::xml_node> sectionProperties(pugi::xml_node body) {
    std::vector<pugi::xml_node> sections;
    forEachElement(body, [&sections](pugi::xml_node node) {
        if (named(node, "w:sectPr")) {
            sections.push_back(node);
        }
        return !named(node, "w:sectPr") && !named(node, "w:pPrChange");
    });
    return sections;
}

class XmlAnalysis {
public:
    XmlAnalysis(const CorpusXml& xml, const KnownFields& known) : xml_(xml), known_(known) {}

    Analysis read() {
        readBookmarks();
        readMergeFields();
        analysis_.knownPlaces = static_cast<int>(knownPlaces_.size());
        return analysis_;
    }

private:
    void readBookmarks() {
        for (const auto& part : xml_.partNames()) {
            for (const auto& name : bookmarksIn(xml_.root(part))) {
                if (name.rfind('_', 0) == 0) {
                    continue; // hidden, as Word lists bookmarks by default
                }
                ++analysis_.bookmarks.total;
                analysis_.bookmarks.known += !known_.BookmarkFieldGet(name).empty();
            }
        }
    }

    void addFields(pugi::xml_node story) {
        for (const auto& field : fieldsIn(story, true)) {
            if (const auto name = MergeFieldName(field.code)) {
                ++analysis_.mergeFields.total;
                if (!known_.FieldKnown(*name).empty()) {
                    ++analysis_.mergeFields.known;
                    knownPlaces_.insert(field.simple ? field.simple : field.instructions.front());
                }
            }
        }
    }

    void readMergeFields() {
        const pugi::xml_node body = xml_.root("word/document.xml").child("w:body");
        addFields(body);
        for (const auto box : floatingTextBoxes(body)) {
            addFields(box);
        }
        // Each section's header or footer of each kind, the previous section's where it has none.
        std::array<std::string, 6> current;
        std::vector<std::array<std::string, 6>> sections;
        std::set<std::string> allParts;
        for (const auto properties : sectionProperties(body)) {
            for (const auto reference : properties.children()) {
                const bool header = named(reference, "w:headerReference");
                if (!header && !named(reference, "w:footerReference")) {
                    continue;
                }
                const std::string_view type = reference.attribute("w:type").value();
                const int slot = (header ? 0 : 3) + (type == "first" ? 1 : type == "even" ? 2 : 0);
                current[slot] = xml_.documentTarget(reference.attribute("r:id").value());
                allParts.insert(current[slot]);
            }
            sections.push_back(current);
        }
        for (const auto& parts : sections) {
            for (const auto& part : parts) {
                for (const auto& any : allParts) {
                    for (const auto box : floatingTextBoxes(xml_.root(any))) {
                        addFields(box);
                    }
                }
                if (!part.empty()) {
                    addFields(xml_.root(part));
                }
            }
        }
    }

    const CorpusXml& xml_;
    const KnownFields& known_;
    Analysis analysis_;
    std::set<pugi::xml_node> knownPlaces_;
};

Counts countsOf(const std::string& report, const std::string& head) {
    std::smatch match;
    const std::regex line(head + ": (\\d+)-total, (\\d+)-bekannt, (\\d+)-unbekannt");
    if (!std::regex_search(report, match, line)) {
        ADD_FAILURE() << "no line " << head << " in " << report;
        return {};
    }
    const Counts counts{std::stoi(match[1]), std::stoi(match[2])};
    EXPECT_EQ(std::stoi(match[3]), counts.total - counts.known) << report;
    return counts;
}

void setCode(const XmlField& field, const std::string& code) {
    if (field.simple) {
        field.simple.attribute("w:instr").set_value(code.c_str());
        return;
    }
    for (std::size_t i = 0; i < field.instructions.size(); ++i) {
        field.instructions[i].text().set(i == 0 ? code.c_str() : "");
    }
}

class AnalyzeCorpus : public ::testing::Test {
protected:
    AnalyzeCorpus()
        : base_("TARVELL_DEBUG", folder_.path().string()), config_("XDG_CONFIG_HOME", folder_ / "config") {
        known_.FieldsBESR();
    }

    // Strict Open XML ones included.
    static std::vector<fs::path> documents() {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(fs::path(WORDBM_CORPUS_DIR) / "docx")) {
            const auto extension = entry.path().extension();
            if (extension == ".docx" || extension == ".docm") {
                found.push_back(entry.path());
            }
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    // The counts `wordbm analyze` prints, beside those of the XML.
    Analysis analyze(const fs::path& form, Analysis& expected) {
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(EngineVerbs(out, err, false).analyze(form.string(), false), EngineVerbs::ExitFine)
            << form << ": " << err.str();
        expected = XmlAnalysis(CorpusXml(form), known_).read();
        return {countsOf(out.str(), "Textfelder"), countsOf(out.str(), "Seriendruckfelder")};
    }

    // A copy of the form in which every field that neither holds nor sits in another one is a merge
    // field, every second one with a known name, so that fields in all kinds of places are counted.
    fs::path withMergeFields(const fs::path& form) {
        CorpusXml xml(form);
        std::vector<std::string> names;
        for (const auto& item : known_.Items()) {
            if (item != KnownFields::Separator && item.rfind("ESQR", 0) != 0) {
                names.push_back(item);
            }
        }
        std::vector<std::string> changed;
        int seen = 0;
        for (const auto& part : xml.partNames()) {
            const auto fields = fieldsIn(xml.root(part), false);
            for (const auto& field : fields) {
                if (field.nested) {
                    continue;
                }
                const bool known = seen++ % 2 == 0;
                setCode(field, known ? " MERGEFIELD " + names[seen % names.size()] + " "
                                     : " MERGEFIELD Fremd" + std::to_string(seen) + " \\* MERGEFORMAT ");
            }
            if (!fields.empty()) {
                changed.push_back(part);
            }
        }
        const fs::path copy = folder_ / ("Bekannt-" + form.filename().string());
        xml.saveCopy(copy, changed);
        return copy;
    }

    TempDir folder_;
    EnvGuard base_;
    EnvGuard config_;
    KnownFields known_;
};

TEST_F(AnalyzeCorpus, CountsOfEveryDocumentMatchItsXml) {
    int documentsWithMergeFields = 0;
    const auto forms = documents();
    for (const auto& form : forms) {
        Analysis expected;
        const Analysis found = analyze(form, expected);
        EXPECT_EQ(found.bookmarks, expected.bookmarks) << form;
        EXPECT_EQ(found.mergeFields, expected.mergeFields) << form;
        documentsWithMergeFields += expected.mergeFields.total > 0;
    }
    EXPECT_GE(forms.size(), 58u);
    EXPECT_GE(documentsWithMergeFields, 8);

    // The XML reading goes by prefixes, so a Strict document's counts are those of its
    // transitional twin; and what the program writes of it is transitional.
    int strict = 0;
    for (const auto& form : forms) {
        if (!CorpusXml::isStrict(form)) {
            continue;
        }
        ++strict;
        const fs::path output = folder_ / "Transitional.docx";
        std::ostringstream out;
        std::ostringstream err;
        ASSERT_EQ(EngineVerbs(out, err, false).convert(form.string(), output.string()), EngineVerbs::ExitFine)
            << form << err.str();
        EXPECT_STREQ(CorpusXml(output).root("word/document.xml").attribute("xmlns:w").value(),
                     "http://schemas.openxmlformats.org/wordprocessingml/2006/main")
            << form;
        EXPECT_EQ(CorpusXml::packageFaults(output), std::vector<std::string>{}) << form;
    }
    EXPECT_EQ(strict, 3);
}

TEST_F(AnalyzeCorpus, ConvertTurnsTheKnownMergeFieldsIntoBookmarksAndLeavesTheOthers) {
    int converted = 0;
    for (const auto& original : documents()) {
        const fs::path form = withMergeFields(original);
        Analysis expected;
        const Analysis found = analyze(form, expected);
        ASSERT_EQ(found.mergeFields, expected.mergeFields) << form;
        if (found.mergeFields.known == 0) {
            continue;
        }

        const fs::path output = folder_ / "Konvertiert.docx";
        std::ostringstream out;
        std::ostringstream err;
        ASSERT_EQ(EngineVerbs(out, err, false).convert(form.string(), output.string()), EngineVerbs::ExitFine)
            << form << ": " << err.str();
        std::smatch match;
        const std::string report = out.str();
        ASSERT_TRUE(std::regex_search(report, match, std::regex("(\\d+) Seriendruckfelder "))) << report;
        const int replaced = std::stoi(match[1]);
        EXPECT_EQ(replaced, expected.knownPlaces) << form << report;

        Analysis convertedXml;
        const Analysis after = analyze(output, convertedXml);
        EXPECT_EQ(after.mergeFields, convertedXml.mergeFields) << form;
        EXPECT_EQ(after.bookmarks, convertedXml.bookmarks) << form;
        EXPECT_EQ(after.mergeFields.known, 0) << form;
        EXPECT_EQ(after.mergeFields.total, found.mergeFields.total - found.mergeFields.known) << form;
        // Bookmarks inside a replaced field's result go with it; the new ones are all known.
        EXPECT_EQ(after.bookmarks.known, found.bookmarks.known + replaced) << form;
        fs::remove(output);
        ++converted;
    }
    EXPECT_GE(converted, 20);
}

// The export fields a prepared form uses, and the control file's value of one in a row: a token
// that shows up unbroken in the PDF's text.
const std::array<std::string, 6> PreparedFields{"KliName", "GeschTxt", "Abteil",
                                                "Person",  "KliKonto", "RgDatum"};

// Digits at both ends keep it apart from the form's words it is typed next to.
std::string valueOf(std::size_t field, int row) {
    return std::to_string(row) + "Vq" + std::string(1, static_cast<char>('A' + field)) + std::to_string(row);
}

std::string pdfText(const fs::path& pdf) {
    const std::string command = "pdftotext '" + pdf.string() + "' - 2>/dev/null";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::string text;
    std::array<char, 4096> buffer{};
    while (pipe && std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get())) {
        text += buffer.data();
    }
    // A word broken at the line's end is one word.
    return std::regex_replace(text, std::regex("-\n"), "");
}

// Words of four letters or more, in small letters: a style may show them in capitals.
std::set<std::string> wordsOf(const std::string& text) {
    std::set<std::string> words;
    std::string current;
    for (const char c : text + ' ') {
        if (std::isalpha(static_cast<unsigned char>(c))) {
            current += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            continue;
        }
        if (current.size() >= 4) {
            words.insert(current);
        }
        current.clear();
    }
    return words;
}

// Gives every bookmark that Word lists (not hidden) an engine name, the mc:Fallback copies of a
// drawing the same name as the bookmark they copy. Returns the changed parts.
// With `names` given, only the bookmarks it names are renamed, to the names it gives them.
std::vector<std::string> nameBookmarks(CorpusXml& xml, std::map<std::string, std::string> names = {}) {
    const bool chosen = !names.empty();
    std::vector<std::string> changed;
    for (const auto& part : xml.partNames()) {
        bool any = false;
        const std::function<void(pugi::xml_node)> rename = [&](pugi::xml_node node) {
            for (pugi::xml_node child : node.children()) {
                const std::string old = child.attribute("w:name").value();
                if (named(child, "w:bookmarkStart") && old[0] != '_' && (!chosen || names.contains(old))) {
                    if (!names.contains(old)) {
                        const std::size_t field = names.size() % PreparedFields.size();
                        names[old] =
                            "kdx6_" + PreparedFields[field] + "_" + std::to_string(100000 + names.size());
                    }
                    child.attribute("w:name").set_value(names[old].c_str());
                    any = true;
                }
                rename(child);
            }
        };
        rename(xml.root(part));
        if (any) {
            changed.push_back(part);
        }
    }
    return changed;
}

// A copy of the form as a billing office would prepare it: every merge field, nested ones too,
// named after a known export field; a form without merge fields gets its bookmarks named instead.
fs::path prepared(const fs::path& form, const fs::path& folder) {
    CorpusXml xml(form);
    std::vector<std::string> changed;
    std::size_t next = 0;
    for (const auto& part : xml.partNames()) {
        bool any = false;
        for (const auto& field : fieldsIn(xml.root(part), false)) {
            if (isMergeCode(field.code)) {
                setCode(field, " MERGEFIELD " + PreparedFields[next++ % PreparedFields.size()] +
                                   " \\* MERGEFORMAT ");
                any = true;
            }
        }
        if (any) {
            changed.push_back(part);
        }
    }
    if (changed.empty()) {
        changed = nameBookmarks(xml);
    }
    const fs::path copy = folder / ("Formular-" + form.filename().string());
    xml.saveCopy(copy, changed);
    return copy;
}

// The codes of every field but the merge fields that stand alone, which conversion turns into
// bookmarks: what conversion must leave as it was.
std::multiset<std::string> keptCodes(const fs::path& docx) {
    CorpusXml xml(docx);
    std::multiset<std::string> codes;
    for (const auto& part : xml.partNames()) {
        for (const auto& field : fieldsIn(xml.root(part), false)) {
            if (field.nested || !isMergeCode(field.code)) {
                codes.insert(field.code);
            }
        }
    }
    return codes;
}

struct FormReading {
    std::set<std::string> shownFields; // with a bookmark the form's PDF shows, meeting no other one
    std::set<std::string> filled;      // words in the places the merge fills
    std::set<std::string> outside;     // words of the form's PDF outside those places
};

// Without blanks and line ends, in small letters: text as the PDF shows it, wherever it wraps.
std::string squeezed(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (!std::isspace(static_cast<unsigned char>(c))) {
            result += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return result;
}

struct PlacedBookmark {
    std::string field;
    std::string text;
    int story = 0;
    long start = 0;
    long end = 0;
    // Nested either way, the same, or crossing: which value then shows is for the order of filling
    // to say (the letterhead test looks at that).
    bool meets(const PlacedBookmark& other) const {
        return story == other.story && other.start < end && start < other.end;
    }
};

// The converted form as the merge will find it, and its own PDF through the same worker.
FormReading readForm(const fs::path& form, const fs::path& pdf, const KnownFields& known) {
    FormReading reading;
    auto app = ooxml::DocxApplication::create();
    const word::DocumentPtr doc = app->Documents()->Open(form.string());
    const word::BookmarksPtr bookmarks = doc->Bookmarks();
    std::vector<PlacedBookmark> placed;
    for (int i = 1; i <= bookmarks->Count(); ++i) {
        const word::BookmarkPtr bookmark = bookmarks->Item(i);
        const std::string field = known.BookmarkFieldGet(bookmark->Name());
        if (!field.empty()) {
            placed.push_back({field, bookmark->Range()->Text(), bookmark->StoryType(), bookmark->Start(),
                              bookmark->End()});
            reading.filled.merge(wordsOf(placed.back().text));
        }
    }
    try {
        doc->ExportAsFixedFormat(pdf.string(), word::wd::wdExportFormatPDF, false);
    } catch (const std::exception& failure) {
        ADD_FAILURE() << "no PDF of the converted form: " << failure.what();
        return reading;
    }
    const std::string text = pdfText(pdf);
    // A value must show where the form shows its place, unless the place shares text with another
    // one (the story's kind tells stories apart well enough for this).
    for (const auto& bookmark : placed) {
        const bool shown = !squeezed(bookmark.text).empty() &&
                           squeezed(text).find(squeezed(bookmark.text)) != std::string::npos;
        const bool alone =
            std::none_of(placed.begin(), placed.end(), [&bookmark](const PlacedBookmark& other) {
                return &other != &bookmark && bookmark.meets(other);
            });
        if (shown && alone) {
            reading.shownFields.insert(bookmark.field);
        }
    }
    for (const auto& word : wordsOf(text)) {
        if (!reading.filled.contains(word)) {
            reading.outside.insert(word);
        }
    }
    return reading;
}

// The control file of `rows` invoices over the prepared fields, `value` giving each field's text.
void writeRows(const fs::path& csv, int rows, const std::function<std::string(std::size_t, int)>& value) {
    std::string text = "RgNummer";
    for (const auto& field : PreparedFields) {
        text += ";" + field;
    }
    for (int row = 1; row <= rows; ++row) {
        text += "\r\n" + std::to_string(row);
        for (std::size_t field = 0; field < PreparedFields.size(); ++field) {
            text += ";" + value(field, row);
        }
    }
    writeBytes(csv.string(), text + "\r\n");
}

void writeControlFile(const fs::path& csv) {
    writeRows(csv, 2, valueOf);
}

// Values the word processor must take as they stand: markup characters and blanks at the edges
// (row 1), blank values (row 2), and a tab, which it types as an element of its own (row 3).
void writeAwkwardControlFile(const fs::path& csv) {
    writeRows(csv, 3, [](std::size_t field, int row) {
        const bool date = PreparedFields[field] == "RgDatum";
        const std::string value = valueOf(field, row);
        return date || row == 1 ? " " + value + " & <" + value + "> 'x' " : row == 2 ? "" : value + "\tTab";
    });
}

// The corpus form prepared in `work` (made here) and converted by the convert verb; empty, with the
// verb's words as a test failure, when the conversion fails.
fs::path convertedIn(const fs::path& original, const fs::path& work) {
    fs::create_directories(work);
    std::ostringstream out;
    std::ostringstream err;
    EngineVerbs verbs(out, err, false);
    const fs::path converted = work / "Konvertiert.docx";
    if (verbs.convert(prepared(original, work).string(), converted.string()) != EngineVerbs::ExitFine) {
        ADD_FAILURE() << err.str();
        return {};
    }
    return converted;
}

// The awkward rows with what the payment part needs (cp1252, as the export writes it): row 1 the
// sample's with umlauts in the addresses, row 2 without reference to an ordinary IBAN (another
// shape of slip), row 3 with a message too long for its box.
void writeSlipControlFile(const fs::path& csv) {
    writeAwkwardControlFile(csv);
    std::istringstream awkward(readBytes(csv.string()));
    const std::array<std::string, 4> slip{
        ";CH44 3199 9123 0008 8901 2;Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;"
        "B\xE4"
        "ckerei M\xFCller & S\xF6hne;Dorfstrasse 14;8802 Kilchberg ZH;518.88;"
        "21 00000 00003 13947 14300 09017;Rechnung 24100 / Jahresabschluss",
        ";CH93 0076 2011 6238 5295 7;Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;"
        "Ren\xE9"
        "e Dubois;;1004 Lausanne;922.21;;Rechnung 24101",
        ";CH44 3199 9123 0008 8901 2;Treuhand Sonnenberg AG;Seefeldstrasse 112;8008 Z\xFCrich;"
        "Ren\xE9"
        "e Dubois;Chemin des P\xE2querettes 3;1004 Lausanne;10.00;"
        "21 00000 00003 13947 14300 09017;Rechnung f\xFCr die Buchhaltung des ganzen Jahres 2025 samt "
        "Abschluss, Steuererkl\xE4rung, Lohnbuchhaltung, Beratung in allen Fragen der Mehrwertsteuer, "
        "Vertretung vor den Steuerbeh\xF6rden und Schlussbesprechung"};
    std::string text;
    std::string line;
    for (std::size_t row = 0; std::getline(awkward, line); ++row) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        text +=
            line +
            (row == 0
                 ? ";BankKto;BueroAdr1;BueroAdr2;BueroAdr3;KliAdr1;KliAdr2;KliAdr3;BesrBet;BesrRefNr;Referenz"
                 : slip.at(row - 1)) +
            "\r\n";
    }
    writeBytes(csv.string(), text);
}

std::map<std::string, std::string> partsOf(const ooxml::Package& package);

// A form may bring its own; a slip text shortened to fit its box adds one.
std::size_t ellipses(std::string_view text) {
    std::size_t count = 0;
    for (auto at = text.find(SlipFit::Ellipsis); at != std::string_view::npos;
         at = text.find(SlipFit::Ellipsis, at + 1)) {
        ++count;
    }
    return count;
}

// Every part of a package as stored, by name.
std::map<std::string, std::string> partsOf(const fs::path& docx) {
    return partsOf(*ooxml::Package::open(docx.string()));
}

std::map<std::string, std::string> partsOf(const ooxml::Package& package) {
    std::map<std::string, std::string> parts;
    for (const auto& name : package.partNames()) {
        parts[name] = package.bytes(name);
    }
    return parts;
}

std::vector<std::string> codesOf(const fs::path& docx) {
    std::vector<std::string> codes;
    for (const auto& field : fieldsIn(CorpusXml(docx).root("word/document.xml"), false)) {
        codes.push_back(field.code);
    }
    return codes;
}

// IF fields whose code and result hold merge fields: the IFs come through conversion and reset
// whole, and the trace says which merge fields were left in them.
TEST_F(AnalyzeCorpus, MergeFieldsInsideAnotherFieldAreLeftAndTheOuterFieldStaysWhole) {
    const fs::path form =
        prepared(fs::path(WORDBM_CORPUS_DIR) / "docx" / "test_nested_if_inside.docx", folder_.path());
    const auto codes = codesOf(form);
    ASSERT_EQ(std::count_if(codes.begin(), codes.end(), isMergeCode), 5);
    std::ostringstream out;
    std::ostringstream err;
    EngineVerbs verbs(out, err, false);

    ASSERT_EQ(verbs.analyze(form.string(), true), EngineVerbs::ExitFine) << err.str();
    const std::string trace = out.str();
    EXPECT_NE(trace.find("Seriendruckfelder: 5-total, 5-bekannt, 0-unbekannt"), std::string::npos) << trace;
    const std::regex nested("Field=\\w+\\( MERGEFIELD \\w+ \\\\\\* MERGEFORMAT \\) ISKNOWN NESTED");
    EXPECT_EQ(std::distance(std::sregex_iterator(trace.begin(), trace.end(), nested), std::sregex_iterator()),
              5)
        << trace;

    out.str("");
    const fs::path converted = folder_ / "Konvertiert.docx";
    ASSERT_EQ(verbs.convert(form.string(), converted.string()), EngineVerbs::ExitFine) << err.str();
    EXPECT_NE(out.str().find("0 Seriendruckfelder wurden duch Textfelder ersetzt!"), std::string::npos)
        << out.str();
    EXPECT_EQ(codesOf(converted), codes);
    const fs::path reset = folder_ / "Ohne.docx";
    ASSERT_EQ(verbs.reset(form.string(), reset.string()), EngineVerbs::ExitFine) << err.str();
    EXPECT_NE(out.str().find("0/0 Seriendruckfelder gelöscht!"), std::string::npos) << out.str();
    EXPECT_EQ(codesOf(reset), codes);
}

std::string mainText(const fs::path& docx) {
    std::string text;
    forEachElement(CorpusXml(docx).root("word/document.xml"), [&text](pugi::xml_node node) {
        if (named(node, "w:t")) {
            text += node.text().get();
        }
        return true;
    });
    return text;
}

// A letterhead whose bookmarks hold others, named as an office would: "Abteil" over the second
// paragraph and the start of the third, "RgDatum" inside it over the paragraph's text, "KliName"
// over the third paragraph's text. Filled in the collection's order (by name) the container comes
// first and takes "RgDatum" with its text; that is no failure, and side by side it is the same.
TEST_F(AnalyzeCorpus, NestedBookmarksShowTheContainersValueWithoutFailureWhateverTheJobs) {
    CorpusXml xml(fs::path(WORDBM_CORPUS_DIR) / "docx" / "Letterhead.docx");
    const auto changed = nameBookmarks(xml, {{"OFF_Address_DIF", "kdx6_Abteil_100001"},
                                             {"OFF_Address", "kdx6_RgDatum_100002"},
                                             {"OFF_City", "kdx6_KliName_100003"}});
    const fs::path form = folder_ / "Briefkopf.docx";
    xml.saveCopy(form, changed);
    const fs::path csv = folder_ / "Lauf.csv";
    writeControlFile(csv);
    std::vector<std::string> invoices;
    for (const int jobs : {1, 2}) {
        std::ostringstream out;
        std::ostringstream err;
        const std::string folder = folder_ / ("out" + std::to_string(jobs));
        EngineVerbs::MergeRequest request{form.string(), csv.string(), "&W&\\&R&-Rechnung.&E&", folder, {},
                                          false,         jobs};
        request.choices.Close = true;
        EXPECT_EQ(EngineVerbs(out, err, false).merge(request), EngineVerbs::ExitFine)
            << out.str() << err.str();
        EXPECT_NE(out.str().find("2   Ok\n0   Fehler\n"), std::string::npos) << out.str() << err.str();
        invoices.push_back(folder + "/000001-Rechnung.docx");
    }
    const std::string text = mainText(invoices[0]);
    const auto abteil = text.find(valueOf(2, 1));
    EXPECT_NE(abteil, std::string::npos) << text;
    EXPECT_EQ(text.find(valueOf(5, 1)), std::string::npos) << text;
    EXPECT_GT(text.find(valueOf(0, 1)), abteil) << text;
    EXPECT_EQ(mainText(invoices[1]), text);
}

// Every corpus form prepared as a billing office would, then analysed, converted and merged with
// two rows to .docx and PDF: no failure is reported, every output is a sound package, and each
// invoice's PDF shows the row's values and all the form's text outside the filled places.
TEST_F(AnalyzeCorpus, PreparedFormsGoThroughConvertAndMergeToPdfWithNothingLost) {
    const fs::path csv = folder_ / "Lauf.csv";
    writeControlFile(csv);
    int merged = 0;
    for (const auto& original : documents()) {
        SCOPED_TRACE(original.filename().string());
        const fs::path work = folder_ / ("m" + std::to_string(merged++));
        fs::create_directories(work);
        const fs::path form = prepared(original, work);
        std::ostringstream out;
        std::ostringstream err;
        EngineVerbs verbs(out, err, false);
        ASSERT_EQ(verbs.analyze(form.string(), false), EngineVerbs::ExitFine) << err.str();
        const fs::path converted = work / "Konvertiert.docx";
        ASSERT_EQ(verbs.convert(form.string(), converted.string()), EngineVerbs::ExitFine) << err.str();
        EXPECT_EQ(keptCodes(converted), keptCodes(form));
        const FormReading reading = readForm(converted, work / "Konvertiert.pdf", known_);

        EngineVerbs::MergeRequest request{
            converted.string(), csv.string(), "&W&\\&R&-Rechnung.&E&", (work / "out").string(), {}, false, 1};
        request.choices.PDF = true;
        request.choices.Close = true;
        out.str("");
        EXPECT_EQ(verbs.merge(request), EngineVerbs::ExitFine) << out.str() << err.str();
        EXPECT_NE(out.str().find("2   Ok\n0   Fehler\n"), std::string::npos) << out.str() << err.str();
        for (int row = 1; row <= 2; ++row) {
            const fs::path invoice = work / "out" / ("00000" + std::to_string(row) + "-Rechnung.docx");
            ASSERT_TRUE(fs::exists(invoice)) << out.str();
            EXPECT_EQ(CorpusXml::packageFaults(invoice), std::vector<std::string>{});
            EXPECT_NO_THROW(ooxml::DocxApplication::create()->Documents()->Open(invoice.string()));
            const std::string text = pdfText(fs::path(invoice).replace_extension(".pdf"));
            for (std::size_t field = 0; field < PreparedFields.size(); ++field) {
                if (reading.shownFields.contains(PreparedFields[field])) {
                    EXPECT_NE(text.find(valueOf(field, row)), std::string::npos)
                        << PreparedFields[field] << " of row " << row << " missing in:\n"
                        << text;
                }
            }
            const auto shown = wordsOf(text);
            for (const auto& word : reading.outside) {
                EXPECT_TRUE(shown.contains(word)) << "'" << word << "' of the form lost in row " << row;
            }
        }
    }
    EXPECT_GE(merged, 58);
}

// Every corpus form prepared and converted as above, then merged three times: with the invoices
// left open, which the word processor fills one by one, and with the invoices only saved, which the
// run joins from the form it prepared once, by one thread and by two. The invoices are the same
// part by part.
TEST_F(AnalyzeCorpus, InvoicesJoinedFromThePreparedFormAreThoseTheWordProcessorFills) {
    const fs::path csv = folder_ / "Knifflig.csv";
    writeAwkwardControlFile(csv);
    CSVfile data;
    data.ReadFile(csv.string());
    QRCoder coder(data);
    QRImage image;
    BookmarkFiller filler(known_, data, coder, image, nullptr, {});
    int forms = 0;
    int preparedForms = 0;
    for (const auto& original : documents()) {
        SCOPED_TRACE(original.filename().string());
        const fs::path work = folder_ / ("j" + std::to_string(forms++));
        const fs::path converted = convertedIn(original, work);
        ASSERT_FALSE(converted.empty());
        std::ostringstream out;
        std::ostringstream err;
        EngineVerbs verbs(out, err, false);
        const auto word = ooxml::DocxApplication::create();
        preparedForms += PreparedForm::make(*word, converted.string(), known_, filler, work.string()) ? 1 : 0;
        const std::array<std::pair<std::string, int>, 3> runs{
            {{"offen", 1}, {"gespeichert", 1}, {"zwei", 2}}};
        for (const auto& [folder, jobs] : runs) {
            EngineVerbs::MergeRequest request{converted.string(),
                                              csv.string(),
                                              "&W&\\&R&-Rechnung.&E&",
                                              (work / folder).string(),
                                              {},
                                              false,
                                              jobs};
            request.choices.Close = folder != "offen";
            EXPECT_EQ(verbs.merge(request), EngineVerbs::ExitFine) << out.str() << err.str();
        }
        for (int row = 1; row <= 3; ++row) {
            const std::string name = "00000" + std::to_string(row) + "-Rechnung.docx";
            const auto byWord = partsOf(work / "offen" / name);
            EXPECT_EQ(partsOf(work / "gespeichert" / name), byWord) << "row " << row;
            EXPECT_EQ(partsOf(work / "zwei" / name), byWord) << "row " << row;
        }
    }
    EXPECT_GE(forms, 58);
    EXPECT_EQ(preparedForms, forms);
}

// Every corpus form prepared and converted as above, the payment part laid into it in one of its
// languages, then merged with the invoices left open, which the word processor fills, and only
// saved by two threads, which join what they can from the forms prepared once per shape of slip.
// The invoices are the same part by part.
TEST_F(AnalyzeCorpus, InvoicesWithTheQRSlipJoinedFromPreparedFormsAreThoseTheWordProcessorFills) {
    const fs::path csv = folder_ / "Zahlteil.csv";
    writeSlipControlFile(csv);
    CSVfile data;
    data.ReadFile(csv.string());
    QRCoder coder(data);
    QRImage image;
    ScriptedUserInterface ui;
    modESQR slip(ui, image);
    BookmarkFiller filler(known_, data, coder, image, &slip, {});
    const std::array<std::string, 4> languages{"Deutsch", "Französisch", "Italienisch", "Englisch"};
    int forms = 0;
    int preparedForms = 0;
    for (const auto& original : documents()) {
        SCOPED_TRACE(original.filename().string());
        const fs::path work = folder_ / ("s" + std::to_string(forms));
        const fs::path converted = convertedIn(original, work);
        ASSERT_FALSE(converted.empty());
        std::ostringstream out;
        std::ostringstream err;
        EngineVerbs verbs(out, err, false);
        SlipChoices choices;
        choices.language = languages[static_cast<std::size_t>(forms++) % languages.size()];
        const fs::path form = work / "Zahlteil.docx";
        ASSERT_EQ(BatchSlip(out, err).insert(converted.string(), form.string(), choices), 0) << err.str();
        const auto word = ooxml::DocxApplication::create();
        const auto ready =
            PreparedForms::make(*word, form.string(), known_, filler, work.string(), {1, 2, 3});
        preparedForms +=
            ready && ready->find(filler.slipShape(1)) && ready->find(filler.slipShape(2)) ? 1 : 0;
        std::array<std::optional<std::string>, 3> joined;
        for (int row = 1; ready && row <= 3; ++row) {
            if (const PreparedForm* serving = ready->find(filler.slipShape(row))) {
                joined.at(static_cast<std::size_t>(row - 1)) = serving->invoiceOf(filler, row);
            }
        }
        const std::string formText = ooxml::Package::open(form.string())->bytes("word/document.xml");
        for (const auto& [folder, jobs] : {std::pair{"offen", 1}, std::pair{"zwei", 2}}) {
            EngineVerbs::MergeRequest request{
                form.string(), csv.string(), "&W&\\&R&-Rechnung.&E&", (work / folder).string(), {},
                false,         jobs};
            request.choices.Close = std::string_view(folder) != "offen";
            EXPECT_EQ(verbs.merge(request), EngineVerbs::ExitFine) << out.str() << err.str();
        }
        for (int row = 1; row <= 3; ++row) {
            const std::string name = "00000" + std::to_string(row) + "-Rechnung.docx";
            const auto byWord = partsOf(work / "offen" / name);
            EXPECT_EQ(partsOf(work / "zwei" / name), byWord) << "row " << row;
            // Rows 1 and 2 are joined; row 3 goes through the word processor, which shortens its
            // message to fit the box and types its tabs.
            const auto& ours = joined.at(static_cast<std::size_t>(row - 1));
            const bool shortened = ellipses(byWord.at("word/document.xml")) > ellipses(formText);
            EXPECT_EQ(ours.has_value(), row != 3) << "row " << row;
            EXPECT_EQ(shortened, row == 3) << "row " << row;
            if (ours) {
                EXPECT_EQ(partsOf(*ooxml::Package::fromBytes(*ours)), byWord) << "row " << row;
            }
        }
    }
    EXPECT_GE(forms, 58);
    EXPECT_EQ(preparedForms, forms);
}

} // namespace
} // namespace wordbm::testing
