#pragma once

#include "engine/ports/ResultList.h"

#include <QDialog>
#include <cstdint>

class QLabel;
class QListWidget;

namespace wordbm {

// The counts and lines of a merge run or of a file-name test.
class frmList : public QDialog {
    Q_OBJECT
public:
    explicit frmList(const ResultList& result, QWidget* parent = nullptr);

    // Shows the result modally until btnOk.
    static void showResults(QWidget* parent, const ResultList& result);

    // The three count lines joined by CR LF: "3   Total", "2   Ok", "1   Fehler".
    static QString countsText(std::int32_t total, std::int32_t ok, std::int32_t errors);
    static QString caption(bool testOnly);

private:
    QLabel* lblResult_ = nullptr;
    QListWidget* List1_ = nullptr;
};

} // namespace wordbm
