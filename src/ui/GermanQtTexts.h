#pragma once

namespace wordbm {

// Qt's own texts in German whatever language the desktop speaks: the standard buttons ("Ja",
// "Nein", "Abbrechen"), the file dialog, the context menus of text boxes. The program speaks
// German throughout, and a box asking in German must not answer in English.
class GermanQtTexts {
public:
    // Loads Qt's German translations into the running application (once) and makes Swiss German
    // the widgets' locale. False when Qt's translations are not installed
    // (Debian: qt6-translations-l10n); the standard texts then stay English.
    static bool install();
};

} // namespace wordbm
