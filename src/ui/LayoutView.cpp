#include "ui/LayoutView.h"

#include "data/KnownFields.h"
#include "ui/LayoutPages.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QPdfDocument>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <algorithm>

namespace wordbm {

namespace {

// A swatch and its meaning, for the legend above the pages.
QLabel* legend(QWidget* parent, const QString& colour, const QString& text, const QString& style = "solid") {
    auto* label = new QLabel(parent);
    label->setText(
        QStringLiteral("<span style='color:%1'>%3</span> %2")
            .arg(colour, text,
                 style == QStringLiteral("dashed") ? QStringLiteral("&#9633;") : QStringLiteral("&#9632;")));
    return label;
}

} // namespace

LayoutView::LayoutView(QWidget* parent) : QWidget(parent) {
    cbxZoom_ = new QComboBox(this);
    cbxZoom_->setObjectName(QStringLiteral("cbxZoom"));
    cbxZoom_->setToolTip(QStringLiteral("Grösse der Seiten"));
    for (const int percent : {50, 75, 100, 125, 150, 200, 300}) {
        cbxZoom_->addItem(QStringLiteral("%1 %").arg(percent), percent);
    }
    cbxZoom_->setCurrentIndex(cbxZoom_->findData(100));
    auto* btnLayout = new QPushButton(QStringLiteral("Neu darstellen"), this);
    btnLayout->setObjectName(QStringLiteral("btnLayout"));
    btnLayout->setToolTip(QStringLiteral("Die Seiten des Formulars neu darstellen"));
    lblLayout_ = new QLabel(this);
    lblLayout_->setObjectName(QStringLiteral("lblLayout"));
    pages_ = new LayoutPages(this);
    pages_->setObjectName(QStringLiteral("layoutPages"));
    scroll_ = new QScrollArea(this);
    scroll_->setWidget(pages_);
    scroll_->setWidgetResizable(true);
    scroll_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    pdf_ = new QPdfDocument(this);

    auto* controls = new QHBoxLayout;
    controls->addWidget(cbxZoom_);
    controls->addWidget(btnLayout);
    controls->addWidget(legend(this, QStringLiteral("#006ec8"), QStringLiteral("Textmarke")));
    controls->addWidget(legend(this, QStringLiteral("#dc6e00"), QStringLiteral("Seriendruckfeld")));
    controls->addWidget(
        legend(this, QStringLiteral("#828282"), QStringLiteral("unbekannt"), QStringLiteral("dashed")));
    controls->addWidget(lblLayout_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(scroll_, 1);

    connect(btnLayout, &QPushButton::clicked, this, [this] { render(); });
    connect(cbxZoom_, &QComboBox::activated, this, [this] { setZoom(cbxZoom_->currentData().toInt()); });
    connect(pages_, &LayoutPages::clicked, this, &LayoutView::pageClicked);
    connect(pages_, &LayoutPages::zoomStep, this, [this](int step) {
        const int index = std::clamp(cbxZoom_->currentIndex() + step, 0, cbxZoom_->count() - 1);
        setZoom(cbxZoom_->itemData(index).toInt());
    });
    setZoom(100);
}

LayoutView::~LayoutView() {
    // The document lets go of its file before the folder goes.
    pdf_->close();
}

void LayoutView::setZoom(int percent) {
    const int index = cbxZoom_->findData(percent);
    if (index >= 0) {
        cbxZoom_->setCurrentIndex(index);
    }
    // Percent of the printed size: a point is 1/72 inch, the screen's inch has logicalDpiX pixels.
    pages_->setZoom(percent / 100.0 * logicalDpiX() / 72.0);
}

void LayoutView::showReason(const QString& reason) {
    pages_->showPages(nullptr, nullptr);
    pdf_->close();
    layout_.reset();
    folder_.reset();
    lblLayout_->setText(reason);
}

void LayoutView::follow(bool inView) {
    stale_ = !inView;
    if (inView) {
        render();
    }
}

bool LayoutView::render() {
    stale_ = false;
    const word::DocumentPtr doc = source_ ? source_() : nullptr;
    if (!doc || !fields_) {
        showReason(QStringLiteral("Kein Word-Rechnungsformular geöffnet"));
        return false;
    }
    auto folder = std::make_unique<QTemporaryDir>();
    const std::string pdf = folder->filePath(QStringLiteral("seiten.pdf")).toStdString();
    std::shared_ptr<FormLayout> made;
    std::string failure;
    QElapsedTimer clock;
    clock.start();
    const auto work = [&made, &failure, &doc, &pdf, this] {
        try {
            made = FormLayout::make(*doc, *fields_, pdf);
        } catch (const std::exception& error) {
            failure = error.what();
        }
    };
    if (!run_) {
        work();
    } else if (!run_(work)) {
        // The engine is at work; its end brings another rendering.
        stale_ = true;
        return false;
    }
    if (!made) {
        showReason(QStringLiteral("Keine Seitenansicht: ") + QString::fromStdString(failure));
        return false;
    }
    pdf_->close();
    if (pdf_->load(QString::fromStdString(pdf)) != QPdfDocument::Error::None) {
        showReason(QStringLiteral("Keine Seitenansicht: die PDF-Datei ist nicht lesbar"));
        return false;
    }
    folder_ = std::move(folder);
    layout_ = std::move(made);
    pages_->showPages(pdf_, layout_);
    std::size_t framed = 0;
    for (const FormLayout::Mark& mark : layout_->marks()) {
        framed += mark.boxes.empty() ? 0 : 1;
    }
    const int count = pdf_->pageCount();
    lblLayout_->setText((count == 1 ? QStringLiteral("1 Seite") : QStringLiteral("%1 Seiten").arg(count)) +
                        QStringLiteral(" · %1/%2 Marken · %3 ms")
                            .arg(framed)
                            .arg(layout_->marks().size())
                            .arg(clock.elapsed()));
    return true;
}

void LayoutView::pageClicked(int page, QPointF point) {
    if (!layout_) {
        return;
    }
    if (const FormLayout::Mark* mark = layout_->fieldAt(page, point.x(), point.y())) {
        if (layout_->select(*mark)) {
            pages_->showChosen(mark);
            pages_->showCaret(std::nullopt);
            emit fieldChosen(QString::fromStdString(mark->label));
        }
        return;
    }
    const auto at = layout_->pointAt(page, point.x(), point.y());
    if (at && layout_->select(*at)) {
        pages_->showChosen(nullptr);
        pages_->showCaret(at);
    }
}

} // namespace wordbm
