#include "ui/frmFileNameTemplate.h"

#include "data/CSVfile.h"
#include "engine/ports/UserInterface.h"
#include "names/FileNameTemplate.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace wordbm {

namespace {

QString text(const std::string& value) {
    return QString::fromStdString(value);
}

QPushButton* makeButton(QWidget* parent, const char* name, const QString& caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

// The item's data is what goes into the mask; the shown text may carry a description.
QComboBox* makePickList(QWidget* parent, const char* name) {
    auto* list = new QComboBox(parent);
    list->setObjectName(QString::fromLatin1(name));
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list->setMinimumContentsLength(40);
    return list;
}

// The chooser starts where the invoices usually go: the form's folder, else the documents folder.
QString chooserStart(const FileNameTemplate& owner) {
    const QFileInfo form(text(FileNameTemplate::nativeDocPath(owner.WordPath())));
    if (!owner.WordPath().empty() && form.absoluteDir().exists()) {
        return form.absolutePath();
    }
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

int defaultAskOverwrite(QWidget* parent, const QString& question, const QString& title) {
    const auto answer = QMessageBox::question(parent, title, question,
                                              QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        return msgbox::Yes;
    }
    return answer == QMessageBox::No ? msgbox::No : msgbox::Cancel;
}

// Where the value of a Windows name comes from on this system.
QString variableTip(const FileNameTemplate::EnvironmentEntry& variable) {
    if (!variable.origin.empty()) {
        return QStringLiteral("Unter Linux: ") + text(variable.origin);
    }
    if (variable.value.empty()) {
        return QStringLiteral("Auf diesem System nicht gesetzt: wird leer eingesetzt");
    }
    return QStringLiteral("Gesetzt in der Umgebung dieses Systems");
}

} // namespace

frmFileNameTemplate::frmFileNameTemplate(const FileNameTemplate& owner, const std::string& mask,
                                         QWidget* parent)
    : QDialog(parent), askOverwrite(defaultAskOverwrite), owner_(owner) {
    chooseFolder = [this](QWidget* dialogParent) {
        return QFileDialog::getExistingDirectory(
            dialogParent, QStringLiteral("Verzeichnis zum Einfügen wählen"), chooserStart(owner_));
    };
    setObjectName(QStringLiteral("frmFileNameTemplate"));
    setWindowTitle(QStringLiteral("Maske für Word-Dateinamen bearbeiten"));
    auto* layout = new QGridLayout(this);

    auto* lblTemlate = new QLabel(QStringLiteral("Maske für Word-Dateinamen"), this);
    lblTemlate->setObjectName(QStringLiteral("lblTemlate"));
    txtTemplate_ = new QLineEdit(text(mask), this);
    txtTemplate_->setObjectName(QStringLiteral("txtTemplate"));
    txtTemplate_->setMinimumWidth(460);
    auto* btnBackslash = makeButton(this, "btnBackslash", QStringLiteral("\\"));
    auto* btnPathSelect = makeButton(this, "btnPathSelect", QStringLiteral("Ordner..."));
    auto* btnDelete = makeButton(this, "btnDelete", QStringLiteral("Löschen"));
    auto* maskButtons = new QHBoxLayout;
    maskButtons->addWidget(btnBackslash);
    maskButtons->addWidget(btnPathSelect);
    maskButtons->addWidget(btnDelete);
    maskButtons->addStretch();
    lblExample_ = new QLabel(this);
    lblExample_->setObjectName(QStringLiteral("lblExample"));
    // A client name from the control file is shown as it is, never read as markup.
    lblExample_->setTextFormat(Qt::PlainText);
    lblExample_->setWordWrap(true);
    layout->addWidget(lblTemlate, 0, 0, 1, 2);
    layout->addWidget(txtTemplate_, 1, 0, 1, 2);
    layout->addWidget(lblExample_, 2, 0, 1, 2);
    layout->addLayout(maskButtons, 3, 0, 1, 2);

    auto* Label1 = new QLabel(QStringLiteral("Bausteine (Platzhalter) einfügen"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    cboTags_ = makePickList(this, "cboTags");
    for (std::int32_t i = 1; i <= owner.TagsCount(); ++i) {
        const QString tag = text(owner.TagsValue(i));
        cboTags_->addItem(tag + QStringLiteral(" - ") + text(owner.TagsName(i)), tag);
    }
    auto* btnInsert1 = makeButton(this, "btnInsert1", QStringLiteral("Einfügen"));

    auto* Label3 = new QLabel(QStringLiteral("Umgebunsvariablen (Platzhalter) einfügen"), this);
    Label3->setObjectName(QStringLiteral("Label3"));
    cboVariables_ = makePickList(this, "cboVariables");
    // Every variable a mask replaces, with the value it has now on this system, so the list
    // shows what a mask would resolve to; the Windows names say where Linux takes them from.
    for (const auto& variable : FileNameTemplate::EnvironmentEntries()) {
        const QString name = text(variable.name);
        const QString value = text(variable.value);
        cboVariables_->addItem(
            name + QStringLiteral("  -  ") + (value.isEmpty() ? QStringLiteral("(leer)") : value), name);
        cboVariables_->setItemData(cboVariables_->count() - 1, variableTip(variable), Qt::ToolTipRole);
    }
    auto* btnInsert2 = makeButton(this, "btnInsert2", QStringLiteral("Einfügen"));

    auto* Label2 = new QLabel(QStringLiteral("Standardeinstellungen (überschreibt Maske)"), this);
    Label2->setObjectName(QStringLiteral("Label2"));
    cboStandards_ = makePickList(this, "cboStandards");
    for (std::int32_t i = 1; i <= owner.DefaultsCount(); ++i) {
        const QString standard = text(owner.DefaultsValue(i));
        cboStandards_->addItem(standard, standard);
    }
    auto* btnInsert3 = makeButton(this, "btnInsert3", QStringLiteral("Übernehmen"));

    // Nothing is chosen until the user picks an entry, so an insert button alone does nothing.
    for (QComboBox* list : {cboTags_, cboVariables_, cboStandards_}) {
        list->setCurrentIndex(-1);
    }

    layout->addWidget(Label1, 4, 0, 1, 2);
    layout->addWidget(cboTags_, 5, 0);
    layout->addWidget(btnInsert1, 5, 1);
    layout->addWidget(Label3, 6, 0, 1, 2);
    layout->addWidget(cboVariables_, 7, 0);
    layout->addWidget(btnInsert2, 7, 1);
    layout->addWidget(Label2, 8, 0, 1, 2);
    layout->addWidget(cboStandards_, 9, 0);
    layout->addWidget(btnInsert3, 9, 1);
    layout->setColumnStretch(0, 1);

    auto* buttons = new QHBoxLayout;
    auto* btnOk = makeButton(this, "btnOk", QStringLiteral("OK"));
    btnOk->setDefault(true);
    auto* btnCancel = makeButton(this, "btnCancel", QStringLiteral("Abbrechen"));
    buttons->addStretch();
    buttons->addWidget(btnOk);
    buttons->addWidget(btnCancel);
    layout->addLayout(buttons, 10, 0, 1, 2);

    connect(btnInsert1, &QPushButton::clicked, this, &frmFileNameTemplate::insertTag);
    connect(btnInsert2, &QPushButton::clicked, this, &frmFileNameTemplate::insertVariable);
    connect(btnInsert3, &QPushButton::clicked, this, &frmFileNameTemplate::insertStandard);
    connect(btnBackslash, &QPushButton::clicked, this, &frmFileNameTemplate::insertBackslash);
    connect(btnPathSelect, &QPushButton::clicked, this, &frmFileNameTemplate::insertFolder);
    connect(btnDelete, &QPushButton::clicked, this, &frmFileNameTemplate::clearMask);
    connect(btnOk, &QPushButton::clicked, this, &frmFileNameTemplate::confirm);
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);

    // Read once: the example follows every keystroke, and a control file can be long.
    readControlFile();
    connect(txtTemplate_, &QLineEdit::textChanged, this, &frmFileNameTemplate::showExample);
    showExample();
}

frmFileNameTemplate::~frmFileNameTemplate() = default;

void frmFileNameTemplate::readControlFile() {
    if (owner_.CSVPath().empty()) {
        noExample_ = QStringLiteral("Keine Rechnungs-Steuerdatei geöffnet: ohne sie kann kein Beispielname "
                                    "gezeigt werden.");
        return;
    }
    try {
        auto read = std::make_unique<CSVfile>();
        read->ReadFile(FileNameTemplate::nativeDocPath(owner_.CSVPath()));
        if (read->LineCount() < 1) {
            noExample_ =
                QStringLiteral("Die Rechnungs-Steuerdatei hat keine Rechnungszeile: kein Beispielname.");
            return;
        }
        data_ = std::move(read);
    } catch (const std::exception& error) {
        noExample_ = QStringLiteral("Die Rechnungs-Steuerdatei kann nicht gelesen werden: ") +
                     QString::fromStdString(error.what());
    }
}

void frmFileNameTemplate::showExample() {
    if (!data_) {
        lblExample_->setText(noExample_);
        return;
    }
    try {
        lblExample_->setText(exampleText(owner_.DocName(1, *data_, mask())));
    } catch (const std::exception& error) {
        lblExample_->setText(QStringLiteral("Kein Beispielname für die erste Zeile: ") +
                             QString::fromStdString(error.what()));
    }
}

// The name as it lands on disk, and a warning when Word would not open it as a form of this kind.
QString frmFileNameTemplate::exampleText(const std::string& name) const {
    const QString path = text(FileNameTemplate::nativeDocPath(name));
    QString shown = QStringLiteral("Zeile 1 der Steuerdatei ergibt: ") + path;
    if (owner_.WordPath().empty()) {
        return shown;
    }
    const QString formSuffix = QFileInfo(text(FileNameTemplate::nativeDocPath(owner_.WordPath()))).suffix();
    const QString suffix = QFileInfo(path).suffix();
    if (suffix.compare(formSuffix, Qt::CaseInsensitive) != 0) {
        shown += QStringLiteral("\nAchtung: die Endung \".") + suffix +
                 QStringLiteral("\" ist nicht die des Formulars (\".") + formSuffix + QStringLiteral("\")");
    }
    return shown;
}

std::optional<std::string> frmFileNameTemplate::edit(QWidget* parent, const FileNameTemplate& owner,
                                                     const std::string& mask) {
    frmFileNameTemplate dialog(owner, mask, parent);
    dialog.exec();
    if (dialog.cancelled()) {
        return std::nullopt;
    }
    return dialog.mask();
}

std::string frmFileNameTemplate::mask() const {
    return txtTemplate_->text().toStdString();
}

// A selection is replaced, as typing would; the cursor ends after the inserted text.
void frmFileNameTemplate::insertAtCursor(const QString& inserted) {
    txtTemplate_->insert(inserted);
}

void frmFileNameTemplate::insertTag() {
    if (cboTags_->currentIndex() >= 0) {
        insertAtCursor(cboTags_->currentData().toString());
    }
}

void frmFileNameTemplate::insertVariable() {
    if (cboVariables_->currentIndex() >= 0) {
        insertAtCursor(cboVariables_->currentData().toString());
    }
}

void frmFileNameTemplate::insertBackslash() {
    insertAtCursor(QStringLiteral("\\"));
}

void frmFileNameTemplate::insertFolder() {
    QString folder = chooseFolder(this);
    if (folder.isEmpty()) {
        return;
    }
    if (!folder.endsWith(QLatin1Char('\\'))) {
        folder += QLatin1Char('\\');
    }
    insertAtCursor(folder);
}

void frmFileNameTemplate::insertStandard() {
    if (cboStandards_->currentIndex() < 0) {
        return;
    }
    const QString standard = cboStandards_->currentData().toString();
    const QString question =
        QStringLiteral("Maske mit Standard überschreiben?\r\n") + standard + QStringLiteral("\r\n");
    if (askOverwrite(this, question, QStringLiteral("Mit Standard überschreiben")) == msgbox::Yes) {
        txtTemplate_->setText(standard);
    }
}

void frmFileNameTemplate::clearMask() {
    txtTemplate_->clear();
}

void frmFileNameTemplate::confirm() {
    cancelled_ = false;
    accept();
}

} // namespace wordbm
