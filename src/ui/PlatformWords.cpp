#include "ui/PlatformWords.h"

namespace wordbm {

QString PlatformWords::explanation(const QString& boxText) {
    if (boxText == QStringLiteral("Word schliessen?")) {
        return QStringLiteral("Unter Linux zeigt kein Word-Fenster das Formular: gemeint ist das "
                              "Textprogramm in WordBM, das die Arbeitskopie offen hält.\n"
                              "Ja beendet es jetzt, Nein erst, wenn es nicht mehr gebraucht wird; "
                              "für das Formular ist das gleich: das Original bleibt, wie es ist.");
    }
    if (boxText.contains(QStringLiteral("Word wird geschlossen."))) {
        return QStringLiteral("Unter Linux heisst das: die Arbeitskopie wird in WordBM geschlossen; "
                              "das Fenster von WordBM bleibt offen.");
    }
    if (boxText.contains(QStringLiteral("Word kann nicht angesprochen werden!"))) {
        return QStringLiteral("Das Textprogramm in WordBM hat die Arbeitskopie nicht mehr offen. "
                              "Bitte das Word-Rechnungsformular neu öffnen.");
    }
    return {};
}

QString PlatformWords::wordCloseTip() {
    return QStringLiteral("Nach der letzten Rechnung das Word-Rechnungsformular (die Arbeitskopie) "
                          "schliessen. Unter Linux gibt es kein Word-Fenster: WordBM bleibt offen.");
}

} // namespace wordbm
