#include "ui/frmTemplateLoad.h"

#include "support/Folders.h"

#include <QCheckBox>
#include <QCollator>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace wordbm {

frmTemplateLoad::frmTemplateLoad(const std::string& suiteFolder, QWidget* parent)
    : QDialog(parent), suiteFolder_(suiteFolder) {
    setObjectName(QStringLiteral("frmTemplateLoad"));
    setWindowTitle(QStringLiteral("Vorlage laden"));
    auto* layout = new QVBoxLayout(this);
    lblFolder_ = new QLabel(this);
    lblFolder_->setObjectName(QStringLiteral("lblFolder"));
    lblFolder_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(lblFolder_);
    lstTemplate_ = new QListWidget(this);
    lstTemplate_->setObjectName(QStringLiteral("lstTemplate"));
    layout->addWidget(lstTemplate_, 1);
    chkSerial_ = new QCheckBox(QStringLiteral("Word Serienbrief (alte Methode)"), this);
    chkSerial_->setObjectName(QStringLiteral("chkSerial"));
    layout->addWidget(chkSerial_);

    auto* buttons = new QHBoxLayout;
    auto* btnOk = new QPushButton(QStringLiteral("OK"), this);
    btnOk->setObjectName(QStringLiteral("btnOk"));
    btnOk->setDefault(true);
    auto* btnCancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    btnCancel->setObjectName(QStringLiteral("btnCancel"));
    buttons->addStretch();
    buttons->addWidget(btnOk);
    buttons->addWidget(btnCancel);
    layout->addLayout(buttons);

    connect(chkSerial_, &QCheckBox::toggled, this, &frmTemplateLoad::fill);
    connect(lstTemplate_, &QListWidget::itemDoubleClicked, this, &frmTemplateLoad::confirm);
    connect(btnOk, &QPushButton::clicked, this, &frmTemplateLoad::confirm);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    resize(420, 320);
    fill();
}

std::optional<std::string> frmTemplateLoad::Choose(QWidget* parent, const std::string& suiteFolder) {
    frmTemplateLoad dialog(suiteFolder, parent);
    dialog.exec();
    if (dialog.cancelled()) {
        return std::nullopt;
    }
    return dialog.Template();
}

std::string frmTemplateLoad::formsFolder(const std::string& suiteFolder, bool serial) {
    return nativePath(PathJoin(suiteFolder, serial ? "billingforms\\wsb\\" : "billingforms\\"));
}

void frmTemplateLoad::fill() {
    lstTemplate_->clear();
    lstTemplate_->addItem(QStringLiteral("(leer - ohne Vorlage)"));
    const QDir folder(QString::fromStdString(formsFolder(suiteFolder_, chkSerial_->isChecked())));
    lblFolder_->setText(QStringLiteral("Formulare in ") + QDir::toNativeSeparators(folder.absolutePath()));
    // Name filters ignore letter case, as on Windows. A Linux listing comes in no order a person
    // would see, so the forms are sorted as a person sorts: "Mahnung 2" before "Mahnung 10".
    QFileInfoList forms =
        folder.entryInfoList({QStringLiteral("*.doc?")}, QDir::Files | QDir::Hidden, QDir::Unsorted);
    QCollator collator(QLocale(QLocale::German, QLocale::Switzerland));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(forms.begin(), forms.end(), [&collator](const QFileInfo& a, const QFileInfo& b) {
        return collator.compare(a.fileName(), b.fileName()) < 0;
    });
    for (const QFileInfo& form : forms) {
        auto* item = new QListWidgetItem(form.fileName(), lstTemplate_);
        item->setData(Qt::UserRole, form.absoluteFilePath());
    }
    lstTemplate_->setCurrentRow(0);
}

std::string frmTemplateLoad::Template() const {
    const QListWidgetItem* item = lstTemplate_->currentItem();
    if (item == nullptr) {
        return {};
    }
    return item->data(Qt::UserRole).toString().toStdString();
}

void frmTemplateLoad::confirm() {
    cancelled_ = false;
    accept();
}

} // namespace wordbm
