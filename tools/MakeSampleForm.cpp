// Writes examples/Rechnung.docx: the one-page invoice form of the sample billing run. The XML is
// written here by hand, then the form is opened in the embedded word processor, which places a
// "kdx6_" bookmark over every "[Field]" placeholder of the main text through Bookmarks.Add, the
// way a person does with the insert command. The bookmark suffixes come from a fixed seed, so the
// committed form only changes when this program does.
//
//   make-sample-form OUTPUT.docx
#include "data/KnownFields.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/ZipRewriter.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Documents.h"
#include "engine/word/Range.h"
#include "engine/word/TextLength.h"
#include "support/FileOps.h"
#include "support/Strings.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace {

using wordbm::KnownFields;

constexpr const char* Namespaces =
    R"(xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main" )"
    R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships")";
constexpr const char* XmlDeclaration = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";

// Twips: the page is A4 with 2.5 cm margins; the address block stands in a right window envelope.
constexpr int TextWidth = 9638;
constexpr int AddressIndent = 5103;

std::string escaped(const std::string& text) {
    std::string out;
    wordbm::appendXmlText(out, text);
    return out;
}

struct Style {
    bool bold = false;
    int halfPoints = 0; // 0: the document's 10 pt
    std::string colour;
};

std::string run(const std::string& text, const Style& style = {}) {
    std::string properties;
    if (style.bold) {
        properties += "<w:b/>";
    }
    if (!style.colour.empty()) {
        properties += R"(<w:color w:val=")" + style.colour + R"("/>)";
    }
    if (style.halfPoints > 0) {
        const auto size = std::to_string(style.halfPoints);
        properties += R"(<w:sz w:val=")" + size + R"("/><w:szCs w:val=")" + size + R"("/>)";
    }
    return "<w:r>" + (properties.empty() ? std::string() : "<w:rPr>" + properties + "</w:rPr>") +
           R"(<w:t xml:space="preserve">)" + escaped(text) + "</w:t></w:r>";
}

// A placeholder stays one run, so the bookmark covers exactly its text.
std::string field(const std::string& name, const Style& style = {}) {
    return run("[" + name + "]", style);
}

std::string paragraph(const std::string& runs, const std::string& properties = {}) {
    return "<w:p>" + (properties.empty() ? std::string() : "<w:pPr>" + properties + "</w:pPr>") + runs +
           "</w:p>";
}

std::string indented(int left) {
    return R"(<w:ind w:left=")" + std::to_string(left) + R"("/>)";
}

std::string spacedAfter(int twips) {
    return R"(<w:spacing w:after=")" + std::to_string(twips) + R"("/>)";
}

constexpr const char* RightAligned = R"(<w:jc w:val="right"/>)";

std::string cell(int width, const std::string& paragraphs, const std::string& shading = {}) {
    std::string properties = R"(<w:tcW w:w=")" + std::to_string(width) + R"(" w:type="dxa"/>)";
    if (!shading.empty()) {
        properties += R"(<w:shd w:val="clear" w:color="auto" w:fill=")" + shading + R"("/>)";
    }
    return "<w:tc><w:tcPr>" + properties + "</w:tcPr>" + paragraphs + "</w:tc>";
}

std::string table(const std::vector<int>& widths, const std::string& rows, bool ruled) {
    const std::string borders =
        ruled ? R"(<w:tblBorders><w:top w:val="single" w:sz="4" w:space="0" w:color="808080"/>)"
                R"(<w:bottom w:val="single" w:sz="4" w:space="0" w:color="808080"/>)"
                R"(<w:insideH w:val="single" w:sz="4" w:space="0" w:color="BFBFBF"/></w:tblBorders>)"
              : std::string();
    std::string grid;
    int total = 0;
    for (int width : widths) {
        grid += R"(<w:gridCol w:w=")" + std::to_string(width) + R"("/>)";
        total += width;
    }
    return R"(<w:tbl><w:tblPr><w:tblW w:w=")" + std::to_string(total) + R"(" w:type="dxa"/>)" + borders +
           R"(<w:tblLayout w:type="fixed"/><w:tblCellMar><w:left w:w="0" w:type="dxa"/>)"
           R"(<w:right w:w="113" w:type="dxa"/></w:tblCellMar></w:tblPr><w:tblGrid>)" +
           grid + "</w:tblGrid>" + rows + "</w:tbl>";
}

std::string row(const std::string& cells) {
    return "<w:tr>" + cells + "</w:tr>";
}

std::string labelRow(const std::string& label, const std::string& value) {
    return row(cell(2268, paragraph(run(label))) + cell(TextWidth - 2268, paragraph(value)));
}

std::string amountRow(const std::string& label, const std::string& value, bool bold = false) {
    const Style style{bold, 0, {}};
    return row(
        cell(7370, paragraph(label, spacedAfter(40))) +
        cell(TextWidth - 7370, paragraph(field(value, style), std::string(RightAligned) + spacedAfter(40))));
}

std::string addressBlock() {
    std::string block =
        paragraph(run("Treuhand Sonnenberg AG, Seefeldstrasse 112, 8008 Zürich", {false, 14, "595959"}),
                  indented(AddressIndent) + spacedAfter(80));
    for (int line = 1; line <= 5; ++line) {
        block += paragraph(field("KliAdr" + std::to_string(line)), indented(AddressIndent));
    }
    return block;
}

std::string invoiceHead() {
    const std::string data = labelRow("Kundenkonto", field("KliKonto")) +
                             labelRow("Mandat", field("GeschTxt")) +
                             labelRow("Zeitraum", field("GeschVon") + run(" bis ") + field("GeschBis")) +
                             labelRow("Sachbearbeitung", field("Person"));
    return paragraph("") + paragraph(run("Zürich, ") + field("RgDatum"), spacedAfter(240)) +
           paragraph(run("Rechnung Nr. ", {true, 28, {}}) + field("RgNummer", {true, 28, {}}),
                     spacedAfter(200)) +
           table({2268, TextWidth - 2268}, data, false);
}

std::string invoiceTable() {
    const Style bold{true, 0, {}};
    const std::string head =
        row(cell(7370, paragraph(run("Leistung", bold), spacedAfter(40)), "E7EEF5") +
            cell(TextWidth - 7370,
                 paragraph(run("Betrag CHF", bold), std::string(RightAligned) + spacedAfter(40)), "E7EEF5"));
    const std::string rows = head +
                             amountRow(run("Honorar gemäss Aufwand, ") + field("GeschTxt"), "KliGebu") +
                             amountRow(run("Auslagen"), "KliAusl") +
                             amountRow(run("Mehrwertsteuer ") + field("MWSTSatz") + run(" %"), "KliMWST") +
                             amountRow(run("Total inkl. MWST", bold), "KliTot2", true);
    return paragraph("") +
           paragraph(run("Für unsere Leistungen erlauben wir uns, Ihnen wie folgt Rechnung zu stellen:"),
                     spacedAfter(160)) +
           table({7370, TextWidth - 7370}, rows, true);
}

// The payment terms; the QR payment part itself is laid in below the text by insert-slip, which
// ends the page's text above it (179 mm from the top of the page): the whole invoice fits there.
std::string paymentTerms() {
    return paragraph("") +
           paragraph(run("Zahlbar innert ") + field("RgLimit") + run(" Tagen, spätestens am ") +
                     field("RgDue") + run(". MWST-Nr. ") + field("MWSTID") + run(".")) +
           paragraph(run("Bitte verwenden Sie für die Zahlung den QR-Zahlteil unten."), spacedAfter(200));
}

std::string documentXml() {
    const std::string body = addressBlock() + invoiceHead() + invoiceTable() + paymentTerms() +
                             paragraph(run("Freundliche Grüsse, Treuhand Sonnenberg AG, ") + field("Person"));
    return std::string(XmlDeclaration) + "<w:document " + Namespaces + "><w:body>" + body +
           R"(<w:sectPr><w:headerReference w:type="default" r:id="rIdHeader"/>)"
           R"(<w:pgSz w:w="11906" w:h="16838"/><w:pgMar w:top="2268" w:right="1134" w:bottom="1134" )"
           R"(w:left="1134" w:header="567" w:footer="454" w:gutter="0"/></w:sectPr></w:body></w:document>)";
}

std::string headerXml() {
    const std::string rule =
        R"(<w:pBdr><w:bottom w:val="single" w:sz="8" w:space="4" w:color="1F4E79"/></w:pBdr>)";
    return std::string(XmlDeclaration) + "<w:hdr " + Namespaces + ">" +
           paragraph(run("Treuhand Sonnenberg AG", {true, 32, "1F4E79"})) +
           paragraph(run("Treuhand · Steuern · Buchhaltung · Lohnwesen", {false, 16, "595959"}), rule) +
           "</w:hdr>";
}

std::string stylesXml() {
    return std::string(XmlDeclaration) + "<w:styles " + Namespaces +
           R"(><w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii="Arial" w:hAnsi="Arial" w:cs="Arial"/>)"
           R"(<w:sz w:val="20"/><w:szCs w:val="20"/><w:lang w:val="de-CH"/></w:rPr></w:rPrDefault>)"
           R"(<w:pPrDefault><w:pPr><w:spacing w:after="0" w:line="264" w:lineRule="auto"/></w:pPr>)"
           R"(</w:pPrDefault></w:docDefaults><w:style w:type="paragraph" w:default="1" w:styleId="Standard">)"
           R"(<w:name w:val="Normal"/></w:style></w:styles>)";
}

std::string contentTypesXml() {
    const std::string wml = "application/vnd.openxmlformats-officedocument.wordprocessingml.";
    return std::string(XmlDeclaration) +
           R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
           R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
           R"(<Default Extension="xml" ContentType="application/xml"/>)"
           R"(<Override PartName="/word/document.xml" ContentType=")" +
           wml +
           R"(document.main+xml"/>)"
           R"(<Override PartName="/word/styles.xml" ContentType=")" +
           wml +
           R"(styles+xml"/>)"
           R"(<Override PartName="/word/header1.xml" ContentType=")" +
           wml + R"(header+xml"/></Types>)";
}

std::string packageRelsXml() {
    return std::string(XmlDeclaration) +
           R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
           R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="word/document.xml"/>)"
           R"(</Relationships>)";
}

std::string documentRelsXml() {
    const std::string base = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    return std::string(XmlDeclaration) +
           R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
           R"(<Relationship Id="rIdStyles" Type=")" +
           base +
           R"(styles" Target="styles.xml"/>)"
           R"(<Relationship Id="rIdHeader" Type=")" +
           base +
           R"(header" Target="header1.xml"/>)"
           R"(</Relationships>)";
}

// An empty archive is its end-of-directory record alone.
std::string packageBytes() {
    const std::string empty = std::string("PK\x05\x06", 4) + std::string(18, '\0');
    wordbm::ooxml::ZipRewriter zip(empty);
    zip.add("[Content_Types].xml", contentTypesXml());
    zip.add("_rels/.rels", packageRelsXml());
    zip.add("word/document.xml", documentXml());
    zip.add("word/_rels/document.xml.rels", documentRelsXml());
    zip.add("word/styles.xml", stylesXml());
    zip.add("word/header1.xml", headerXml());
    return zip.finish();
}

// Every "[Field]" of the main text gets its bookmark; returns how many were placed.
int placeBookmarks(wordbm::word::Document& form) {
    std::mt19937 draws(20261121);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const std::string text = form.Content()->Text();
    int placed = 0;
    for (std::size_t open = text.find('['); open != std::string::npos; open = text.find('[', open + 1)) {
        const std::size_t close = text.find(']', open);
        const std::string name = text.substr(open + 1, close - open - 1);
        const long start = wordbm::word::TextLength(std::string_view(text).substr(0, open));
        const long end =
            start + wordbm::word::TextLength(std::string_view(text).substr(open, close - open + 1));
        const std::string bookmark = "kdx6_" + name + "_" + KnownFields::suffixDigits(unit(draws));
        form.Bookmarks()->Add(bookmark, form.Range(start, end));
        ++placed;
    }
    return placed;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make-sample-form OUTPUT.docx\n";
        return 2;
    }
    const std::filesystem::path output = std::filesystem::absolute(argv[1]);
    const std::filesystem::path draft = output.string() + ".draft.docx";
    try {
        if (const auto failure = wordbm::writeFileAtomic(draft.string(), packageBytes()); !failure.empty()) {
            std::cerr << failure << "\n";
            return 1;
        }
        const auto word = wordbm::ooxml::DocxApplication::create();
        const auto form = word->Documents()->Open(draft.string());
        const int placed = placeBookmarks(*form);
        form->SaveAs2(output.string());
        word->Quit();
        std::filesystem::remove(draft);
        std::cout << output.string() << ": " << placed << " Textmarken\n";
    } catch (const std::exception& failure) {
        std::filesystem::remove(draft);
        std::cerr << failure.what() << "\n";
        return 1;
    }
    return 0;
}
