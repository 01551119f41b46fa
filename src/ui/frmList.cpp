#include "ui/frmList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace wordbm {

frmList::frmList(const ResultList& result, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmList"));
    setWindowTitle(caption(result.testOnly));

    auto* layout = new QVBoxLayout(this);
    lblResult_ = new QLabel(countsText(result.total, result.ok, result.errors), this);
    lblResult_->setObjectName(QStringLiteral("lblResult"));
    layout->addWidget(lblResult_);

    List1_ = new QListWidget(this);
    List1_->setObjectName(QStringLiteral("List1"));
    for (const std::string& line : result.lines) {
        List1_->addItem(QString::fromStdString(line));
    }
    // The lines of a failed invoice stand out, so nobody has to read the whole list to find them.
    for (const std::size_t failed : result.failedLines) {
        if (QListWidgetItem* item = List1_->item(static_cast<int>(failed))) {
            item->setForeground(Qt::red);
            item->setIcon(style()->standardIcon(QStyle::SP_MessageBoxCritical));
        }
    }
    if (result.testOnly) {
        List1_->addItem(QStringLiteral("Es wurde geprüft, ob die Ordner vorhanden sind."));
    }
    layout->addWidget(List1_, 1);

    auto* buttons = new QHBoxLayout;
    auto* btnOk = new QPushButton(QStringLiteral("OK"), this);
    btnOk->setObjectName(QStringLiteral("btnOk"));
    btnOk->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(btnOk);
    layout->addLayout(buttons);
    connect(btnOk, &QPushButton::clicked, this, &QDialog::accept);

    // Invoice paths are long; the list should show them whole without a horizontal scroll.
    resize(640, 420);
}

void frmList::showResults(QWidget* parent, const ResultList& result) {
    frmList dialog(result, parent);
    dialog.exec();
}

QString frmList::countsText(std::int32_t total, std::int32_t ok, std::int32_t errors) {
    return QString::number(total) + QStringLiteral("   Total\r\n") + QString::number(ok) +
           QStringLiteral("   Ok\r\n") + QString::number(errors) + QStringLiteral("   Fehler");
}

QString frmList::caption(bool testOnly) {
    return testOnly ? QStringLiteral("Dateinamen testen") : QStringLiteral("Dateien verarbeitet");
}

} // namespace wordbm
