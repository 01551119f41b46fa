#pragma once

#include "engine/ports/DocumentCounts.h"
#include "engine/ports/MainWindowSetup.h"
#include "engine/ports/WindowEvent.h"
#include "engine/word/Forward.h"
#include "ui/FileManager.h"

#include <QStringList>
#include <QWidget>
#include <functional>
#include <string>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTimer;
class QGroupBox;

namespace wordbm {

class FormView;
class LayoutView;
class PagePreview;
class RecentFilesButton;
class OptionsPort;

// The main window: the two paths, the file-name mask and the engine's commands. It holds no
// document logic; every command goes to the engine as a WindowEvent through `raise`.
class frmWordBM : public QWidget {
    Q_OBJECT
public:
    // Receives the window's events; the engine's handler sits behind it.
    using Raise = std::function<void(WindowEvent, const std::string&)>;
    // The engine's open document, read for the form view; may be empty.
    using DocumentSource = std::function<word::DocumentPtr()>;

    explicit frmWordBM(QWidget* parent = nullptr);
    ~frmWordBM() override;

    void setRaise(Raise raise) { raise_ = std::move(raise); }
    void setDocumentSource(DocumentSource source);
    // Options for the new-form folder ("DOCOpen"), the last folders and the recent files; may
    // stay unset.
    void setOptions(OptionsPort* options);

    // Fills the boxes as the engine's Execute asks; the path boxes raise their open events.
    void execute(const MainWindowSetup& setup);
    // Display updates: they change the boxes without raising events.
    void showWordDoc(const std::string& original, const std::string& working);
    void clearWordDoc();
    void showCSVDoc(const std::string& original, const std::string& working);
    void clearCSVDoc();
    void showTrace(const std::string& trace);
    void showCounts(const DocumentCounts& counts);
    // Rereads the working form into the form view.
    void refreshForm();
    // The window's own caption, without the form's name; the engine's boxes take it as title.
    QString caption() const { return caption_; }
    // Marks the title while the working form holds changes not copied back to the original.
    void showFormChanged(bool changed);
    // While engine work runs: the window takes no input (boxes and dialogs still do), and after
    // a moment shows the busy pointer. Closing it waits for the work, then closes.
    void setBusy(bool busy);
    bool busy() const { return busy_; }
    // The preview no longer shows the state: redrawn now when it is in view, else when it comes
    // into view.
    void previewFollow();
    // Renders page 1 of the preview's choice (the working form's current state, or invoice 1)
    // through the office worker; false (the reason shown in the preview) when it cannot be rendered.
    bool renderPreview();
    // The preview tab; the program entry hands it the engine's invoice 1.
    PagePreview& preview() { return *preview_; }
    // The layout tab: the form's pages with their bookmarks, where a click places the cursor.
    LayoutView& layout() { return *layout_; }

    // Puts a path into a box as a person's choice would, raising the box's open event.
    void setWordDoc(const QString& path);
    void setCSVDoc(const QString& path);
    void setTemplate(const QString& mask);
    QString templateText() const;

    // Checks one drop on a path box; true when the path was taken. Shows "Maximal eine Datei!"
    // or the pattern message otherwise.
    bool dropOnWordDoc(const QStringList& paths);
    bool dropOnCSVDoc(const QStringList& paths);

    // The message box the window's own checks use; replaceable so tests can read it.
    std::function<void(const QString& text)> informationBox;
    // Called instead of QApplication::beep, so tests can count beeps.
    std::function<void()> beep;
    // Opens the template editor; set by the program entry, which knows the engine's template.
    std::function<void()> editTemplate;
    // The mask typed into txtTemplate, once editing ends.
    std::function<void(const std::string& mask)> templateChanged;
    // Shows the two paths' folders ("Ordner"); tests replace its launchers.
    FileManager& fileManager() { return fileManager_; }
    // Asked before a new form replaces the open one: what becomes of the open form's changes.
    // False when the person cancels. Unset, nothing is asked.
    std::function<bool()> changesSettled;
    // Asked after the window raised Quit: true while the program goes on (the person cancelled).
    std::function<bool()> quitRefused;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void updateEnabled();
    void emitEvent(WindowEvent event, const std::string& argument = {});
    bool dropOn(QLineEdit* box, const QStringList& paths, const QString& patterns, QChar separator);
    void pathEdited(QLineEdit* box, QString& last, WindowEvent event);
    void chooseWordDoc();
    void chooseCSVDoc();
    void newForm(bool withSlip);
    std::string exportForm(const std::string& pdfPath);
    void insertField();
    void showTitle();
    void addShortcuts();
    void tabOrder();
    bool previewInView() const;

    Raise raise_;
    DocumentSource documentSource_;
    OptionsPort* options_ = nullptr;
    FileManager fileManager_;

    QLabel* lblWordDoc_ = nullptr;
    QLineEdit* txtWordDoc_ = nullptr;
    QLabel* lblCSVDoc_ = nullptr;
    QLineEdit* txtCSVDoc_ = nullptr;
    QLineEdit* txtTemplate_ = nullptr;
    QTabWidget* tabOptions_ = nullptr;
    QGroupBox* fraEdit_ = nullptr;
    QGroupBox* fraMerge_ = nullptr;
    QComboBox* cbxFields_ = nullptr;
    QPushButton* btnInsert_ = nullptr;
    QPushButton* btnInsertESQR_ = nullptr;
    QPushButton* btnReplace_ = nullptr;
    QPushButton* btnVerify_ = nullptr;
    QPushButton* btnAnalyze_ = nullptr;
    QPushButton* btnReset_ = nullptr;
    QPushButton* btnMerge_ = nullptr;
    QPushButton* btnTest_ = nullptr;
    QPushButton* btnWordDocOpen_ = nullptr;
    QPushButton* btnWordDocClose_ = nullptr;
    QPushButton* btnWordDocShow_ = nullptr;
    QPushButton* btnWordDocCopy_ = nullptr;
    QPushButton* btnWordDocNew_ = nullptr;
    QPushButton* btnWordTemplate_ = nullptr;
    QPushButton* btnCSVDocOpen_ = nullptr;
    QPushButton* btnCSVDocClose_ = nullptr;
    QPushButton* btnCSVDocShow_ = nullptr;
    QPushButton* btnTemplate_ = nullptr;
    RecentFilesButton* btnWordDocRecent_ = nullptr;
    RecentFilesButton* btnCSVDocRecent_ = nullptr;
    QLabel* lblCounts_ = nullptr;
    QPlainTextEdit* txtTrace_ = nullptr;
    FormView* txtForm_ = nullptr;
    QTabWidget* tabView_ = nullptr;
    PagePreview* preview_ = nullptr;
    LayoutView* layout_ = nullptr;
    QTimer* Timer1_ = nullptr;
    QTimer* busyPointer_ = nullptr;

    QString caption_;
    bool formChanged_ = false;
    bool busy_ = false;
    bool previewStale_ = false;
    bool closeWanted_ = false;

    // The last paths raised, so an unchanged box raises nothing when editing ends.
    QString lastWordDoc_;
    QString lastCSVDoc_;
};

} // namespace wordbm
