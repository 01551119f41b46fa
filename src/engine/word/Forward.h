#pragma once

#include <memory>

// Word's object model as abstract classes with Word's names. Objects are handed out as shared
// pointers, as automation hands out references; items are numbered from 1.
namespace wordbm::word {

class Application;
class Bookmark;
class Bookmarks;
class CanvasShapes;
class Document;
class Documents;
class Field;
class Fields;
class Font;
class HeaderFooter;
class HeadersFooters;
class LineFormat;
class PageSetup;
class MailMerge;
class Range;
class Section;
class Sections;
class Selection;
class Shape;
class Shapes;
class TextFrame;

using ApplicationPtr = std::shared_ptr<Application>;
using BookmarkPtr = std::shared_ptr<Bookmark>;
using BookmarksPtr = std::shared_ptr<Bookmarks>;
using CanvasShapesPtr = std::shared_ptr<CanvasShapes>;
using DocumentPtr = std::shared_ptr<Document>;
using DocumentsPtr = std::shared_ptr<Documents>;
using FieldPtr = std::shared_ptr<Field>;
using FieldsPtr = std::shared_ptr<Fields>;
using FontPtr = std::shared_ptr<Font>;
using HeaderFooterPtr = std::shared_ptr<HeaderFooter>;
using HeadersFootersPtr = std::shared_ptr<HeadersFooters>;
using LineFormatPtr = std::shared_ptr<LineFormat>;
using PageSetupPtr = std::shared_ptr<PageSetup>;
using MailMergePtr = std::shared_ptr<MailMerge>;
using RangePtr = std::shared_ptr<Range>;
using SectionPtr = std::shared_ptr<Section>;
using SectionsPtr = std::shared_ptr<Sections>;
using SelectionPtr = std::shared_ptr<Selection>;
using ShapePtr = std::shared_ptr<Shape>;
using ShapesPtr = std::shared_ptr<Shapes>;
using TextFramePtr = std::shared_ptr<TextFrame>;

} // namespace wordbm::word
