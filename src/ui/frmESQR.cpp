#include "ui/frmESQR.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace wordbm {

namespace {

QCheckBox* makeBox(QWidget* parent, const char* name, const QString& caption, bool checked) {
    auto* box = new QCheckBox(caption, parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setChecked(checked);
    return box;
}

// A part's cut mark only means something while the part itself is laid in.
void bindCutMark(QCheckBox* part, QCheckBox* cutMark) {
    cutMark->setEnabled(part->isChecked());
    QObject::connect(part, &QCheckBox::toggled, cutMark, &QCheckBox::setEnabled);
}

} // namespace

frmESQR::frmESQR(const std::string& wordDoc, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmESQR"));
    setWindowTitle(QStringLiteral("Einzahlungsschein QR"));
    auto* layout = new QVBoxLayout(this);

    auto* fraWord = new QGroupBox(QStringLiteral("Word-Rechnungsformular"), this);
    fraWord->setObjectName(QStringLiteral("fraWord"));
    auto* wordLayout = new QVBoxLayout(fraWord);
    txtWordDoc_ = new QLineEdit(QString::fromStdString(wordDoc), fraWord);
    txtWordDoc_->setObjectName(QStringLiteral("txtWordDoc"));
    txtWordDoc_->setReadOnly(true);
    txtWordDoc_->setMinimumWidth(360);
    wordLayout->addWidget(txtWordDoc_);
    layout->addWidget(fraWord);

    auto* fraOption = new QGroupBox(QStringLiteral("Optionen"), this);
    fraOption->setObjectName(QStringLiteral("fraOption"));
    auto* optionLayout = new QHBoxLayout(fraOption);
    chkMBborder_ = makeBox(fraOption, "chkMBborder", QStringLiteral("Felder zeigen"), false);
    chkDelete_ = makeBox(fraOption, "chkDelete", QStringLiteral("Löschen"), true);
    chkDelete_->setToolTip(QStringLiteral("Löschen des bestehenden QR-Einzahlungsschein-Teils"));
    optionLayout->addWidget(chkMBborder_);
    optionLayout->addWidget(chkDelete_);
    optionLayout->addStretch();
    layout->addWidget(fraOption);

    // The three-s spelling of the frame is the program's own.
    auto* fraForm = new QGroupBox(QStringLiteral("Einzahlungssschein"), this);
    fraForm->setObjectName(QStringLiteral("fraForm"));
    auto* formLayout = new QGridLayout(fraForm);
    chkET_ = makeBox(fraForm, "chkET", QStringLiteral("Empfangsschein"), true);
    chkZT_ = makeBox(fraForm, "chkZT", QStringLiteral("Zahlteil"), true);
    chkETborder_ = makeBox(fraForm, "chkETborder", QStringLiteral("mit Schnittmaske"), true);
    chkZTborder_ = makeBox(fraForm, "chkZTborder", QStringLiteral("mit Schnittmaske"), true);
    chkSTborder_ = makeBox(fraForm, "chkSTborder", QStringLiteral("mit Schnittmaske"), false);
    chkST_ = makeBox(fraForm, "chkST", QStringLiteral("Separator"), true);
    formLayout->addWidget(chkET_, 0, 0);
    formLayout->addWidget(chkETborder_, 0, 1);
    formLayout->addWidget(chkZT_, 1, 0);
    formLayout->addWidget(chkZTborder_, 1, 1);
    formLayout->addWidget(chkST_, 2, 0);
    formLayout->addWidget(chkSTborder_, 2, 1);
    layout->addWidget(fraForm);
    bindCutMark(chkET_, chkETborder_);
    bindCutMark(chkZT_, chkZTborder_);
    bindCutMark(chkST_, chkSTborder_);

    auto* fraLanguage = new QGroupBox(QStringLiteral("Sprache"), this);
    fraLanguage->setObjectName(QStringLiteral("fraLanguage"));
    auto* languageLayout = new QHBoxLayout(fraLanguage);
    const std::array<QString, 4> languages{QStringLiteral("Deutsch"), QStringLiteral("Französisch"),
                                           QStringLiteral("Italienisch"), QStringLiteral("Englisch")};
    for (std::size_t i = 0; i < languages.size(); ++i) {
        Option1_[i] = new QRadioButton(languages[i], fraLanguage);
        Option1_[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        languageLayout->addWidget(Option1_[i]);
    }
    Option1_[0]->setChecked(true);
    layout->addWidget(fraLanguage);

    auto* buttons = new QHBoxLayout;
    auto* btnGo = new QPushButton(QStringLiteral("Einfügen"), this);
    btnGo->setObjectName(QStringLiteral("btnGo"));
    btnGo->setDefault(true);
    auto* btnCancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    btnCancel->setObjectName(QStringLiteral("btnCancel"));
    buttons->addStretch();
    buttons->addWidget(btnGo);
    buttons->addWidget(btnCancel);
    layout->addLayout(buttons);
    connect(btnGo, &QPushButton::clicked, this, [this] {
        cancelled_ = false;
        accept();
    });
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

std::optional<SlipChoices> frmESQR::ask(QWidget* parent, const std::string& wordDoc) {
    frmESQR dialog(wordDoc, parent);
    dialog.exec();
    if (dialog.cancelled()) {
        return std::nullopt;
    }
    return dialog.choices();
}

std::string frmESQR::Language() const {
    if (Option1_[0]->isChecked()) {
        return "Deutsch";
    }
    if (Option1_[1]->isChecked()) {
        return "Französisch";
    }
    if (Option1_[2]->isChecked()) {
        return "Italienisch";
    }
    return "Englisch";
}

SlipChoices frmESQR::choices() const {
    SlipChoices choices;
    choices.deleteExisting = chkDelete_->isChecked();
    choices.ST = chkST_->isChecked();
    choices.STborder = chkSTborder_->isChecked();
    choices.ET = chkET_->isChecked();
    choices.ETborder = chkETborder_->isChecked();
    choices.ZT = chkZT_->isChecked();
    choices.ZTborder = chkZTborder_->isChecked();
    choices.fieldBorders = chkMBborder_->isChecked();
    choices.language = Language();
    return choices;
}

} // namespace wordbm
