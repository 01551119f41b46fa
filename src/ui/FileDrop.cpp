#include "ui/FileDrop.h"

#include <QDropEvent>
#include <QMimeData>

namespace wordbm {

bool FileDrop::acceptCopy(QDropEvent* event) {
    if (!event->mimeData()->hasUrls() || !(event->possibleActions() & Qt::CopyAction)) {
        event->ignore();
        return false;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return true;
}

} // namespace wordbm
