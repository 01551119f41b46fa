#include "ui/frmWordBM.h"

#include "engine/ooxml/NewForm.h"
#include "engine/ports/OptionsPort.h"
#include "engine/word/Document.h"
#include "engine/word/WordConstants.h"
#include "support/Folders.h"
#include "ui/FileDrop.h"
#include "ui/FormView.h"
#include "ui/LayoutView.h"
#include "ui/PagePreview.h"
#include "ui/RecentFilesButton.h"
#include "ui/frmFileOpen.h"
#include "ui/frmTemplateLoad.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

namespace wordbm {

namespace {

const QString WordCaption = QStringLiteral("Word-Rechnungsformular");
const QString CSVCaption = QStringLiteral("Rechnungs-Steuerdatei");
const QString WordPatterns = QStringLiteral("*.docx;*.docm");
const QString CSVPatterns = QStringLiteral("*.csv");

QPushButton* button(QWidget* parent, const char* name, const QString& caption, const QString& tip = {}) {
    auto* result = new QPushButton(caption, parent);
    result->setObjectName(QString::fromLatin1(name));
    if (!tip.isEmpty()) {
        result->setToolTip(tip);
    }
    return result;
}

QString fromStd(const std::string& text) {
    return QString::fromStdString(text);
}

// A path box with its drop-down of the files used last, which Alt+Down opens as in a combo box.
QHBoxLayout* withRecent(QLineEdit* box, QToolButton* recent) {
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(box, 1);
    row->addWidget(recent);
    auto* open =
        new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Down), box, nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(open, &QShortcut::activated, recent, &QToolButton::showMenu);
    return row;
}

// A caption as it reads, without the mark of its mnemonic.
QString plain(const QString& caption) {
    return QString(caption).remove(QLatin1Char('&'));
}

} // namespace

frmWordBM::frmWordBM(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmWordBM"));
    informationBox = [this](const QString& text) { QMessageBox::information(this, windowTitle(), text); };
    beep = [] { QApplication::beep(); };
    build();
    updateEnabled();
}

void frmWordBM::build() {
    caption_ = QStringLiteral("WordBM");
    showTitle();
    setWindowIcon(QIcon::fromTheme(QStringLiteral("wordbm")));

    auto* paths = new QGridLayout;
    // Every caption has a mnemonic of its own among what is in view at the same time; the two
    // pages of tabOptions share letters, since only one of them is ever in view.
    lblWordDoc_ = new QLabel(QStringLiteral("&Word-Rechnungsformular"), this);
    lblWordDoc_->setObjectName(QStringLiteral("lblWordDoc"));
    txtWordDoc_ = new QLineEdit(this);
    txtWordDoc_->setObjectName(QStringLiteral("txtWordDoc"));
    lblWordDoc_->setBuddy(txtWordDoc_);
    lblCSVDoc_ = new QLabel(QStringLiteral("Rechnungs-&Steuerdatei"), this);
    lblCSVDoc_->setObjectName(QStringLiteral("lblCSVDoc"));
    txtCSVDoc_ = new QLineEdit(this);
    txtCSVDoc_->setObjectName(QStringLiteral("txtCSVDoc"));
    lblCSVDoc_->setBuddy(txtCSVDoc_);
    btnWordDocRecent_ = new RecentFilesButton("WordDoc", QStringLiteral("Word-Rechnungsformulare"), this);
    btnWordDocRecent_->setObjectName(QStringLiteral("btnWordDocRecent"));
    btnCSVDocRecent_ = new RecentFilesButton("CSVDoc", QStringLiteral("Rechnungs-Steuerdateien"), this);
    btnCSVDocRecent_->setObjectName(QStringLiteral("btnCSVDocRecent"));
    // The tooltips come from the labels' captions, as the window's design asks.
    btnWordDocOpen_ =
        button(this, "btnWordDocOpen", QStringLiteral("Öffn&en…"), plain(lblWordDoc_->text()) + " auswählen");
    btnWordDocClose_ = button(this, "btnWordDocClose", QStringLiteral("Sc&hliessen"),
                              plain(lblWordDoc_->text()) + " schliessen");
    btnWordDocShow_ =
        button(this, "btnWordDocShow", QStringLiteral("&Ordner"), QStringLiteral("Im Ordner zeigen"));
    btnWordDocCopy_ = button(this, "btnWordDocCopy", QStringLiteral("&Zurückkopieren"),
                             QStringLiteral("Arbeitskopie über das Original kopieren"));
    btnWordDocNew_ = button(this, "btnWordDocNew", QStringLiteral("&Neu…"),
                            QStringLiteral("Neues Word-Rechnungsformular mit Einzahlungsschein erstellen"));
    btnWordTemplate_ = button(this, "btnWordTemplate", QStringLiteral("Aus Vor&lage…"),
                              QStringLiteral("Neues Word-Rechnungsformular aus einer Vorlage erstellen"));
    btnCSVDocOpen_ =
        button(this, "btnCSVDocOpen", QStringLiteral("Ö&ffnen…"), plain(lblCSVDoc_->text()) + " auswählen");
    btnCSVDocClose_ = button(this, "btnCSVDocClose", QStringLiteral("Schl&iessen"),
                             plain(lblCSVDoc_->text()) + " schliessen");
    btnCSVDocShow_ =
        button(this, "btnCSVDocShow", QStringLiteral("Or&dner"), QStringLiteral("Im Ordner zeigen"));
    auto* lblTemplate = new QLabel(QStringLiteral("Dateinamen-&Vorlage"), this);
    lblTemplate->setObjectName(QStringLiteral("lblTemplate"));
    txtTemplate_ = new QLineEdit(this);
    txtTemplate_->setObjectName(QStringLiteral("txtTemplate"));
    lblTemplate->setBuddy(txtTemplate_);
    btnTemplate_ = button(this, "btnTemplate", QStringLiteral("&Bearbeiten…"),
                          QStringLiteral("Dateinamen-Vorlage bearbeiten"));

    auto* wordButtons = new QHBoxLayout;
    for (auto* b : {btnWordDocOpen_, btnWordDocClose_, btnWordDocShow_, btnWordDocCopy_, btnWordDocNew_,
                    btnWordTemplate_}) {
        wordButtons->addWidget(b);
    }
    wordButtons->addStretch();
    auto* csvButtons = new QHBoxLayout;
    for (auto* b : {btnCSVDocOpen_, btnCSVDocClose_, btnCSVDocShow_}) {
        csvButtons->addWidget(b);
    }
    csvButtons->addStretch();
    paths->addWidget(lblWordDoc_, 0, 0);
    paths->addLayout(withRecent(txtWordDoc_, btnWordDocRecent_), 0, 1);
    paths->addLayout(wordButtons, 1, 1);
    paths->addWidget(lblCSVDoc_, 2, 0);
    paths->addLayout(withRecent(txtCSVDoc_, btnCSVDocRecent_), 2, 1);
    paths->addLayout(csvButtons, 3, 1);
    paths->addWidget(lblTemplate, 4, 0);
    auto* templateRow = new QHBoxLayout;
    templateRow->addWidget(txtTemplate_, 1);
    templateRow->addWidget(btnTemplate_);
    paths->addLayout(templateRow, 4, 1);

    tabOptions_ = new QTabWidget(this);
    tabOptions_->setObjectName(QStringLiteral("tabOptions"));
    fraEdit_ = new QGroupBox(QStringLiteral("Formular bearbeiten"));
    fraEdit_->setObjectName(QStringLiteral("fraEdit"));
    fraMerge_ = new QGroupBox(QStringLiteral("Rechnungslauf"));
    fraMerge_->setObjectName(QStringLiteral("fraMerge"));
    tabOptions_->addTab(fraEdit_, QStringLiteral("For&mular"));
    tabOptions_->addTab(fraMerge_, QStringLiteral("Se&rienbrief"));

    cbxFields_ = new QComboBox(fraEdit_);
    cbxFields_->setObjectName(QStringLiteral("cbxFields"));
    cbxFields_->setToolTip(QStringLiteral("Exportfeld für die neue Textmarke"));
    btnInsert_ = button(fraEdit_, "btnInsert", QStringLiteral("Einfü&gen"),
                        QStringLiteral("Textmarke an der Cursorposition einfügen"));
    auto* lblInsert =
        new QLabel(QStringLiteral("Te&xtmarke für das gewählte Feld an der Cursorposition"), fraEdit_);
    lblInsert->setObjectName(QStringLiteral("lblInsert"));
    lblInsert->setBuddy(cbxFields_);
    btnReplace_ = button(fraEdit_, "btnReplace", QStringLiteral("Seriendru&ckfelder ersetzen"),
                         QStringLiteral("Seriendruckfelder in Textmarken umwandeln"));
    btnVerify_ = button(fraEdit_, "btnVerify", QStringLiteral("&Prüfen"),
                        QStringLiteral("Textmarken sichtbar machen"));
    btnAnalyze_ = button(fraEdit_, "btnAnalyze", QStringLiteral("&Analysieren"),
                         QStringLiteral("Textmarken und Seriendruckfelder zählen"));
    btnReset_ = button(fraEdit_, "btnReset", QStringLiteral("Zur&ücksetzen"),
                       QStringLiteral("Seriendruckfelder löschen"));
    auto* lblReset = new QLabel(QStringLiteral("Löscht die bekannten Seriendruckfelder"), fraEdit_);
    lblReset->setObjectName(QStringLiteral("lblReset"));
    btnInsertESQR_ = button(fraEdit_, "btnInsertESQR", QStringLiteral("&QR-Einzahlungsschein…"),
                            QStringLiteral("QR-Zahlteil in das Formular einfügen"));
    auto* edit = new QGridLayout(fraEdit_);
    edit->addWidget(cbxFields_, 0, 0);
    edit->addWidget(btnInsert_, 0, 1);
    edit->addWidget(lblInsert, 1, 0, 1, 2);
    edit->addWidget(btnReplace_, 2, 0);
    edit->addWidget(btnVerify_, 2, 1);
    edit->addWidget(btnAnalyze_, 3, 0);
    edit->addWidget(btnReset_, 3, 1);
    edit->addWidget(lblReset, 4, 0, 1, 2);
    edit->addWidget(btnInsertESQR_, 5, 0, 1, 2);
    edit->setRowStretch(6, 1);

    btnMerge_ = button(fraMerge_, "btnMerge", QStringLiteral("Rechnun&gen erstellen…"),
                       QStringLiteral("Eine Rechnung pro Zeile der Steuerdatei erstellen (Strg+M)"));
    btnTest_ = button(fraMerge_, "btnTest", QStringLiteral("D&ateinamen testen"),
                      QStringLiteral("Nur die Dateinamen der Rechnungen auflisten (Strg+T)"));
    auto* merge = new QVBoxLayout(fraMerge_);
    merge->addWidget(btnMerge_);
    merge->addWidget(btnTest_);
    merge->addStretch();

    lblCounts_ = new QLabel(this);
    lblCounts_->setObjectName(QStringLiteral("lblCounts"));
    txtTrace_ = new QPlainTextEdit(this);
    txtTrace_->setObjectName(QStringLiteral("txtTrace"));
    txtTrace_->setReadOnly(true);
    txtTrace_->setPlaceholderText(QStringLiteral("Protokoll der Analyse"));
    txtForm_ = new FormView(this);
    txtForm_->setObjectName(QStringLiteral("txtForm"));

    auto* left = new QWidget(this);
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    tabOptions_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    leftLayout->addWidget(tabOptions_);
    leftLayout->addWidget(lblCounts_);
    leftLayout->addWidget(txtTrace_, 1);
    // The form as text (where a click places the cursor) and page 1 as the printer would show it.
    tabView_ = new QTabWidget(this);
    tabView_->setObjectName(QStringLiteral("tabView"));
    tabView_->addTab(txtForm_, QStringLiteral("&Text"));
    preview_ = new PagePreview(tabView_);
    preview_->setExport(PagePreview::Source::Form,
                        [this](const std::string& pdf, int) { return exportForm(pdf); });
    tabView_->addTab(preview_, QStringLiteral("Vorscha&u"));
    // The pages as they print, beside the text: a click there places the cursor as well.
    layout_ = new LayoutView(tabView_);
    layout_->setObjectName(QStringLiteral("layoutView"));
    tabView_->insertTab(1, layout_, QStringLiteral("La&yout"));
    tabView_->setTabToolTip(
        1, QStringLiteral("Die Seiten, wie sie gedruckt werden: ein Klick setzt den Cursor"));
    connect(layout_, &LayoutView::fieldChosen, this, [this](const QString& field) {
        const int index = cbxFields_->findText(field, Qt::MatchFixedString);
        if (index >= 0) {
            cbxFields_->setCurrentIndex(index);
        }
    });
    auto* splitter = new QSplitter(this);
    splitter->addWidget(left);
    splitter->addWidget(tabView_);
    splitter->setStretchFactor(1, 1);

    auto* main = new QVBoxLayout(this);
    main->addLayout(paths);
    main->addWidget(splitter, 1);

    for (auto* box : {txtWordDoc_, txtCSVDoc_}) {
        box->setAcceptDrops(false); // the window checks drops itself, see eventFilter
        box->installEventFilter(this);
    }
    setAcceptDrops(false);
    txtWordDoc_->setAcceptDrops(true);
    txtCSVDoc_->setAcceptDrops(true);

    connect(txtWordDoc_, &QLineEdit::textChanged, this, [this] { updateEnabled(); });
    connect(txtCSVDoc_, &QLineEdit::textChanged, this, [this] { updateEnabled(); });
    connect(txtWordDoc_, &QLineEdit::editingFinished, this,
            [this] { pathEdited(txtWordDoc_, lastWordDoc_, WindowEvent::OpenWordDoc); });
    connect(txtCSVDoc_, &QLineEdit::editingFinished, this,
            [this] { pathEdited(txtCSVDoc_, lastCSVDoc_, WindowEvent::OpenCSVDoc); });
    connect(txtTemplate_, &QLineEdit::editingFinished, this, [this] {
        if (templateChanged) {
            templateChanged(txtTemplate_->text().toStdString());
        }
    });
    connect(btnInsert_, &QPushButton::clicked, this, [this] { insertField(); });
    connect(btnReplace_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::Replace); });
    connect(btnVerify_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::Verify); });
    connect(btnAnalyze_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::Analyze); });
    connect(btnReset_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::Reset); });
    connect(btnInsertESQR_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::ESQRgo); });
    connect(btnMerge_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::Merge); });
    connect(btnTest_, &QPushButton::clicked, this, [this] {
        if (txtWordDoc_->text().isEmpty()) {
            // The names are tested on the open form; without one the run would end unseen.
            informationBox(QStringLiteral("Der Test braucht ein Word-Rechnungsformular: die Dateinamen "
                                          "entstehen aus der Maske mit dem Formular und der Steuerdatei.\n"
                                          "Bitte zuerst ein Word-Rechnungsformular öffnen."));
            return;
        }
        emitEvent(WindowEvent::Test);
    });
    connect(btnWordDocCopy_, &QPushButton::clicked, this, [this] { emitEvent(WindowEvent::WordCopy); });
    connect(btnWordDocOpen_, &QPushButton::clicked, this, [this] { chooseWordDoc(); });
    connect(btnCSVDocOpen_, &QPushButton::clicked, this, [this] { chooseCSVDoc(); });
    connect(btnWordDocClose_, &QPushButton::clicked, this,
            [this] { emitEvent(WindowEvent::OpenWordDoc, {}); });
    connect(btnCSVDocClose_, &QPushButton::clicked, this, [this] { setCSVDoc({}); });
    connect(btnWordDocShow_, &QPushButton::clicked, this,
            [this] { fileManager_.showItem(txtWordDoc_->text()); });
    connect(btnCSVDocShow_, &QPushButton::clicked, this,
            [this] { fileManager_.showItem(txtCSVDoc_->text()); });
    connect(btnWordDocNew_, &QPushButton::clicked, this, [this] { newForm(true); });
    connect(btnWordTemplate_, &QPushButton::clicked, this, [this] { newForm(false); });
    btnWordDocRecent_->chosen = [this](const QString& path) { setWordDoc(path); };
    btnCSVDocRecent_->chosen = [this](const QString& path) { setCSVDoc(path); };
    connect(btnTemplate_, &QPushButton::clicked, this, [this] {
        if (editTemplate) {
            editTemplate();
        }
    });

    addShortcuts();
    tabOrder();

    // A word processor closed by hand must be noticed; the engine checks on every tick.
    Timer1_ = new QTimer(this);
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setInterval(2000);
    connect(Timer1_, &QTimer::timeout, this, [this] { emitEvent(WindowEvent::Timer); });
    // Short commands end before a pointer change would be seen; only longer work shows it.
    busyPointer_ = new QTimer(this);
    busyPointer_->setSingleShot(true);
    busyPointer_->setInterval(150);
    connect(busyPointer_, &QTimer::timeout, this, [this] { setCursor(Qt::BusyCursor); });
    connect(tabView_, &QTabWidget::currentChanged, this, [this] {
        if (previewStale_ && previewInView()) {
            previewFollow();
        }
        if (layout_->stale() && tabView_->currentWidget() == layout_) {
            layout_->render();
        }
    });
    resize(1000, 680);
}

void frmWordBM::addShortcuts() {
    // The frequent commands; a command that cannot run now is not started.
    const auto shortcut = [this](const QKeySequence& keys, const std::function<void()>& action) {
        auto* result = new QShortcut(keys, this);
        connect(result, &QShortcut::activated, this, [this, action] {
            // Keys reach a shortcut past the busy window's filter; the work ends first.
            if (!busy_) {
                action();
            }
        });
    };
    const auto press = [](QPushButton* target) {
        if (target->isEnabled()) {
            target->click();
        }
    };
    shortcut(QKeySequence::Open, [this, press] { press(btnWordDocOpen_); });
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), [this, press] { press(btnCSVDocOpen_); });
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_M), [this, press] {
        tabOptions_->setCurrentWidget(fraMerge_);
        press(btnMerge_);
    });
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_T), [this, press] {
        tabOptions_->setCurrentWidget(fraMerge_);
        press(btnTest_);
    });
    shortcut(QKeySequence(Qt::Key_F5), [this] {
        if (tabView_->currentWidget() == layout_) {
            layout_->render();
            return;
        }
        if (tabView_->currentWidget() == preview_) {
            preview_->render();
            return;
        }
        previewStale_ = true; // drawn as it comes into view
        tabView_->setCurrentWidget(preview_);
    });
    tabView_->setTabToolTip(tabView_->indexOf(preview_), QStringLiteral("Seite 1 darstellen (F5)"));
}

void frmWordBM::tabOrder() {
    // As the window reads, row by row; the text view comes right after the field list, so that
    // the place for a new bookmark is chosen before it is inserted.
    const QList<QWidget*> order = {
        txtWordDoc_,      btnWordDocOpen_, btnWordDocClose_, btnWordDocShow_, btnWordDocCopy_, btnWordDocNew_,
        btnWordTemplate_, txtCSVDoc_,      btnCSVDocOpen_,   btnCSVDocClose_, btnCSVDocShow_,  txtTemplate_,
        btnTemplate_,     tabOptions_,     cbxFields_,       txtForm_,        btnInsert_,      btnReplace_,
        btnVerify_,       btnAnalyze_,     btnReset_,        btnInsertESQR_,  btnMerge_,       btnTest_,
        txtTrace_,        tabView_};
    for (qsizetype i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
    // Each path box's drop-down comes right after it.
    setTabOrder(txtWordDoc_, btnWordDocRecent_);
    setTabOrder(txtCSVDoc_, btnCSVDocRecent_);
    // Tab leaves the two text views instead of staying in them.
    txtForm_->setTabChangesFocus(true);
    txtTrace_->setTabChangesFocus(true);
}

void frmWordBM::updateEnabled() {
    const bool word = !txtWordDoc_->text().isEmpty();
    const bool csv = !txtCSVDoc_->text().isEmpty();
    for (QWidget* w : std::initializer_list<QWidget*>{btnInsert_, btnInsertESQR_, btnReplace_, btnVerify_,
                                                      btnAnalyze_, btnReset_, cbxFields_}) {
        w->setEnabled(word);
    }
    btnMerge_->setEnabled(word && csv);
    btnTest_->setEnabled(csv);
    btnWordDocOpen_->setEnabled(true);
    btnWordDocClose_->setEnabled(word);
    btnCSVDocClose_->setEnabled(csv);
    // Without a path there is no folder to show, and no working copy to bring back.
    btnWordDocShow_->setEnabled(word);
    btnWordDocCopy_->setEnabled(word);
    btnCSVDocShow_->setEnabled(csv);
}

void frmWordBM::emitEvent(WindowEvent event, const std::string& argument) {
    if (raise_) {
        raise_(event, argument);
    }
}

void frmWordBM::execute(const MainWindowSetup& setup) {
    cbxFields_->clear();
    for (const auto& field : setup.fields) {
        if (field == "-") {
            cbxFields_->insertSeparator(cbxFields_->count());
            // A separator still reads as "-" so that choosing it can be refused like a field.
            cbxFields_->setItemText(cbxFields_->count() - 1, QStringLiteral("-"));
        } else {
            cbxFields_->addItem(fromStd(field));
        }
    }
    txtTemplate_->setText(fromStd(setup.Template));
    if (setup.mergePage) {
        tabOptions_->setCurrentIndex(1);
    }
    show();
    Timer1_->start();
    // As a person's typing would: the control file first, then the form.
    if (!setup.CSVDoc.empty()) {
        setCSVDoc(fromStd(setup.CSVDoc));
    }
    if (!setup.WordDoc.empty()) {
        setWordDoc(fromStd(setup.WordDoc));
    }
}

frmWordBM::~frmWordBM() {
    // QWidget's destructor closes the window, and the box that loses the focus then reports its
    // edit finished: its handlers must not reach this window once it is no longer one.
    for (QObject* child : findChildren<QObject*>()) {
        disconnect(child, nullptr, this, nullptr);
    }
}

void frmWordBM::setOptions(OptionsPort* options) {
    options_ = options;
    btnWordDocRecent_->setOptions(options);
    btnCSVDocRecent_->setOptions(options);
}

void frmWordBM::setWordDoc(const QString& path) {
    txtWordDoc_->setText(path);
    lastWordDoc_ = path;
    emitEvent(WindowEvent::OpenWordDoc, path.toStdString());
}

void frmWordBM::setCSVDoc(const QString& path) {
    txtCSVDoc_->setText(path);
    lastCSVDoc_ = path;
    emitEvent(WindowEvent::OpenCSVDoc, path.toStdString());
}

void frmWordBM::setTemplate(const QString& mask) {
    txtTemplate_->setText(mask);
}

QString frmWordBM::templateText() const {
    return txtTemplate_->text();
}

void frmWordBM::pathEdited(QLineEdit* box, QString& last, WindowEvent event) {
    if (box->text() == last) {
        return;
    }
    last = box->text();
    emitEvent(event, last.toStdString());
}

void frmWordBM::showWordDoc(const std::string& original, const std::string& working) {
    const QSignalBlocker blocker(txtWordDoc_);
    txtWordDoc_->setText(fromStd(original));
    txtWordDoc_->setToolTip(QStringLiteral("Arbeitskopie: ") + fromStd(working));
    lastWordDoc_ = txtWordDoc_->text();
    // Opened: offered again in the next run.
    btnWordDocRecent_->opened(txtWordDoc_->text());
    txtTrace_->clear();
    lblCounts_->clear();
    showTitle();
    updateEnabled();
    refreshForm();
}

void frmWordBM::clearWordDoc() {
    const QSignalBlocker blocker(txtWordDoc_);
    txtWordDoc_->clear();
    txtWordDoc_->setToolTip({});
    lastWordDoc_.clear();
    txtForm_->showDocument(nullptr);
    // What was counted and traced belonged to the form that is gone.
    txtTrace_->clear();
    lblCounts_->clear();
    formChanged_ = false;
    showTitle();
    updateEnabled();
}

void frmWordBM::showCSVDoc(const std::string& original, const std::string& working) {
    const QSignalBlocker blocker(txtCSVDoc_);
    txtCSVDoc_->setText(fromStd(original));
    txtCSVDoc_->setToolTip(QStringLiteral("Arbeitskopie: ") + fromStd(working));
    lastCSVDoc_ = txtCSVDoc_->text();
    btnCSVDocRecent_->opened(txtCSVDoc_->text());
    updateEnabled();
}

void frmWordBM::clearCSVDoc() {
    const QSignalBlocker blocker(txtCSVDoc_);
    txtCSVDoc_->clear();
    txtCSVDoc_->setToolTip({});
    lastCSVDoc_.clear();
    updateEnabled();
}

void frmWordBM::showTrace(const std::string& trace) {
    QString text = fromStd(trace);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    txtTrace_->setPlainText(text);
    refreshForm();
}

void frmWordBM::showCounts(const DocumentCounts& counts) {
    lblCounts_->setText(QStringLiteral("Exportfelder: %1   Textmarken: %2 (bekannt %3)\n"
                                       "Seriendruckfelder: %4 (bekannt %5)")
                            .arg(counts.exportFields)
                            .arg(counts.bookmarksTotal)
                            .arg(counts.bookmarksKnown)
                            .arg(counts.mergeFieldsTotal)
                            .arg(counts.mergeFieldsKnown));
}

void frmWordBM::showTitle() {
    // The form's name first, as desktop programs show the file they work on; "[*]" is where Qt
    // puts the changed-mark.
    const QString form = QFileInfo(txtWordDoc_ ? txtWordDoc_->text() : QString()).fileName();
    setWindowTitle(form.isEmpty() ? caption_ : form + QStringLiteral("[*] – ") + caption_);
    setWindowModified(formChanged_ && !form.isEmpty());
}

void frmWordBM::showFormChanged(bool changed) {
    formChanged_ = changed;
    showTitle();
}

void frmWordBM::setBusy(bool busy) {
    if (busy == busy_) {
        return;
    }
    busy_ = busy;
    if (busy) {
        // Input to this window is held back at the application, so the window looks the same
        // for a command that ends at once; the boxes and dialogs of the work are windows of
        // their own and still answer.
        qApp->installEventFilter(this);
        busyPointer_->start();
    } else {
        qApp->removeEventFilter(this);
        busyPointer_->stop();
        unsetCursor();
        if (std::exchange(closeWanted_, false)) {
            QTimer::singleShot(0, this, [this] { close(); });
        }
    }
}

bool frmWordBM::previewInView() const {
    return isVisible() && tabView_->currentWidget() == preview_;
}

void frmWordBM::setDocumentSource(DocumentSource source) {
    documentSource_ = std::move(source);
    layout_->setDocumentSource(documentSource_);
}

void frmWordBM::previewFollow() {
    layout_->follow(isVisible() && tabView_->currentWidget() == layout_);
    previewStale_ = !previewInView();
    if (!previewStale_) {
        preview_->render();
    }
}

void frmWordBM::refreshForm() {
    txtForm_->showDocument(documentSource_ ? documentSource_() : nullptr);
}

bool frmWordBM::renderPreview() {
    return preview_->render();
}

std::string frmWordBM::exportForm(const std::string& pdfPath) {
    const word::DocumentPtr doc = documentSource_ ? documentSource_() : nullptr;
    if (!doc) {
        return "Kein Word-Rechnungsformular geöffnet";
    }
    try {
        doc->ExportAsFixedFormat(pdfPath, word::wd::wdExportFormatPDF);
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

void frmWordBM::insertField() {
    const QString field = cbxFields_->currentText();
    if (field == QStringLiteral("-")) {
        beep();
        return;
    }
    emitEvent(WindowEvent::Insert, field.toStdString());
}

bool frmWordBM::dropOn(QLineEdit* box, const QStringList& paths, const QString& patterns, QChar separator) {
    if (paths.size() > 1) {
        informationBox(QStringLiteral("Maximal eine Datei!"));
        return false;
    }
    if (paths.isEmpty()) {
        return false;
    }
    const QString name = paths.front().toLower();
    for (const QString& pattern : patterns.split(separator)) {
        const QString tail = pattern.mid(pattern.indexOf(QChar('*')) + 1).toLower();
        if (name.endsWith(tail)) {
            if (box == txtWordDoc_) {
                setWordDoc(paths.front());
            } else {
                setCSVDoc(paths.front());
            }
            return true;
        }
    }
    informationBox(QStringLiteral("Muss eine '") + patterns + QStringLiteral("' Datei sein!"));
    return false;
}

bool frmWordBM::dropOnWordDoc(const QStringList& paths) {
    return dropOn(txtWordDoc_, paths, WordPatterns, QChar(';'));
}

bool frmWordBM::dropOnCSVDoc(const QStringList& paths) {
    return dropOn(txtCSVDoc_, paths, CSVPatterns, QChar(','));
}

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

bool frmWordBM::eventFilter(QObject* watched, QEvent* event) {
    if (busy_ && isInput(event->type()) && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->window() == this) {
        return true;
    }
    if (watched == txtWordDoc_ || watched == txtCSVDoc_) {
        if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
            FileDrop::acceptCopy(static_cast<QDropEvent*>(event));
            return true;
        }
        if (event->type() == QEvent::Drop) {
            auto* drop = static_cast<QDropEvent*>(event);
            if (!FileDrop::acceptCopy(drop)) {
                return true;
            }
            QStringList paths;
            for (const QUrl& url : drop->mimeData()->urls()) {
                paths << url.toLocalFile();
            }
            if (watched == txtWordDoc_) {
                dropOnWordDoc(paths);
            } else {
                dropOnCSVDoc(paths);
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmWordBM::chooseWordDoc() {
    if (const auto path = frmFileOpen::pick(this, frmFileOpen::Kind::Word, txtWordDoc_->text().toStdString(),
                                            WordCaption, btnWordDocRecent_->lastFolder());
        path && !path->empty()) {
        btnWordDocRecent_->rememberFolder(QFileInfo(fromStd(*path)).absolutePath());
        setWordDoc(fromStd(*path));
    }
}

void frmWordBM::chooseCSVDoc() {
    if (const auto path = frmFileOpen::pick(this, frmFileOpen::Kind::CSV, txtCSVDoc_->text().toStdString(),
                                            CSVCaption, btnCSVDocRecent_->lastFolder());
        path && !path->empty()) {
        btnCSVDocRecent_->rememberFolder(QFileInfo(fromStd(*path)).absolutePath());
        setCSVDoc(fromStd(*path));
    }
}

void frmWordBM::newForm(bool withSlip) {
    const auto chosen = frmTemplateLoad::Choose(this, BaseFolderGet(false, false, false));
    if (!chosen) {
        return;
    }
    QString folder = options_ ? fromStd(options_->get("DOCOpen")) : QString();
    if (folder.isEmpty()) {
        // No new form made yet: beside the forms opened last.
        folder = btnWordDocRecent_->lastFolder();
    }
    QFileDialog dialog(this, QStringLiteral("Neues Word-Rechnungsformular erstellen"), folder,
                       QStringLiteral("Word-Rechnungsformulare(*.doc?);;Alle Dateien (*.*)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("docm"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    const QString target = dialog.selectedFiles().front();
    if (changesSettled && !changesSettled()) {
        return;
    }
    if (options_) {
        options_->set("DOCOpen", QFileInfo(target).absolutePath().toStdString());
    }
    try {
        ooxml::NewForm::create(*chosen, target.toStdString());
    } catch (const std::exception& error) {
        informationBox(QStringLiteral("Das Formular kann nicht erstellt werden: ") + target + QChar('\n') +
                       QString::fromUtf8(error.what()));
        return;
    }
    setWordDoc(target);
    if (withSlip) {
        emitEvent(WindowEvent::ESQRgo);
    }
}

void frmWordBM::closeEvent(QCloseEvent* event) {
    if (busy_) {
        // The work ends first (a long run's progress dialog offers to stop it); the window
        // closes after it.
        closeWanted_ = true;
        event->ignore();
        return;
    }
    // The engine decides when the program ends; the window stays until it has quit.
    emitEvent(WindowEvent::Quit);
    event->setAccepted(!(quitRefused && quitRefused()));
}

} // namespace wordbm
