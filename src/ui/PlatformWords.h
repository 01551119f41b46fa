#pragma once

#include <QString>

namespace wordbm {

// What the program's texts about "Word" mean here, where no Word window shows the form: the
// embedded word processor of WordBM holds the form's working copy. The texts themselves stay as
// they are; these words are shown with them.
class PlatformWords {
public:
    // A few sentences for a message box whose text speaks of closing or reaching Word; empty for
    // any other text.
    static QString explanation(const QString& boxText);
    // The tooltip of the merge dialog's "Word schliessen".
    static QString wordCloseTip();
};

} // namespace wordbm
