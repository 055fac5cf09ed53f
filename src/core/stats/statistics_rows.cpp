#include "core/stats/statistics_rows.h"

namespace tavrix {

namespace {

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
qint64 daysFromCivil(qint64 year, unsigned month, unsigned day)
{
    year -= month <= 2;
    const qint64 era = (year >= 0 ? year : year - 399) / 400;
    const auto yearOfEra = static_cast<unsigned>(year - era * 400);
    const unsigned dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + qint64(dayOfEra) - 719468;
}

// The digits at [from, from + count) as a number; nothing when one is not a digit.
std::optional<int> digits(std::string_view text, std::size_t from, std::size_t count)
{
    int value = 0;
    for (std::size_t i = from; i < from + count; ++i) {
        const char c = text[i];
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

} // namespace

std::optional<qint64> localSeconds(std::string_view text)
{
    if (text.size() < 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = digits(text, 0, 4);
    const auto month = digits(text, 5, 2);
    const auto day = digits(text, 8, 2);
    if (!year || !month || !day || *month < 1 || *month > 12 || *day < 1 || *day > 31)
        return std::nullopt;
    qint64 seconds = daysFromCivil(*year, unsigned(*month), unsigned(*day)) * 86400;
    if (text.size() == 10)
        return seconds;
    if (text.size() < 19 || (text[10] != ' ' && text[10] != 'T') || text[13] != ':' || text[16] != ':')
        return std::nullopt;
    const auto hour = digits(text, 11, 2);
    const auto minute = digits(text, 14, 2);
    const auto second = digits(text, 17, 2);
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 60)
        return std::nullopt;
    return seconds + *hour * 3600 + *minute * 60 + *second;
}

qint64 localDay(qint64 seconds)
{
    return seconds >= 0 ? seconds / 86400 : -((-seconds + 86399) / 86400);
}

} // namespace tavrix
