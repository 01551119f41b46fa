#pragma once

#include "engine/word/Forward.h"

#include <string>

namespace wordbm::word {

// Sizes and positions in points.
class Shapes {
public:
    virtual ~Shapes() = default;
    virtual int Count() const = 0;
    virtual ShapePtr Item(int index) = 0;
    virtual ShapePtr Item(const std::string& name) = 0;
    // A drawing canvas anchored at the selection's paragraph (or the anchor's), positioned
    // relative to the page.
    virtual ShapePtr AddCanvas(float left, float top, float width, float height,
                               const RangePtr& anchor = nullptr) = 0;
};

class Shape {
public:
    virtual ~Shape() = default;
    virtual std::string Name() const = 0;
    virtual void Name(const std::string& name) = 0;
    virtual int Type() const = 0; // msoCanvas, msoTextBox, msoPicture, msoGroup
    virtual float Left() const = 0;
    virtual float Top() const = 0;
    virtual float Width() const = 0;
    virtual float Height() const = 0;
    virtual void Delete() = 0;
    virtual TextFramePtr TextFrame() = 0;
    virtual CanvasShapesPtr CanvasItems() = 0; // throws when the shape is no canvas
    virtual LineFormatPtr Line() = 0;
};

class TextFrame {
public:
    virtual ~TextFrame() = default;
    virtual bool HasText() const = 0;
    virtual RangePtr TextRange() = 0; // the text box's story
};

// The shapes inside a drawing canvas, placed relative to the canvas.
class CanvasShapes {
public:
    virtual ~CanvasShapes() = default;
    virtual int Count() const = 0;
    virtual ShapePtr Item(int index) = 0;
    // Orientation 1 is horizontal text.
    virtual ShapePtr AddTextbox(int orientation, float left, float top, float width, float height) = 0;
    virtual ShapePtr AddPicture(const std::string& fileName, bool linkToFile, bool saveWithDocument,
                                float left, float top, float width, float height) = 0;
};

class LineFormat {
public:
    virtual ~LineFormat() = default;
    virtual bool Visible() const = 0;
    virtual void Visible(bool visible) = 0;
};

} // namespace wordbm::word
