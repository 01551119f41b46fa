#pragma once

#include "engine/layout/FormLayout.h"

#include <QImage>
#include <QWidget>
#include <map>
#include <memory>
#include <optional>

class QPdfDocument;

namespace wordbm {

// The pages of a form's PDF one below the other, paper-white with an edge, at a zoom; over them
// the frames of the form's bookmarks and merge fields with their names, and the insertion point.
// Pages are drawn as they come into view.
class LayoutPages : public QWidget {
    Q_OBJECT
public:
    explicit LayoutPages(QWidget* parent = nullptr);

    // Shows the pages of `pdf` (loaded, or empty) placed by `layout` (or none).
    void showPages(QPdfDocument* pdf, std::shared_ptr<const FormLayout> layout);
    // Screen pixels per point: 1 draws a page at its printed size on a 72 dpi screen.
    void setZoom(double zoom);
    double zoom() const { return zoom_; }
    // Shows the insertion point (none: hidden).
    void showCaret(std::optional<StoryPoint> caret);
    void showChosen(const FormLayout::Mark* mark);

    // Where a point of a page (in points) is in this widget, and back; nullopt beside the pages.
    QPointF toWidget(int page, QPointF point) const;
    std::optional<std::pair<int, QPointF>> toPage(QPointF position) const;
    QRectF pageRect(int page) const;

    QSize sizeHint() const override;

signals:
    // A click on a page, at the point of the page (in points).
    void clicked(int page, QPointF point);

    // Ctrl and the wheel: one step of zoom in (+1) or out (-1).
    void zoomStep(int step);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void place();
    const QImage& pageImage(int page);
    void drawMarks(QPainter& painter, int page) const;
    void drawCaret(QPainter& painter, int page) const;
    QRectF toWidget(int page, const PageBox& box) const;
    QFont nameFont() const;
    // The tab with the mark's name, drawn on its first frame on the page; empty when none is.
    QRectF nameTab(const FormLayout::Mark& mark, int page) const;

    QPdfDocument* pdf_ = nullptr;
    std::shared_ptr<const FormLayout> layout_;
    double zoom_ = 1.0;
    std::vector<QRectF> pages_;
    std::map<int, QImage> images_; // at the present zoom
    std::optional<StoryPoint> caret_;
    const FormLayout::Mark* chosen_ = nullptr;
};

} // namespace wordbm
