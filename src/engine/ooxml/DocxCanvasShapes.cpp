#include "engine/ooxml/DocxCanvasShapes.h"

#include "engine/ooxml/DocxDocument.h"
#include "engine/ooxml/DocxShape.h"
#include "engine/ooxml/DrawingCanvas.h"
#include "engine/ooxml/MediaParts.h"
#include "engine/ooxml/Package.h"
#include "engine/word/AutomationError.h"
#include "support/FileOps.h"

namespace wordbm::ooxml {

int DocxCanvasShapes::Count() const {
    return static_cast<int>(DrawingCanvas(canvas_->checked()).items().size());
}

word::ShapePtr DocxCanvasShapes::Item(int index) {
    const auto items = DrawingCanvas(canvas_->checked()).items();
    if (index < 1 || index > static_cast<int>(items.size())) {
        throw AutomationError("Das angeforderte Element des Zeichenbereichs ist nicht vorhanden.");
    }
    return std::make_shared<DocxShape>(canvas_->document().shared_from_this(), &canvas_->holder(),
                                       items[index - 1]);
}

word::ShapePtr DocxCanvasShapes::AddTextbox(int orientation, float left, float top, float width,
                                            float height) {
    DrawingCanvas canvas(canvas_->checked());
    auto& document = canvas_->document();
    const unsigned id = document.nextDrawingId();
    const auto box =
        canvas.addTextbox(orientation, {left, top, width, height}, id, "Text Box " + std::to_string(id));
    document.drawingsChanged(canvas_->holder());
    return std::make_shared<DocxShape>(document.shared_from_this(), &canvas_->holder(), box);
}

word::ShapePtr DocxCanvasShapes::AddPicture(const std::string& fileName, bool, bool, float left, float top,
                                            float width, float height) {
    DrawingCanvas canvas(canvas_->checked());
    auto bytes = readFileBytes(fileName);
    if (!bytes) {
        throw AutomationError("Die Bilddatei kann nicht gelesen werden: " + fileName);
    }
    auto& document = canvas_->document();
    const auto relationship = MediaParts::add(document.package(), canvas_->holder().partName(),
                                              std::move(*bytes), MediaParts::extensionOf(fileName));
    const unsigned id = document.nextDrawingId();
    const auto picture =
        canvas.addPicture(relationship, {left, top, width, height}, id, "Picture " + std::to_string(id));
    document.drawingsChanged(canvas_->holder());
    return std::make_shared<DocxShape>(document.shared_from_this(), &canvas_->holder(), picture);
}

} // namespace wordbm::ooxml
