// The main text of a form on any XML: the document opens or is refused with a message; an opened
// one lists its stories, bookmarks, fields and sections, takes the values a merge types into its
// bookmarks, and what it saves opens again.
#include "ScratchFile.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/NewForm.h"
#include "engine/ooxml/Package.h"
#include "engine/ooxml/StoryListing.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"
#include "engine/word/Sections.h"

#include <cstdio>
#include <cstdlib>

using namespace wordbm;
using ooxml::DocxDocument;
using ooxml::Package;

namespace {

// A blank form made by the program itself, whose document part each input replaces.
const Package& blankForm() {
    static const std::unique_ptr<Package> form = [] {
        const ScratchFile file("blank.docx");
        ooxml::NewForm::create("", file.path());
        return Package::open(file.path());
    }();
    return *form;
}

void readEverything(DocxDocument& document) {
    ooxml::StoryListing::stories(document);
    ooxml::StoryListing::shapes(document);
    auto bookmarks = document.Bookmarks();
    bookmarks->ShowHidden(true);
    for (int i = 1; i <= bookmarks->Count(); ++i) {
        auto range = bookmarks->Item(i)->Range();
        range->Text();
        range->Fields()->Count();
    }
    auto fields = document.Fields();
    for (int i = 1; i <= fields->Count(); ++i) {
        fields->Item(i)->Code()->Text();
        fields->Item(i)->Result()->Text();
    }
    auto sections = document.Sections();
    for (int s = 1; s <= sections->Count(); ++s) {
        for (auto parts : {sections->Item(s)->Headers(), sections->Item(s)->Footers()}) {
            for (int i = 1; i <= parts->Count(); ++i) {
                parts->Item(i)->Range()->Text();
            }
        }
    }
}

// As the merge fills an invoice: every bookmark by name, a filled one swallowing those inside it.
void fillBookmarks(DocxDocument& document) {
    auto bookmarks = document.Bookmarks();
    std::vector<std::string> names;
    for (int i = 1; i <= bookmarks->Count(); ++i) {
        names.push_back(bookmarks->Item(i)->Name());
    }
    for (const auto& name : names) {
        if (bookmarks->Exists(name)) {
            bookmarks->Item(name)->Range()->Text("Muster AG\r8000 Zürich");
        }
    }
}

std::shared_ptr<DocxDocument> openWith(std::unique_ptr<Package> package) {
    return DocxDocument::open("Rechnung.docx", std::move(package));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto package = blankForm().clone();
    package->setBytes(package->mainDocumentPart(), std::string(reinterpret_cast<const char*>(data), size),
                      "");
    std::shared_ptr<DocxDocument> document;
    try {
        document = openWith(std::move(package));
        readEverything(*document);
        fillBookmarks(*document);
        readEverything(*document);
    } catch (const AutomationError&) {
        return 0; // damaged XML is refused with a message
    }
    const std::string saved = document->package().saveToBytes();
    try {
        readEverything(*openWith(Package::fromBytes(saved)));
    } catch (const AutomationError& error) {
        std::fprintf(stderr, "a filled form does not open again: %s\n", error.what());
        std::abort();
    }
    return 0;
}
