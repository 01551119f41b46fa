#include "ui/LayoutPages.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPdfDocument>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

namespace wordbm {

namespace {

constexpr double Gap = 16; // pixels around and between the pages

QColor colourOf(FormLayout::MarkKind kind) {
    switch (kind) {
    case FormLayout::MarkKind::Bookmark:
        return {0, 110, 200};
    case FormLayout::MarkKind::MergeField:
        return {220, 110, 0};
    case FormLayout::MarkKind::Unknown:
        break;
    }
    return {130, 130, 130};
}

QString kindName(FormLayout::MarkKind kind) {
    switch (kind) {
    case FormLayout::MarkKind::Bookmark:
        return QStringLiteral("Textmarke für");
    case FormLayout::MarkKind::MergeField:
        return QStringLiteral("Seriendruckfeld");
    case FormLayout::MarkKind::Unknown:
        break;
    }
    return QStringLiteral("Unbekannte Textmarke");
}

} // namespace

LayoutPages::LayoutPages(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::IBeamCursor);
}

void LayoutPages::showPages(QPdfDocument* pdf, std::shared_ptr<const FormLayout> layout) {
    pdf_ = pdf;
    layout_ = std::move(layout);
    chosen_ = nullptr;
    images_.clear();
    place();
}

void LayoutPages::setZoom(double zoom) {
    zoom_ = std::clamp(zoom, 0.25, 4.0);
    images_.clear();
    place();
}

void LayoutPages::showCaret(std::optional<StoryPoint> caret) {
    caret_ = caret;
    update();
}

void LayoutPages::showChosen(const FormLayout::Mark* mark) {
    chosen_ = mark;
    update();
}

void LayoutPages::place() {
    pages_.clear();
    const int count = pdf_ ? pdf_->pageCount() : 0;
    double width = 0;
    for (int page = 0; page < count; ++page) {
        width = std::max(width, pdf_->pagePointSize(page).width() * zoom_);
    }
    double top = Gap;
    for (int page = 0; page < count; ++page) {
        const QSizeF size = pdf_->pagePointSize(page) * zoom_;
        pages_.emplace_back(QPointF(Gap + (width - size.width()) / 2, top), size);
        top += size.height() + Gap;
    }
    setMinimumSize(sizeHint());
    updateGeometry();
    update();
}

QSize LayoutPages::sizeHint() const {
    double width = 0;
    double height = Gap;
    for (const QRectF& page : pages_) {
        width = std::max(width, page.width());
        height = page.bottom() + Gap;
    }
    return QSize(static_cast<int>(width + 2 * Gap), static_cast<int>(height));
}

QRectF LayoutPages::pageRect(int page) const {
    if (page < 0 || page >= static_cast<int>(pages_.size())) {
        return {};
    }
    // Pages stand in the middle of a view wider than they are.
    const double shift = std::max(0.0, (width() - sizeHint().width()) / 2.0);
    return pages_[static_cast<std::size_t>(page)].translated(shift, 0);
}

QPointF LayoutPages::toWidget(int page, QPointF point) const {
    return pageRect(page).topLeft() + point * zoom_;
}

QRectF LayoutPages::toWidget(int page, const PageBox& box) const {
    return {toWidget(page, QPointF(box.left, box.top)), toWidget(page, QPointF(box.right, box.bottom))};
}

std::optional<std::pair<int, QPointF>> LayoutPages::toPage(QPointF position) const {
    for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
        const QRectF rect = pageRect(page);
        if (rect.contains(position)) {
            return std::make_pair(page, (position - rect.topLeft()) / zoom_);
        }
    }
    return std::nullopt;
}

const QImage& LayoutPages::pageImage(int page) {
    auto found = images_.find(page);
    if (found == images_.end()) {
        const qreal ratio = devicePixelRatioF();
        QImage image = pdf_->render(page, (pageRect(page).size() * ratio).toSize());
        image.setDevicePixelRatio(ratio);
        found = images_.emplace(page, std::move(image)).first;
    }
    return found->second;
}

void LayoutPages::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), QColor(128, 128, 128));
    for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
        const QRectF rect = pageRect(page);
        if (!rect.adjusted(-4, -4, 4, 4).intersects(event->rect())) {
            continue;
        }
        painter.fillRect(rect.translated(3, 3), QColor(70, 70, 70));
        painter.fillRect(rect, Qt::white);
        painter.drawImage(rect.topLeft(), pageImage(page));
        painter.setPen(QPen(QColor(40, 40, 40), 1));
        painter.drawRect(rect);
        drawMarks(painter, page);
        drawCaret(painter, page);
    }
}

QFont LayoutPages::nameFont() const {
    QFont small = font();
    small.setPointSizeF(std::max(6.0, 7 * std::min(zoom_, 1.5)));
    return small;
}

QRectF LayoutPages::nameTab(const FormLayout::Mark& mark, int page) const {
    const auto first = std::find_if(mark.boxes.begin(), mark.boxes.end(),
                                    [page](const PlacedBox& placed) { return placed.page == page; });
    if (first == mark.boxes.end()) {
        return {};
    }
    // The name sits on the frame's top edge, as a tab of the frame.
    const QRectF frame = toWidget(page, first->box).adjusted(-1.5, -1.5, 1.5, 1.5);
    const QFontMetricsF metrics(nameFont());
    const QString name = QString::fromStdString(mark.label);
    return {frame.left(), frame.top() - metrics.height(), metrics.horizontalAdvance(name) + 6,
            metrics.height()};
}

void LayoutPages::drawMarks(QPainter& painter, int page) const {
    if (!layout_) {
        return;
    }
    painter.setFont(nameFont());
    // Names never cover a frame or another name: one that would goes beside its frame, or, where
    // that is taken too, only into the frame's tooltip.
    std::vector<QRectF> named;
    for (const FormLayout::Mark& mark : layout_->marks()) {
        for (const PlacedBox& placed : mark.boxes) {
            if (placed.page == page) {
                named.push_back(toWidget(page, placed.box));
            }
        }
    }
    const auto free = [&named](const QRectF& tab) {
        return std::none_of(named.begin(), named.end(),
                            [&tab](const QRectF& other) { return other.intersects(tab); });
    };
    for (const FormLayout::Mark& mark : layout_->marks()) {
        const QColor colour = colourOf(mark.kind);
        QPen pen(colour, &mark == chosen_ ? 2.5 : 1.2);
        pen.setStyle(mark.kind == FormLayout::MarkKind::Unknown ? Qt::DashLine : Qt::SolidLine);
        QColor fill = colour;
        fill.setAlpha(mark.kind == FormLayout::MarkKind::MergeField ? 45 : 28);
        for (const PlacedBox& placed : mark.boxes) {
            if (placed.page == page) {
                painter.setPen(pen);
                painter.setBrush(fill);
                painter.drawRect(toWidget(page, placed.box).adjusted(-1.5, -1.5, 1.5, 1.5));
            }
        }
        QRectF tab = nameTab(mark, page);
        if (!tab.isEmpty() && !free(tab)) {
            const auto first = std::find_if(mark.boxes.begin(), mark.boxes.end(),
                                            [page](const PlacedBox& placed) { return placed.page == page; });
            const QRectF frame = toWidget(page, first->box);
            tab.moveTo(frame.right() + 3, frame.center().y() - tab.height() / 2);
        }
        if (!tab.isEmpty() && free(tab)) {
            named.push_back(tab);
            painter.fillRect(tab, colour);
            painter.setPen(Qt::white);
            painter.drawText(tab, Qt::AlignCenter, QString::fromStdString(mark.label));
        }
    }
    painter.setBrush(Qt::NoBrush);
}

void LayoutPages::drawCaret(QPainter& painter, int page) const {
    if (!layout_ || !caret_) {
        return;
    }
    for (const PlacedBox& placed : layout_->map().boxes(caret_->story, caret_->offset, caret_->offset)) {
        if (placed.page == page) {
            const QRectF box = toWidget(page, placed.box);
            painter.setPen(QPen(QColor(200, 0, 0), 2));
            painter.drawLine(QPointF(box.center().x(), box.top()), QPointF(box.center().x(), box.bottom()));
            return;
        }
    }
    // Behind a story's last character the caret stands after it.
    if (caret_->offset > 0) {
        for (const PlacedBox& placed :
             layout_->map().boxes(caret_->story, caret_->offset - 1, caret_->offset)) {
            if (placed.page == page) {
                const QRectF box = toWidget(page, placed.box);
                painter.setPen(QPen(QColor(200, 0, 0), 2));
                painter.drawLine(box.topRight() + QPointF(1, 0), box.bottomRight() + QPointF(1, 0));
                return;
            }
        }
    }
}

bool LayoutPages::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !layout_) {
        return QWidget::event(event);
    }
    auto* help = static_cast<QHelpEvent*>(event);
    const auto at = toPage(help->pos());
    QString tip;
    for (const FormLayout::Mark& mark : layout_->marks()) {
        for (const PlacedBox& placed : mark.boxes) {
            if (at && placed.page == at->first && placed.box.contains(at->second.x(), at->second.y())) {
                tip = kindName(mark.kind) + QStringLiteral(" ") + QString::fromStdString(mark.label);
            }
        }
    }
    if (tip.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(help->globalPos(), tip, this);
    }
    return true;
}

void LayoutPages::wheelEvent(QWheelEvent* event) {
    // Ctrl with the wheel zooms, as in every viewer; the plain wheel scrolls.
    if (event->modifiers() & Qt::ControlModifier) {
        emit zoomStep(event->angleDelta().y() > 0 ? 1 : -1);
        event->accept();
        return;
    }
    QWidget::wheelEvent(event);
}

void LayoutPages::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (const auto at = toPage(event->position())) {
        emit clicked(at->first, at->second);
    }
}

} // namespace wordbm
