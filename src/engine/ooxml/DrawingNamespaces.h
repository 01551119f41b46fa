#pragma once

#include <pugixml.hpp>

namespace wordbm::ooxml {

// pugixml does not resolve namespaces, so the drawing classes write Word's standard prefixes and
// make sure each one is bound to the right name where it is used.
class DrawingNamespaces {
public:
    // Binds w, r, wp, wpc, wps, mc, v, o and w10 for `element`: on the part's root element where a
    // prefix is missing there; on `element` itself where the root binds the prefix to another name.
    static void declare(pugi::xml_node element);

    // Copies onto `to` the declarations made on `from` and its ancestors below `stop` (not on
    // `stop` or above) for the prefixes that `to` uses, so that `to`, a copy of `from` placed
    // elsewhere under `stop`, reads the same.
    static void carry(pugi::xml_node from, pugi::xml_node stop, pugi::xml_node to);

    static constexpr const char* Wordprocessing =
        "http://schemas.openxmlformats.org/wordprocessingml/2006/main";
    static constexpr const char* Relationships =
        "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    static constexpr const char* WordDrawing =
        "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing";
    static constexpr const char* Main = "http://schemas.openxmlformats.org/drawingml/2006/main";
    static constexpr const char* Picture = "http://schemas.openxmlformats.org/drawingml/2006/picture";
    static constexpr const char* Canvas =
        "http://schemas.microsoft.com/office/word/2010/wordprocessingCanvas";
    static constexpr const char* Shape = "http://schemas.microsoft.com/office/word/2010/wordprocessingShape";
    static constexpr const char* Group = "http://schemas.microsoft.com/office/word/2010/wordprocessingGroup";
    static constexpr const char* Compatibility =
        "http://schemas.openxmlformats.org/markup-compatibility/2006";
    static constexpr const char* Vml = "urn:schemas-microsoft-com:vml";
    static constexpr const char* VmlOffice = "urn:schemas-microsoft-com:office:office";
    static constexpr const char* VmlWord = "urn:schemas-microsoft-com:office:word";
};

} // namespace wordbm::ooxml
