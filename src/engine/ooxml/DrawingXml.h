#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>

// Small pugixml helpers shared by the drawing classes. Names are qualified names as Word writes
// them ("wp:anchor"); drawings always use Word's standard prefixes.
namespace wordbm::ooxml::drawingXml {

using Attributes = std::initializer_list<std::pair<const char*, std::string_view>>;

// The child reached by following `names` one level at a time; null when a step is missing.
pugi::xml_node path(pugi::xml_node from, std::initializer_list<const char*> names);

enum class Visit { Enter, Skip, Stop };

// Calls `visit` for every element below `from` in document order, without recursion (a hostile
// part may nest deeply); Skip leaves out the element's children, Stop ends the walk.
void forEachElement(pugi::xml_node from, const std::function<Visit(pugi::xml_node)>& visit);

// The first element named `name` below `from` (not `from` itself), searched without recursion.
pugi::xml_node firstDescendant(pugi::xml_node from, std::string_view name);

pugi::xml_node append(pugi::xml_node parent, const char* name, Attributes attributes = {});
pugi::xml_node prepend(pugi::xml_node parent, const char* name, Attributes attributes = {});

// Sets the attribute, adding it where missing.
void setAttribute(pugi::xml_node node, const char* name, const std::string& value);

// The attribute as a whole number; `fallback` when it is missing or not a number.
std::int64_t integer(pugi::xml_node node, const char* attribute, std::int64_t fallback = 0);
std::int64_t integer(std::string_view text, std::int64_t fallback = 0);

bool named(pugi::xml_node node, std::string_view name);
// The part of a qualified name after the colon.
std::string_view localName(pugi::xml_node node);
std::string_view prefix(pugi::xml_node node);

// The closest ancestor (or `from` itself) named `name`, stopping at `stop` when given.
pugi::xml_node ancestor(pugi::xml_node from, std::string_view name, pugi::xml_node stop = {});

// The mc:AlternateContent whose Choice holds `node` (nearest first); null when none does.
pugi::xml_node alternateContentAround(pugi::xml_node node);

} // namespace wordbm::ooxml::drawingXml
