#pragma once

#include <QWidget>

class QLabel;
class QSpinBox;
class QToolButton;

namespace wordbm {

// Which invoice of the control file is shown: its number, with a step back and forth and the count
// beside it. Invoices are numbered from 1 as the merge run makes them.
class InvoiceRowChooser : public QWidget {
    Q_OBJECT
public:
    explicit InvoiceRowChooser(QWidget* parent = nullptr);

    int invoice() const;
    // How many invoices there are; 0 leaves only invoice 1, which then tells that there is none.
    void setCount(int count);
    // Shows `invoice`, kept within 1 and the count; emits chosen when it changes.
    void choose(int invoice);

signals:
    // A person chose another invoice.
    void chosen(int invoice);

private:
    void updateSteps();

    QSpinBox* spnInvoice_ = nullptr;
    QToolButton* btnPrevious_ = nullptr;
    QToolButton* btnNext_ = nullptr;
    QLabel* lblCount_ = nullptr;
};

} // namespace wordbm
