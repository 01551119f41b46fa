#include "ui/frmMerge.h"

#include "data/TagList.h"
#include "engine/ports/OptionsPort.h"
#include "ui/PlatformWords.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <string>

namespace wordbm {

namespace {

QCheckBox* addBox(QGroupBox* frame, const char* name, const QString& caption) {
    auto* box = new QCheckBox(caption, frame);
    box->setObjectName(QString::fromLatin1(name));
    frame->layout()->addWidget(box);
    return box;
}

QGroupBox* addFrame(QVBoxLayout* layout, const char* name, const QString& caption) {
    auto* frame = new QGroupBox(caption);
    frame->setObjectName(QString::fromLatin1(name));
    frame->setLayout(new QVBoxLayout);
    layout->addWidget(frame);
    return frame;
}

// A tag value 0 leaves the box unchecked; the program only ever stores 0 and 1.
void setFromTag(QCheckBox* box, const TagList& tags, const char* name) {
    box->setChecked(tags.ValueLong(name) != 0);
}

} // namespace

frmMerge::frmMerge(OptionsPort& options, QWidget* parent) : QDialog(parent), options_(options) {
    setObjectName(QStringLiteral("frmMerge"));
    setWindowTitle(QStringLiteral("Rechnungen erstellen"));

    auto* layout = new QVBoxLayout(this);
    lblPlan_ = new QLabel(this);
    lblPlan_->setObjectName(QStringLiteral("lblPlan"));
    lblPlan_->setWordWrap(true);
    lblPlan_->hide();
    layout->addWidget(lblPlan_);
    QGroupBox* fraPrint = addFrame(layout, "fraPrint", QStringLiteral("Drucken"));
    chkPrint_ = addBox(fraPrint, "chkPrint", QStringLiteral("Rechnungen drucken"));
    lblPrinter_ = new QLabel(fraPrint);
    lblPrinter_->setObjectName(QStringLiteral("lblPrinter"));
    lblPrinter_->hide();
    fraPrint->layout()->addWidget(lblPrinter_);
    QGroupBox* fraPDF = addFrame(layout, "fraPDF", QStringLiteral("Archivieren"));
    chkPDF_ = addBox(fraPDF, "chkPDF", QStringLiteral("Rechnungen PDF erstellen"));
    chkPDFA_ = addBox(fraPDF, "chkPDFA", QStringLiteral("PDF/A Format"));
    QGroupBox* fraWoird = addFrame(layout, "fraWoird", QStringLiteral("Dokumente"));
    chkClose_ = addBox(fraWoird, "chkClose", QStringLiteral("Rechnungen schliessen"));
    chkDelete_ = addBox(fraWoird, "chkDelete", QStringLiteral("Rechnungen  löschen"));
    chkWordClose_ = addBox(fraWoird, "chkWordClose", QStringLiteral("Word schliessen"));
    chkWordClose_->setToolTip(PlatformWords::wordCloseTip());

    auto* buttons = new QHBoxLayout;
    auto* btnStd = new QPushButton(QStringLiteral("Standardeinstellungen"), this);
    btnStd->setObjectName(QStringLiteral("btnStd"));
    auto* btnDone = new QPushButton(QStringLiteral("Erstellen"), this);
    btnDone->setObjectName(QStringLiteral("btnDone"));
    btnDone->setDefault(true);
    auto* btnCancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    btnCancel->setObjectName(QStringLiteral("btnCancel"));
    buttons->addWidget(btnStd);
    buttons->addStretch();
    buttons->addWidget(btnDone);
    buttons->addWidget(btnCancel);
    layout->addLayout(buttons);

    // toggled also fires when the dialog sets a value itself, as the rules require.
    connect(chkPDF_, &QCheckBox::toggled, this, &frmMerge::onPDF);
    connect(chkWordClose_, &QCheckBox::toggled, this, &frmMerge::onWordClose);
    connect(chkDelete_, &QCheckBox::toggled, this, &frmMerge::onDelete);
    connect(chkPrint_, &QCheckBox::toggled, this, &frmMerge::onPrint);
    connect(btnStd, &QPushButton::clicked, this, &frmMerge::applyStandard);
    connect(btnDone, &QPushButton::clicked, this, &frmMerge::confirm);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);

    load();
}

std::optional<MergeChoices> frmMerge::ask(QWidget* parent, OptionsPort& options, const Plan& plan) {
    frmMerge dialog(options, parent);
    dialog.showPlan(plan);
    dialog.exec();
    if (dialog.cancelled()) {
        return std::nullopt;
    }
    return dialog.choices();
}

void frmMerge::load() {
    cancelled_ = true;
    TagList tags;
    tags.List(options_.get(OptionKey));
    if (tags.Count() == 0) {
        applyStandard();
    } else {
        setFromTag(chkPrint_, tags, "Print");
        setFromTag(chkPDF_, tags, "PDF");
        setFromTag(chkPDFA_, tags, "PDFA");
        onPDF();
        setFromTag(chkClose_, tags, "Close");
        setFromTag(chkWordClose_, tags, "WordClose");
        onWordClose();
    }
    chkDelete_->setChecked(false);
}

void frmMerge::showPlan(const Plan& plan) {
    lblPlan_->setText(plan.run);
    lblPlan_->setVisible(!plan.run.isEmpty());
    lblPrinter_->setText(plan.printer);
    onPrint();
}

// The printer is named where it matters: when the invoices go to it.
void frmMerge::onPrint() {
    lblPrinter_->setVisible(chkPrint_->isChecked() && !lblPrinter_->text().isEmpty());
}

void frmMerge::applyStandard() {
    chkPrint_->setChecked(true);
    chkPDF_->setChecked(true);
    chkPDFA_->setChecked(true);
    chkClose_->setChecked(true);
    chkDelete_->setChecked(false);
    chkWordClose_->setChecked(false);
}

void frmMerge::onPDF() {
    if (chkPDF_->isChecked()) {
        chkPDFA_->setEnabled(true);
        chkPDFA_->setChecked(true);
    } else {
        chkPDFA_->setEnabled(false);
    }
}

void frmMerge::onWordClose() {
    if (chkWordClose_->isChecked()) {
        chkClose_->setChecked(true);
        chkClose_->setEnabled(false);
    } else {
        chkClose_->setEnabled(true);
    }
}

// Unticking Delete frees Close even while WordClose holds it, as the program always did.
void frmMerge::onDelete() {
    if (chkDelete_->isChecked()) {
        chkClose_->setChecked(true);
        chkClose_->setEnabled(false);
    } else {
        chkClose_->setEnabled(true);
    }
}

MergeChoices frmMerge::choices() const {
    MergeChoices choices;
    choices.Print = chkPrint_->isChecked();
    choices.PDF = chkPDF_->isChecked();
    choices.PDFA = chkPDFA_->isChecked();
    choices.Close = chkClose_->isChecked();
    choices.WordClose = chkWordClose_->isChecked();
    choices.Delete = chkDelete_->isChecked();
    return choices;
}

void frmMerge::confirm() {
    // One bare tag per box, "name=value", so the text form is the stored text itself.
    TagList tags;
    const auto bare = [&tags](const char* name, const QCheckBox* box) {
        tags.Add(std::string(name) + "=" + (box->isChecked() ? "1" : "0"));
    };
    bare("Print", chkPrint_);
    bare("PDF", chkPDF_);
    bare("PDFA", chkPDFA_);
    bare("Close", chkClose_);
    bare("WordClose", chkWordClose_);
    options_.set(OptionKey, tags.List());
    cancelled_ = false;
    accept();
}

} // namespace wordbm
