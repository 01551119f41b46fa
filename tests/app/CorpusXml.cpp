#include "CorpusXml.h"

#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <zip.h>

namespace wordbm::testing {

namespace fs = std::filesystem;

namespace {

// The story parts and the main document's relationships; nothing else is compared.
const std::regex ReadParts(
    "word/(document|header[0-9]*|footer[0-9]*|footnotes|endnotes)\\.xml|word/_rels/document\\.xml\\.rels");

std::string readEntry(zip_t* archive, zip_uint64_t index) {
    zip_stat_t stat;
    if (zip_stat_index(archive, index, 0, &stat) != 0) {
        return {};
    }
    std::string bytes(stat.size, '\0');
    zip_file_t* file = zip_fopen_index(archive, index, 0);
    if (!file) {
        return {};
    }
    const auto read = zip_fread(file, bytes.data(), stat.size);
    zip_fclose(file);
    bytes.resize(read < 0 ? 0 : static_cast<std::size_t>(read));
    return bytes;
}

} // namespace

bool named(pugi::xml_node node, const char* name) {
    return std::string_view(node.name()) == name;
}

void forEachElement(pugi::xml_node scope, const std::function<bool(pugi::xml_node)>& enter) {
    for (pugi::xml_node child = scope.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element && !named(child, "mc:Fallback") && enter(child)) {
            forEachElement(child, enter);
        }
    }
}

CorpusXml::CorpusXml(const fs::path& docx) : source_(docx) {
    int error = 0;
    zip_t* archive = zip_open(docx.c_str(), ZIP_RDONLY, &error);
    if (!archive) {
        return;
    }
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        const std::string name = zip_get_name(archive, static_cast<zip_uint64_t>(i), 0);
        if (!std::regex_match(name, ReadParts)) {
            continue;
        }
        const std::string bytes = readEntry(archive, static_cast<zip_uint64_t>(i));
        auto xml = std::make_unique<pugi::xml_document>();
        if (xml->load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata)) {
            parts_[name] = std::move(xml);
        }
    }
    zip_close(archive);
}

pugi::xml_node CorpusXml::root(const std::string& part) const {
    const auto found = parts_.find(part);
    return found == parts_.end() ? pugi::xml_node() : found->second->document_element();
}

std::vector<std::string> CorpusXml::partNames() const {
    std::vector<std::string> names;
    for (const auto& [name, xml] : parts_) {
        names.push_back(name);
    }
    return names;
}

std::string CorpusXml::documentTarget(const std::string& id) const {
    const pugi::xml_node rels = root("word/_rels/document.xml.rels");
    for (const pugi::xml_node rel : rels.children("Relationship")) {
        if (id == rel.attribute("Id").value()) {
            const std::string target = rel.attribute("Target").value();
            return target.rfind('/', 0) == 0 ? target.substr(1) : "word/" + target;
        }
    }
    return {};
}

void CorpusXml::saveCopy(const fs::path& target, const std::vector<std::string>& changedParts) const {
    fs::copy_file(source_, target, fs::copy_options::overwrite_existing);
    int error = 0;
    zip_t* archive = zip_open(target.c_str(), 0, &error);
    if (!archive) {
        throw std::runtime_error("cannot open the copy " + target.string());
    }
    // libzip reads the buffers only when the archive is closed.
    std::vector<std::string> texts;
    texts.reserve(changedParts.size());
    for (const auto& part : changedParts) {
        std::ostringstream xml;
        parts_.at(part)->save(xml, "", pugi::format_raw);
        texts.push_back(xml.str());
        zip_source_t* source = zip_source_buffer(archive, texts.back().data(), texts.back().size(), 0);
        const zip_int64_t index = zip_name_locate(archive, part.c_str(), 0);
        if (!source || index < 0 ||
            zip_file_replace(archive, static_cast<zip_uint64_t>(index), source, 0) < 0) {
            zip_source_free(source);
            zip_discard(archive);
            throw std::runtime_error("cannot replace " + part);
        }
    }
    if (zip_close(archive) != 0) {
        zip_discard(archive);
        throw std::runtime_error("cannot write " + target.string());
    }
}

namespace {

// "word/_rels/document.xml.rels" and "media/a.png" give "word/media/a.png"; "/x" is absolute.
std::string resolveTarget(const std::string& relsPart, const std::string& target) {
    if (target.rfind('/', 0) == 0) {
        return target.substr(1);
    }
    const auto rels = fs::path(relsPart);
    const auto folder = rels.parent_path().parent_path();
    return (folder / target).lexically_normal().generic_string();
}

} // namespace

std::vector<std::string> CorpusXml::packageFaults(const fs::path& docx) {
    std::vector<std::string> faults;
    int error = 0;
    zip_t* archive = zip_open(docx.c_str(), ZIP_RDONLY, &error);
    if (!archive) {
        return {"not a zip archive"};
    }
    std::set<std::string> entries;
    std::map<std::string, std::string> relsParts;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        const std::string name = zip_get_name(archive, static_cast<zip_uint64_t>(i), 0);
        entries.insert(name);
        const bool rels = name.size() > 5 && name.substr(name.size() - 5) == ".rels";
        if (!rels && (name.size() < 4 || name.substr(name.size() - 4) != ".xml")) {
            continue;
        }
        const std::string bytes = readEntry(archive, static_cast<zip_uint64_t>(i));
        pugi::xml_document xml;
        if (!xml.load_buffer(bytes.data(), bytes.size())) {
            faults.push_back(name + " does not parse");
        } else if (rels) {
            relsParts[name] = bytes;
        }
    }
    zip_close(archive);
    for (const auto& [part, bytes] : relsParts) {
        pugi::xml_document xml;
        xml.load_buffer(bytes.data(), bytes.size());
        for (const pugi::xml_node rel : xml.document_element().children("Relationship")) {
            if (std::string_view(rel.attribute("TargetMode").value()) == "External") {
                continue;
            }
            const std::string target = resolveTarget(part, rel.attribute("Target").value());
            if (!entries.contains(target)) {
                faults.push_back(part + ": target " + target + " is missing");
            }
        }
    }
    return faults;
}

bool CorpusXml::isStrict(const fs::path& docx) {
    std::ifstream manifest(docx.parent_path() / "MANIFEST.tsv");
    for (std::string line; std::getline(manifest, line);) {
        if (line.rfind(docx.filename().string() + "\t", 0) == 0) {
            return line.find("Strict") != std::string::npos;
        }
    }
    return false;
}

// A complex field's code goes to the innermost field still in its code; instruction text after a
// field's separate belongs to its result, not to any code. Deleted revisions are read as accepted.
std::vector<XmlField> fieldsIn(pugi::xml_node scope, bool ownStoryOnly) {
    struct Open {
        XmlField field;
        bool inResult = false;
    };
    std::vector<Open> open;
    std::vector<XmlField> fields;
    const auto begin = [&](XmlField field) {
        for (auto& outer : open) {
            outer.field.nested = true;
        }
        field.nested = !open.empty();
        open.push_back({std::move(field)});
    };
    const auto end = [&] {
        fields.push_back(std::move(open.back().field));
        open.pop_back();
    };
    const std::function<void(pugi::xml_node)> visit = [&](pugi::xml_node node) {
        for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
            if (named(child, "mc:Fallback") || (ownStoryOnly && named(child, "w:txbxContent")) ||
                named(child, "w:del") || named(child, "w:moveFrom")) {
                continue;
            }
            if (named(child, "w:fldSimple")) {
                begin({child.attribute("w:instr").value(), child, {}});
                open.back().inResult = true;
                visit(child);
                end();
                continue;
            }
            if (named(child, "w:instrText") && !open.empty() && !open.back().inResult) {
                open.back().field.code += child.text().get();
                open.back().field.instructions.push_back(child);
            } else if (named(child, "w:fldChar")) {
                const std::string_view type = child.attribute("w:fldCharType").value();
                if (type == "begin") {
                    begin({});
                } else if (type == "separate" && !open.empty()) {
                    open.back().inResult = true;
                } else if (type == "end" && !open.empty()) {
                    end();
                }
            }
            visit(child);
        }
    };
    visit(scope);
    return fields;
}

std::vector<std::string> bookmarksIn(pugi::xml_node scope) {
    std::vector<std::string> names;
    forEachElement(scope, [&names](pugi::xml_node node) {
        if (named(node, "w:bookmarkStart")) {
            names.emplace_back(node.attribute("w:name").value());
        }
        return true;
    });
    return names;
}

bool isMergeCode(std::string code) {
    code.erase(0, code.find_first_not_of(' '));
    return code.rfind("MERGEFIELD ", 0) == 0;
}

} // namespace wordbm::testing
