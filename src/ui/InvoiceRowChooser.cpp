#include "ui/InvoiceRowChooser.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>
#include <algorithm>

namespace wordbm {

InvoiceRowChooser::InvoiceRowChooser(QWidget* parent) : QWidget(parent) {
    btnPrevious_ = new QToolButton(this);
    btnPrevious_->setObjectName(QStringLiteral("btnInvoicePrevious"));
    btnPrevious_->setArrowType(Qt::LeftArrow);
    btnPrevious_->setToolTip(QStringLiteral("Vorherige Rechnung"));
    spnInvoice_ = new QSpinBox(this);
    spnInvoice_->setObjectName(QStringLiteral("spnInvoice"));
    spnInvoice_->setRange(1, 1);
    spnInvoice_->setToolTip(QStringLiteral("Nummer der Rechnung im Rechnungslauf"));
    // A number typed digit by digit would render every step on the way.
    spnInvoice_->setKeyboardTracking(false);
    btnNext_ = new QToolButton(this);
    btnNext_->setObjectName(QStringLiteral("btnInvoiceNext"));
    btnNext_->setArrowType(Qt::RightArrow);
    btnNext_->setToolTip(QStringLiteral("Nächste Rechnung"));
    lblCount_ = new QLabel(this);
    lblCount_->setObjectName(QStringLiteral("lblInvoiceCount"));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(btnPrevious_);
    layout->addWidget(spnInvoice_);
    layout->addWidget(btnNext_);
    layout->addWidget(lblCount_);

    connect(btnPrevious_, &QToolButton::clicked, this, [this] { choose(invoice() - 1); });
    connect(btnNext_, &QToolButton::clicked, this, [this] { choose(invoice() + 1); });
    connect(spnInvoice_, &QSpinBox::valueChanged, this, [this](int value) {
        updateSteps();
        emit chosen(value);
    });
    updateSteps();
}

int InvoiceRowChooser::invoice() const {
    return spnInvoice_->value();
}

void InvoiceRowChooser::setCount(int count) {
    const QSignalBlocker blocker(spnInvoice_);
    spnInvoice_->setMaximum(std::max(count, 1));
    lblCount_->setText(QStringLiteral("von %1").arg(count));
    updateSteps();
}

void InvoiceRowChooser::choose(int invoice) {
    spnInvoice_->setValue(std::clamp(invoice, spnInvoice_->minimum(), spnInvoice_->maximum()));
}

void InvoiceRowChooser::updateSteps() {
    btnPrevious_->setEnabled(invoice() > spnInvoice_->minimum());
    btnNext_->setEnabled(invoice() < spnInvoice_->maximum());
}

} // namespace wordbm
