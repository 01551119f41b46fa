#include "ui/PagePreview.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
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
    cbxPreview_->addItem(QStringLiteral("Rechnung 1"), static_cast<int>(Source::Invoice));
    cbxPreview_->setToolTip(QStringLiteral("Das Formular oder die erste Rechnung der Rechnungs-Steuerdatei"));
    auto* btnPreview = new QPushButton(QStringLiteral("Vorschau aktualisieren"), this);
    btnPreview->setObjectName(QStringLiteral("btnPreview"));
    btnPreview->setToolTip(QStringLiteral("Seite 1 darstellen"));
    lblPreview_ = new QLabel(QStringLiteral("Keine Vorschau"), this);
    lblPreview_->setObjectName(QStringLiteral("lblPreview"));
    lblPreview_->setAlignment(Qt::AlignCenter);
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(lblPreview_);
    scroll->setWidgetResizable(true);

    auto* controls = new QHBoxLayout;
    controls->addWidget(cbxPreview_);
    controls->addWidget(btnPreview);
    controls->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(scroll, 1);

    connect(btnPreview, &QPushButton::clicked, this, [this] { render(); });
    connect(cbxPreview_, &QComboBox::activated, this, [this] { render(); });
}

void PagePreview::setExport(Source source, Export write) {
    (source == Source::Form ? form_ : invoice_) = std::move(write);
}

void PagePreview::choose(Source source) {
    cbxPreview_->setCurrentIndex(cbxPreview_->findData(static_cast<int>(source)));
    render();
}

PagePreview::Source PagePreview::chosen() const {
    return static_cast<Source>(cbxPreview_->currentData().toInt());
}

void PagePreview::showReason(const QString& reason) {
    lblPreview_->setPixmap({});
    lblPreview_->setText(reason);
}

bool PagePreview::render() {
    const Export& write = chosen() == Source::Form ? form_ : invoice_;
    QTemporaryDir folder;
    const QString pdf = folder.filePath(QStringLiteral("vorschau.pdf"));
    const std::string failure = write ? write(pdf.toStdString()) : std::string("nicht verfügbar");
    if (!failure.empty()) {
        showReason(QStringLiteral("Keine Vorschau: ") + QString::fromStdString(failure));
        return false;
    }
    QPdfDocument document;
    if (document.load(pdf) != QPdfDocument::Error::None || document.pageCount() < 1) {
        showReason(QStringLiteral("Keine Vorschau: die PDF-Datei ist nicht lesbar"));
        return false;
    }
    // About 100 dpi: the page is read on screen, not printed.
    const QSizeF points = document.pagePointSize(0);
    const QImage page = document.render(0, (points * 100.0 / 72.0).toSize());
    lblPreview_->setText({});
    lblPreview_->setPixmap(QPixmap::fromImage(page));
    return !page.isNull();
}

} // namespace wordbm
