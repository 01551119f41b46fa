#pragma once

#include "engine/ports/SlipChoices.h"

#include <QDialog>
#include <array>
#include <optional>
#include <string>

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace wordbm {

// Which pieces of the QR payment slip go into the open form, with which cut marks and borders,
// and in which language. The caller reads the choices after the dialog is gone.
class frmESQR : public QDialog {
    Q_OBJECT
public:
    explicit frmESQR(const std::string& wordDoc, QWidget* parent = nullptr);

    // Shows the dialog modally; the choices after btnGo, nullopt when cancelled.
    static std::optional<SlipChoices> ask(QWidget* parent, const std::string& wordDoc);

    bool cancelled() const { return cancelled_; }
    SlipChoices choices() const;
    // The caption of the chosen language option; "Englisch" unless one of the first three is chosen.
    std::string Language() const;

private:
    bool cancelled_ = true;
    QLineEdit* txtWordDoc_ = nullptr;
    QCheckBox* chkMBborder_ = nullptr;
    QCheckBox* chkDelete_ = nullptr;
    QCheckBox* chkET_ = nullptr;
    QCheckBox* chkZT_ = nullptr;
    QCheckBox* chkETborder_ = nullptr;
    QCheckBox* chkZTborder_ = nullptr;
    QCheckBox* chkSTborder_ = nullptr;
    QCheckBox* chkST_ = nullptr;
    std::array<QRadioButton*, 4> Option1_{};
};

} // namespace wordbm
