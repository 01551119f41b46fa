#include "app/FormInspection.h"

#include "data/MergeFieldName.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/StoryListing.h"
#include "engine/word/AutomationError.h"
#include "engine/word/Documents.h"
#include "support/FileOps.h"
#include "support/Strings.h"

#include <cstdio>
#include <ostream>

namespace wordbm {
namespace {

using ooxml::ShapeReport;
using ooxml::StoryReport;

// A damaged form may carry bytes that are no UTF-8; each becomes U+FFFD so the output stays JSON.
std::string jsonString(const std::string& text) {
    std::string quoted = "\"";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (static_cast<unsigned char>(c) >= 0x80) {
            const std::size_t length = utf8SequenceLength(text, at);
            quoted += length == 0 ? std::string("\\ufffd") : text.substr(at, length);
            at += length == 0 ? 0 : length - 1;
            continue;
        }
        switch (c) {
        case '"':
            quoted += "\\\"";
            break;
        case '\\':
            quoted += "\\\\";
            break;
        case '\n':
            quoted += "\\n";
            break;
        case '\r':
            quoted += "\\r";
            break;
        case '\t':
            quoted += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                quoted += escaped;
            } else {
                quoted += c;
            }
        }
    }
    return quoted + "\"";
}

// Word's paragraph mark, line break and cell marks as readable characters.
std::string visible(const std::string& text) {
    std::string shown;
    for (const char c : text) {
        if (c == '\r') {
            shown += "\xC2\xB6"; // pilcrow
        } else if (c == '\v') {
            shown += "\xE2\x86\xB5"; // downwards arrow with corner leftwards
        } else if (static_cast<unsigned char>(c) < 0x20 && c != '\t') {
            shown += ' ';
        } else {
            shown += c;
        }
    }
    return shown;
}

void writeJson(std::ostream& out, const std::vector<StoryReport>& stories,
               const std::vector<ShapeReport>& shapes) {
    out << "{\"stories\":[";
    for (std::size_t s = 0; s < stories.size(); ++s) {
        const auto& story = stories[s];
        out << (s ? "," : "") << "{\"story\":" << jsonString(story.story) << ",\"bookmarks\":[";
        for (std::size_t b = 0; b < story.bookmarks.size(); ++b) {
            const auto& mark = story.bookmarks[b];
            out << (b ? "," : "") << "{\"name\":" << jsonString(mark.name)
                << ",\"hidden\":" << (mark.hidden ? "true" : "false") << ",\"text\":" << jsonString(mark.text)
                << ",\"after\":" << jsonString(mark.after) << "}";
        }
        out << "],\"fields\":[";
        for (std::size_t f = 0; f < story.fields.size(); ++f) {
            const auto& field = story.fields[f];
            const auto name = MergeFieldName(field.code);
            out << (f ? "," : "") << "{\"code\":" << jsonString(field.code)
                << ",\"merge_name\":" << (name ? jsonString(*name) : "null") << "}";
        }
        out << "]}";
    }
    out << "],\"shapes\":[";
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        out << (i ? "," : "") << "{\"name\":" << jsonString(shapes[i].name) << ",\"type\":" << shapes[i].type
            << ",\"story\":" << jsonString(shapes[i].story) << "}";
    }
    out << "]}\n";
}

void writeText(std::ostream& out, const std::vector<StoryReport>& stories,
               const std::vector<ShapeReport>& shapes) {
    for (const auto& story : stories) {
        if (story.bookmarks.empty() && story.fields.empty()) {
            continue;
        }
        out << story.story << '\n';
        for (const auto& mark : story.bookmarks) {
            out << "  Textmarke " << mark.name << (mark.hidden ? " (verborgen)" : "") << ": "
                << visible(mark.text) << '\n';
        }
        for (const auto& field : story.fields) {
            out << "  Feld {" << visible(field.code) << "}";
            if (const auto name = MergeFieldName(field.code)) {
                out << " -> Seriendruckfeld " << *name;
            }
            out << '\n';
        }
    }
    for (const auto& shape : shapes) {
        out << "Form " << shape.name << " (Typ " << shape.type << ") in " << shape.story << '\n';
    }
}

} // namespace

int FormInspection::run(const std::string& formPath, bool json) {
    if (const auto problem = FileOpenCheck(formPath); !problem.empty()) {
        err_ << problem << '\n';
        return 2;
    }
    try {
        const auto word = ooxml::DocxApplication::create();
        const auto document =
            std::dynamic_pointer_cast<ooxml::DocxDocument>(word->Documents()->Open(formPath));
        if (!document) {
            err_ << formPath << "\nKann Datei nicht öffnen!\n";
            return 2;
        }
        const auto stories = ooxml::StoryListing::stories(*document);
        const auto shapes = ooxml::StoryListing::shapes(*document);
        json ? writeJson(out_, stories, shapes) : writeText(out_, stories, shapes);
        word->Quit(0);
        return 0;
    } catch (const AutomationError& error) {
        err_ << "Fehler beim Öffnen von\n" << formPath << '\n' << error.Description() << '\n';
        return 2;
    }
}

} // namespace wordbm
