#pragma once

#include "engine/ports/MergeChoices.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QLabel;
class QPushButton;

namespace wordbm {

class OptionsPort;

// "Rechnungen erstellen": what the merge run does with every invoice. Every choice but Delete is
// kept between runs as one tag-list text under the option "Options".
class frmMerge : public QDialog {
    Q_OBJECT
public:
    // What the run is about to do, shown above the choices; empty parts are not shown.
    struct Plan {
        QString run;     // how many invoices, into which folder
        QString printer; // the printer a ticked "Rechnungen drucken" prints on
    };

    frmMerge(OptionsPort& options, QWidget* parent = nullptr);

    // Shows the dialog modally; the choices when confirmed (and stored), nullopt when cancelled.
    static std::optional<MergeChoices> ask(QWidget* parent, OptionsPort& options, const Plan& plan = {});
    void showPlan(const Plan& plan);

    // The stored text: "Print=1;PDF=1;PDFA=1;Close=1;WordClose=0".
    static constexpr const char* OptionKey = "Options";

    bool cancelled() const { return cancelled_; }
    MergeChoices choices() const;
    // btnStd: the standard settings.
    void applyStandard();
    // btnDone: stores the choices and hides the dialog.
    void confirm();

private:
    void load();
    void onPDF();
    void onWordClose();
    void onDelete();
    void onPrint();

    OptionsPort& options_;
    bool cancelled_ = true;
    QCheckBox* chkPrint_ = nullptr;
    QCheckBox* chkPDF_ = nullptr;
    QCheckBox* chkPDFA_ = nullptr;
    QCheckBox* chkClose_ = nullptr;
    QCheckBox* chkDelete_ = nullptr;
    QCheckBox* chkWordClose_ = nullptr;
    QLabel* lblPlan_ = nullptr;
    QLabel* lblPrinter_ = nullptr;
};

} // namespace wordbm
