#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QComboBox;
class QLabel;
class QLineEdit;

namespace wordbm {

class CSVfile;
class FileNameTemplate;

// "Maske für Word-Dateinamen bearbeiten": edits a file-name mask with the template's tags,
// environment variables and standard masks as pick lists. Under the mask it shows, as the user
// types, the name the mask gives the first row of the control file, so a wrong tag or extension
// shows before a whole run is named with it.
class frmFileNameTemplate : public QDialog {
    Q_OBJECT
public:
    frmFileNameTemplate(const FileNameTemplate& owner, const std::string& mask, QWidget* parent = nullptr);
    ~frmFileNameTemplate() override;

    // Shows the editor modally; the mask field after btnOk, nullopt when closed any other way.
    static std::optional<std::string> edit(QWidget* parent, const FileNameTemplate& owner,
                                           const std::string& mask);

    // The folder chooser and the overwrite question, replaceable so that tests answer them.
    // chooseFolder returns "" when cancelled; askOverwrite returns a msgbox answer (Yes, No, Cancel).
    std::function<QString(QWidget*)> chooseFolder;
    std::function<int(QWidget*, const QString& text, const QString& title)> askOverwrite;

    bool cancelled() const { return cancelled_; }
    std::string mask() const;

    // The buttons' work, for tests and the buttons alike.
    void insertTag();       // btnInsert1
    void insertVariable();  // btnInsert2
    void insertStandard();  // btnInsert3
    void insertBackslash(); // btnBackslash
    void insertFolder();    // btnPathSelect
    void clearMask();       // btnDelete
    void confirm();         // btnOk

private:
    void insertAtCursor(const QString& text);
    void readControlFile();
    void showExample(); // lblExample
    QString exampleText(const std::string& name) const;

    const FileNameTemplate& owner_;
    std::unique_ptr<CSVfile> data_;
    QString noExample_; // why no name can be shown, or empty

    bool cancelled_ = true;
    QLineEdit* txtTemplate_ = nullptr;
    QLabel* lblExample_ = nullptr;
    QComboBox* cboTags_ = nullptr;
    QComboBox* cboVariables_ = nullptr;
    QComboBox* cboStandards_ = nullptr;
};

} // namespace wordbm
