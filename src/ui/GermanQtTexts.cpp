#include "ui/GermanQtTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace wordbm {

bool GermanQtTexts::install() {
    auto* application = QCoreApplication::instance();
    if (!application) {
        return false;
    }
    static QTranslator* installed = nullptr;
    if (installed) {
        return true;
    }
    const QLocale swissGerman(QLocale::German, QLocale::Switzerland);
    QLocale::setDefault(swissGerman);
    // Owned by the application, so that it lives as long as the texts are looked up.
    auto* translator = new QTranslator(application);
    // de_CH falls back to de; Qt ships the German texts as qtbase_de.
    if (!translator->load(swissGerman, QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        !QCoreApplication::installTranslator(translator)) {
        delete translator;
        return false;
    }
    installed = translator;
    return true;
}

} // namespace wordbm
