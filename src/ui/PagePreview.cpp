#include "ui/PagePreview.h"

#include "ui/InvoiceRowChooser.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPdfDocument>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace wordbm {

PagePreview::PagePreview(QWidget* parent) : QWidget(parent) {
    cbxPreview_ = new QComboBox(this);
    cbxPreview_->setObjectName(QStringLiteral("cbxPreview"));
    cbxPreview_->addItem(QStringLiteral("Formular"), static_cast<int>(Source::Form));
    cbxPreview_->addItem(QStringLiteral("Rechnung"), static_cast<int>(Source::Invoice));
    cbxPreview_->setToolTip(QStringLiteral("Das Formular oder eine Rechnung der Rechnungs-Steuerdatei"));
    invoice_ = new InvoiceRowChooser(this);
    invoice_->setObjectName(QStringLiteral("invoiceRowChooser"));
    invoice_->setEnabled(false);
    auto* btnPreview = new QPushButton(QStringLiteral("Vorschau a&ktualisieren"), this);
    btnPreview->setObjectName(QStringLiteral("btnPreview"));
    btnPreview->setToolTip(QStringLiteral("Seite 1 darstellen"));
    lblPreview_ = new QLabel(QStringLiteral("Keine Vorschau"), this);
    lblPreview_->setObjectName(QStringLiteral("lblPreview"));
    lblPreview_->setAlignment(Qt::AlignCenter);
    lblPreviewCode_ = new QLabel(this);
    lblPreviewCode_->setObjectName(QStringLiteral("lblPreviewCode"));
    lblPreviewCode_->setToolTip(
        QStringLiteral("Der QR-Code der Vorschau, aus dem PDF gelesen wie beim Zusammenführen"));
    scroll_ = new QScrollArea(this);
    scroll_->setWidget(lblPreview_);
    scroll_->setWidgetResizable(true);
    // A page as wide as the view is always taller than it.
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    pdf_ = new QPdfDocument(this);

    auto* controls = new QHBoxLayout;
    controls->addWidget(cbxPreview_);
    controls->addWidget(invoice_);
    controls->addWidget(btnPreview);
    controls->addWidget(lblPreviewCode_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(scroll_, 1);

    connect(btnPreview, &QPushButton::clicked, this, [this] { render(); });
    connect(cbxPreview_, &QComboBox::activated, this, [this] { render(); });
    connect(invoice_, &InvoiceRowChooser::chosen, this, [this] { render(); });
}

PagePreview::~PagePreview() {
    // The document lets go of its file before the folder goes.
    pdf_->close();
}

void PagePreview::setExport(Source source, Export write) {
    (source == Source::Form ? form_ : invoiceExport_) = std::move(write);
}

void PagePreview::setCodeCheck(Source source, CodeCheck check) {
    (source == Source::Form ? formCode_ : invoiceCode_) = std::move(check);
}

void PagePreview::choose(Source source) {
    cbxPreview_->setCurrentIndex(cbxPreview_->findData(static_cast<int>(source)));
    render();
}

void PagePreview::chooseInvoice(int invoice) {
    cbxPreview_->setCurrentIndex(cbxPreview_->findData(static_cast<int>(Source::Invoice)));
    if (invoiceCount_) {
        invoice_->setCount(invoiceCount_());
    }
    const QSignalBlocker blocker(invoice_);
    invoice_->choose(invoice);
    render();
}

PagePreview::Source PagePreview::chosen() const {
    return static_cast<Source>(cbxPreview_->currentData().toInt());
}

void PagePreview::showReason(const QString& reason) {
    pdf_->close();
    folder_.reset();
    lblPreview_->setPixmap({});
    lblPreview_->setText(reason);
    lblPreviewCode_->clear();
    codeFailure_.clear();
}

void PagePreview::showCode(const std::string& pdfPath) {
    const CodeCheck& check = chosen() == Source::Form ? formCode_ : invoiceCode_;
    const std::optional<std::string> verdict = check ? check(pdfPath) : std::nullopt;
    codeFailure_ = verdict ? QString::fromStdString(*verdict) : QString();
    if (!verdict) {
        lblPreviewCode_->clear();
    } else if (verdict->empty()) {
        lblPreviewCode_->setStyleSheet({});
        lblPreviewCode_->setText(QStringLiteral("QR-Code gelesen: entspricht den Rechnungsdaten"));
    } else {
        lblPreviewCode_->setStyleSheet(QStringLiteral("color: #b00000; font-weight: bold"));
        lblPreviewCode_->setText(QStringLiteral("QR-Code: ") + QString::fromStdString(*verdict));
    }
}

bool PagePreview::render() {
    const bool invoices = chosen() == Source::Invoice;
    invoice_->setEnabled(invoices);
    if (invoices && invoiceCount_) {
        invoice_->setCount(invoiceCount_());
    }
    const Export& write = invoices ? invoiceExport_ : form_;
    folder_ = std::make_unique<QTemporaryDir>();
    const QString pdf = folder_->filePath(QStringLiteral("vorschau.pdf"));
    std::string failure = "nicht verfügbar";
    if (write) {
        // The number is taken here: the work runs on another thread.
        const auto work = [&failure, &write, target = pdf.toStdString(), number = invoice_->invoice()] {
            failure = write(target, number);
        };
        if (!run_) {
            work();
        } else if (!run_(work)) {
            failure = "das Formular wird eben bearbeitet";
        }
    }
    if (!failure.empty()) {
        showReason(QStringLiteral("Keine Vorschau: ") + QString::fromStdString(failure));
        return false;
    }
    if (pdf_->load(pdf) != QPdfDocument::Error::None || pdf_->pageCount() < 1) {
        showReason(QStringLiteral("Keine Vorschau: die PDF-Datei ist nicht lesbar"));
        return false;
    }
    showCode(pdf.toStdString());
    return showPage();
}

bool PagePreview::showPage() {
    const QSizeF points = pdf_->pagePointSize(0);
    const int width = scroll_->viewport()->width();
    if (points.isEmpty() || width <= 0) {
        return false;
    }
    // Sharp on screens with more pixels per point, too.
    const qreal ratio = devicePixelRatioF();
    QImage page = pdf_->render(0, (points * (width * ratio / points.width())).toSize());
    page.setDevicePixelRatio(ratio);
    markFailedCode(page);
    lblPreview_->setText({});
    lblPreview_->setPixmap(QPixmap::fromImage(page));
    return !page.isNull();
}

void PagePreview::markFailedCode(QImage& page) const {
    if (codeFailure_.isEmpty() || page.isNull()) {
        return;
    }
    QPainter painter(&page);
    const QRectF band(0, 0, page.deviceIndependentSize().width(), 3 * painter.fontMetrics().height());
    painter.fillRect(band, QColor(176, 0, 0, 220));
    painter.setPen(Qt::white);
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(band.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::TextWordWrap,
                     QStringLiteral("QR-Code: ") + codeFailure_);
}

void PagePreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (pdf_->pageCount() > 0) {
        showPage();
    }
}

} // namespace wordbm
