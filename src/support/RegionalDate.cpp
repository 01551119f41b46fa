// The date half of the regional conversions (see Regional.h).
#include "support/Regional.h"
#include "support/Strings.h"

#include <cmath>

namespace wordbm::regional {

namespace {

constexpr long SecondsPerDay = 86400;
constexpr int MinYear = 100; // the first year that OLE dates hold
constexpr int MaxYear = 9999;
constexpr long OleEpochFromUnix = 25569; // days from 30 December 1899 to 1 January 1970

// Days since 1 January 1970 in the proleptic Gregorian calendar (H. Hinnant's algorithm).
long daysFromCivil(long year, long month, long day) {
    year -= month <= 2 ? 1 : 0;
    const long era = (year >= 0 ? year : year - 399) / 400;
    const long yearOfEra = year - era * 400;
    const long dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

struct Civil {
    long year;
    long month;
    long day;
};

Civil civilFromDays(long days) {
    days += 719468;
    const long era = (days >= 0 ? days : days - 146096) / 146097;
    const long dayOfEra = days - era * 146097;
    const long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long shiftedMonth = (5 * dayOfYear + 2) / 153;
    const long day = dayOfYear - (153 * shiftedMonth + 2) / 5 + 1;
    const long month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

bool isLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int daysInMonth(int year, int month) {
    static constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : Days[month - 1];
}

// Before the epoch the whole part counts days backwards while the fraction still adds the time,
// so -1.25 is 29 December 1899 06:00.
double combine(double day, double time) {
    return day < 0 ? day - time : day + time;
}

class DateScanner {
public:
    explicit DateScanner(std::string_view text) : text_(text) {}

    bool atEnd() const { return pos_ == text_.size(); }
    bool peek(char c) const { return !atEnd() && text_[pos_] == c; }
    bool take(char c) {
        const bool found = peek(c);
        pos_ += found ? 1 : 0;
        return found;
    }
    void rewind() { pos_ = 0; }

    // A run of 1 to maxDigits digits; `count` receives how many there were.
    std::optional<int> number(int maxDigits, int& count) {
        int value = 0;
        count = 0;
        while (!atEnd() && text_[pos_] >= '0' && text_[pos_] <= '9' && count < maxDigits) {
            value = value * 10 + (text_[pos_++] - '0');
            ++count;
        }
        if (count == 0 || (!atEnd() && text_[pos_] >= '0' && text_[pos_] <= '9')) {
            return std::nullopt;
        }
        return value;
    }

    std::optional<int> number(int maxDigits) {
        int count = 0;
        return number(maxDigits, count);
    }

    bool skipSeparatorBeforeTime() {
        if (take('T')) {
            return true;
        }
        bool any = false;
        while (take(' ')) {
            any = true;
        }
        return any;
    }

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};

// Two-digit years: 00-29 are this century, 30-99 the last.
int windowedYear(int year, int digits) {
    if (digits > 2) {
        return year;
    }
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<Date> scanSwissDate(DateScanner& in, int day) {
    const auto month = in.number(2);
    int yearDigits = 0;
    if (!month || !in.take('.')) {
        return std::nullopt;
    }
    const auto year = in.number(4, yearDigits);
    if (!year || yearDigits == 3) {
        return std::nullopt;
    }
    return dateSerial(windowedYear(*year, yearDigits), *month, day);
}

std::optional<Date> scanIsoDate(DateScanner& in, int year) {
    const auto month = in.number(2);
    if (!month || !in.take('-')) {
        return std::nullopt;
    }
    const auto day = in.number(2);
    return day ? dateSerial(year, *month, *day) : std::nullopt;
}

std::optional<double> scanTime(DateScanner& in) {
    const auto hour = in.number(2);
    if (!hour || !in.take(':')) {
        return std::nullopt;
    }
    const auto minute = in.number(2);
    if (!minute) {
        return std::nullopt;
    }
    std::optional<int> second = 0;
    if (in.take(':')) {
        second = in.number(2);
    }
    if (!second || !in.atEnd() || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    return timeSerial(*hour, *minute, *second);
}

// The date before an optional time; nullopt when the text does not start with a date.
std::optional<Date> scanDate(DateScanner& in) {
    int digits = 0;
    const auto first = in.number(4, digits);
    if (!first) {
        return std::nullopt;
    }
    if (digits <= 2 && in.take('.')) {
        return scanSwissDate(in, *first);
    }
    if (digits == 4 && in.take('-')) {
        return scanIsoDate(in, *first);
    }
    return std::nullopt;
}

std::string twoDigits(long value) {
    return zeroPad(value, 2);
}

std::string formatTime(long seconds) {
    return twoDigits(seconds / 3600) + ":" + twoDigits(seconds / 60 % 60) + ":" + twoDigits(seconds % 60);
}

} // namespace

std::optional<Date> dateSerial(int year, int month, int day) {
    if (year < MinYear || year > MaxYear || month < 1 || month > 12 || day < 1 ||
        day > daysInMonth(year, month)) {
        return std::nullopt;
    }
    return Date{static_cast<double>(daysFromCivil(year, month, day) + OleEpochFromUnix)};
}

double timeSerial(int hour, int minute, int second) {
    return (hour * 3600.0 + minute * 60.0 + second) / static_cast<double>(SecondsPerDay);
}

std::optional<Date> parseDate(std::string_view text) {
    const std::string trimmed = trim(text);
    DateScanner in(trimmed);
    const auto date = scanDate(in);
    if (!date) {
        in.rewind();
        const auto time = scanTime(in);
        return time ? std::optional<Date>(Date{*time}) : std::nullopt;
    }
    if (in.atEnd()) {
        return date;
    }
    if (!in.skipSeparatorBeforeTime()) {
        return std::nullopt;
    }
    const auto time = scanTime(in);
    return time ? std::optional<Date>(Date{combine(date->serial, *time)}) : std::nullopt;
}

bool isDate(std::string_view text) {
    return parseDate(text).has_value();
}

std::string formatDate(Date date) {
    // Far outside the calendar the value is no date; its number is the most honest text.
    if (!(std::fabs(date.serial) < 1e7)) {
        return formatNumber(date.serial);
    }
    const double whole = std::trunc(date.serial);
    long day = static_cast<long>(whole);
    long seconds = std::lround(std::fabs(date.serial - whole) * SecondsPerDay);
    if (seconds >= SecondsPerDay) {
        seconds -= SecondsPerDay;
        ++day;
    }
    if (day == 0) {
        return formatTime(seconds);
    }
    const Civil civil = civilFromDays(day - OleEpochFromUnix);
    std::string text = twoDigits(civil.day) + "." + twoDigits(civil.month) + "." + zeroPad(civil.year, 4);
    if (seconds != 0) {
        text += " " + formatTime(seconds);
    }
    return text;
}

} // namespace wordbm::regional
