#pragma once

#include "support/Currency.h"
#include "support/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Conversions that follow Swiss German regional settings: "." as decimal point, "'" (or U+2019)
// as thousands mark, dates d.m.yyyy or yyyy-mm-dd with an optional time hh:mm[:ss].
namespace wordbm::regional {

// The permissive numeric test: surrounding blanks, a leading or trailing sign, thousands marks,
// a decimal point and an exponent are accepted. The empty text is not numeric.
bool isNumeric(std::string_view text);
std::optional<double> parseNumber(std::string_view text);

// Round half to even ("banker's rounding"), as whole-number conversions do.
double roundHalfEven(double value);

// Rounds half to even; throws OverflowError when the result does not fit.
std::int32_t toLong(double value);
std::int16_t toInteger(double value);
std::uint8_t toByte(double value);

// Exact decimal parse (no binary rounding) to four decimals, the fifth rounded half to even.
// Throws OverflowError beyond the 64-bit range; nullopt when not numeric.
std::optional<Currency> parseCurrency(std::string_view text);
Currency toCurrency(double value); // throws OverflowError

bool isDate(std::string_view text);
std::optional<Date> parseDate(std::string_view text);

// Calendar pieces to OLE serial days; nullopt for an impossible date.
std::optional<Date> dateSerial(int year, int month, int day);
double timeSerial(int hour, int minute, int second);

// "dd.mm.yyyy", followed by " hh:mm:ss" when the value has a time; a pure time gives "hh:mm:ss".
std::string formatDate(Date date);

// The shortest text that reads back to the same double, "." as decimal point, no thousands marks.
std::string formatNumber(double value);
std::string formatCurrency(Currency amount); // up to four decimals, trailing zeros dropped
// The same as formatNumber for the narrower types, so that 0.1f reads "0.1".
std::string formatSingle(float value);
std::string formatDecimal(long double value);

// "True"/"False" (also "Wahr"/"Falsch", any case) or a number (0 false, else true).
std::optional<bool> parseBoolean(std::string_view text);

} // namespace wordbm::regional
