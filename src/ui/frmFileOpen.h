#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;

namespace wordbm {

// Picks one file of a given kind by typing, dropping it on the field or through the file chooser.
class frmFileOpen : public QDialog {
    Q_OBJECT
public:
    enum class Kind { Default, BESR, Word, CSV };

    explicit frmFileOpen(QWidget* parent = nullptr);

    // Shows the dialog modally for one kind with `file` in the field; the field after btnDone,
    // nullopt when the dialog was closed any other way. A caption, when given, names the file in
    // place of the kind's own ("Word-Rechnungsformular" rather than "Word Datei"). The file
    // chooser starts in the folder of `file`, else in `startFolder` (the one last used).
    static std::optional<std::string> pick(QWidget* parent, Kind kind, const std::string& file = {},
                                           const QString& caption = {}, const QString& startFolder = {});

    // The kinds: lblFile caption and pattern list ("*.docx;*.docm").
    void SetDefault();
    void SetBESR();
    void SetWord();
    void SetCSV();
    void setKind(Kind kind);

    QString File() const;
    void setFile(const QString& file);
    QString kindCaption() const;
    // Where the file chooser starts when the field names no file in an existing folder.
    void setStartFolder(const QString& folder) { startFolder_ = folder; }
    // The folder of the field's file when it exists, else the start folder when it exists, else
    // the user's documents folder.
    QString chooserFolder() const;
    const QString& patterns() const { return patterns_; }

    // Why a drop of these files is refused ("Maximal eine Datei!", "Muss eine 'Word Datei' Datei
    // sein!"); empty when it is accepted. An empty pattern list accepts any single file. The main
    // window checks drops on its own path fields with the same rule.
    static QString dropRefusal(const QStringList& files, const QString& patterns, const QString& kind);
    // The chooser's filter in Qt's form: "Word Datei (*.docx *.docm);;Alle Dateien (*)".
    static QString chooserFilter(const QString& kind, const QString& patterns);

    // Takes dropped files: the refusal goes to inform, an accepted file into File.
    bool dropFiles(const QStringList& files);
    // btnChoose: the chosen file goes into File; cancelling changes nothing.
    void chooseFile();

    // The information box and the file chooser, replaceable so that tests answer them.
    // openFile returns "" when cancelled.
    std::function<void(QWidget*, const QString& title, const QString& text)> inform;
    std::function<QString(QWidget*, const QString& title, const QString& filter)> openFile;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setCaption(const QString& caption, const QString& patterns);

    QLabel* lblFile_ = nullptr;
    QLineEdit* File_ = nullptr;
    QString patterns_;
    QString startFolder_;
};

} // namespace wordbm
