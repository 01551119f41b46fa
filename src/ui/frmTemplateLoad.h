#pragma once

#include <QDialog>
#include <optional>
#include <string>

class QCheckBox;
class QLabel;
class QListWidget;

namespace wordbm {

// Picks an invoice form from the suite's forms folder ("billingforms", or "billingforms\wsb" for
// the old mail-merge forms).
class frmTemplateLoad : public QDialog {
    Q_OBJECT
public:
    // suiteFolder: the folder that holds "billingforms" (native or "\"-separated).
    explicit frmTemplateLoad(const std::string& suiteFolder, QWidget* parent = nullptr);

    // Shows the list modally. The chosen form's full native path, "" for "(leer - ohne Vorlage)",
    // nullopt when cancelled.
    static std::optional<std::string> Choose(QWidget* parent, const std::string& suiteFolder);

    // The folder listed, as a native path ending in "/".
    static std::string formsFolder(const std::string& suiteFolder, bool serial);

    bool cancelled() const { return cancelled_; }
    // The chosen entry's full path; "" for the first entry or when none is chosen.
    std::string Template() const;
    // Refills lstTemplate for the state of chkSerial, sorted by name as a person sorts (numbers
    // by their value), and says in lblFolder which folder it lists.
    void fill();
    // btnOk (and a double click in the list).
    void confirm();

private:
    std::string suiteFolder_;
    bool cancelled_ = true;
    QLabel* lblFolder_ = nullptr;
    QListWidget* lstTemplate_ = nullptr;
    QCheckBox* chkSerial_ = nullptr;
};

} // namespace wordbm
