#include "support/SystemErrorText.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <locale.h>
#include <utility>

namespace wordbm {

namespace {

// The failures a person meets with files and folders, worded as the program's own messages are.
constexpr std::array<std::pair<int, const char*>, 18> CommonTexts{{
    {ENOENT, "Datei oder Ordner nicht gefunden"},
    {EACCES, "Zugriff verweigert"},
    {EPERM, "Vorgang nicht erlaubt"},
    {ENOSPC, "Kein Platz mehr auf dem Datenträger"},
    {EDQUOT, "Speicherkontingent überschritten"},
    {EROFS, "Der Datenträger ist schreibgeschützt"},
    {EEXIST, "Die Datei ist bereits vorhanden"},
    {ENOTDIR, "Ein Teil des Pfads ist kein Ordner"},
    {EISDIR, "Das ist ein Ordner, keine Datei"},
    {EBUSY, "Das Gerät oder die Datei ist belegt"},
    {ETXTBSY, "Die Datei ist in Gebrauch"},
    {EIO, "Ein-/Ausgabefehler des Datenträgers"},
    {EMFILE, "Zu viele offene Dateien"},
    {ENFILE, "Zu viele offene Dateien im System"},
    {ENAMETOOLONG, "Der Dateiname ist zu lang"},
    {EXDEV, "Verschieben zwischen Datenträgern nicht möglich"},
    {EFBIG, "Die Datei ist zu gross"},
    {ENOTEMPTY, "Der Ordner ist nicht leer"},
}};

// A German locale of the C library, looked for once; none when the system has none installed.
locale_t germanLocale() {
    static const locale_t found = [] {
        for (const char* name : {"de_CH.UTF-8", "de_DE.UTF-8", "de_AT.UTF-8", "de_LI.UTF-8", "de_LU.UTF-8",
                                 "de_BE.UTF-8", "de_IT.UTF-8"}) {
            if (locale_t locale = ::newlocale(LC_MESSAGES_MASK, name, static_cast<locale_t>(nullptr))) {
                return locale;
            }
        }
        return static_cast<locale_t>(nullptr);
    }();
    return found;
}

} // namespace

std::string SystemErrorText::of(int code) {
    for (const auto& [value, text] : CommonTexts) {
        if (value == code) {
            return text;
        }
    }
    if (const locale_t german = germanLocale()) {
        return ::strerror_l(code, german);
    }
    // strerror's buffer is shared between threads; strerror_l in the C locale is not.
    if (const locale_t plain = ::newlocale(LC_MESSAGES_MASK, "C", static_cast<locale_t>(nullptr))) {
        std::string text = ::strerror_l(code, plain);
        ::freelocale(plain);
        return text;
    }
    return "Systemfehler " + std::to_string(code);
}

std::string SystemErrorText::of(const std::error_code& error) {
    if (error.category() == std::generic_category() || error.category() == std::system_category()) {
        return of(error.value());
    }
    return error.message();
}

} // namespace wordbm
