#include "accounting/shopdates.h"

#include <QDebug>
#include <QLoggingCategory>

#include <array>
#include <chrono>
#include <ctime>
#include <optional>

using std::chrono::sys_seconds;

bool bUseUTC = true;
QTimeZone tzLocal;

namespace {

bool isDebugEnabled()
{
    return QLoggingCategory::defaultCategory()->isDebugEnabled();
}

void reportForeignZone(const QString& dateText, const QDateTime& local, const QDateTime& utc)
{
    // Asked first, since outside the German zone the comparison fails for every date.
    if (!isDebugEnabled())
        return;
    const QDateTime machine = utc.toLocalTime();
    if (local != machine)
        qDebug() << dateText << local << utc << machine
                 << (utc.isDaylightTime() ? "true" : "false");
}

/// Reads digits of a text; -1 if one of them is none.
int numberAt(QStringView text, qsizetype from, qsizetype count)
{
    int number = 0;
    for (const QChar digit : text.sliced(from, count)) {
        if (digit < u'0' || digit > u'9')
            return -1;
        number = number * 10 + (digit.unicode() - u'0');
    }
    return number;
}

/// Reads the one form in which shops send dates, "2026-01-12T11:17:37"; nothing for any other.
std::optional<sys_seconds> readPlainForm(QStringView text)
{
    using namespace std::chrono;
    if (text.size() != 19 || text[4] != u'-' || text[7] != u'-' || text[10] != u'T'
        || text[13] != u':' || text[16] != u':')
        return {};
    const int hour = numberAt(text, 11, 2);
    const int minute = numberAt(text, 14, 2);
    const int second = numberAt(text, 17, 2);
    const int yearNumber = numberAt(text, 0, 4);
    const int monthNumber = numberAt(text, 5, 2);
    const int dayNumber = numberAt(text, 8, 2);
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59
        || yearNumber < 2000 || yearNumber > 2036 || monthNumber < 0 || dayNumber < 0)
        return {};
    const year_month_day date {year(yearNumber), month(static_cast<unsigned>(monthNumber)),
                               day(static_cast<unsigned>(dayNumber))};
    if (!date.ok())
        return {};
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

QString plainForm(sys_seconds time)
{
    using namespace std::chrono;
    const sys_days midnight = floor<days>(time);
    const year_month_day date(midnight);
    const hh_mm_ss clock(time - midnight);
    std::array<char16_t, 19> text {};
    auto put = [&text](std::size_t last, int number, int count, char16_t separator) {
        for (; count > 0; --count, number /= 10)
            text[last--] = static_cast<char16_t>(u'0' + number % 10);
        if (separator != 0)
            text[last] = separator;
    };
    put(3, static_cast<int>(date.year()), 4, 0);
    put(6, static_cast<int>(static_cast<unsigned>(date.month())), 2, u'-');
    put(9, static_cast<int>(static_cast<unsigned>(date.day())), 2, u'-');
    put(12, static_cast<int>(clock.hours().count()), 2, u'T');
    put(15, static_cast<int>(clock.minutes().count()), 2, u':');
    put(18, static_cast<int>(clock.seconds().count()), 2, u':');
    return QStringView(text.data(), text.size()).toString();
}

/// The offset of the machine's own zone around a time, in seconds; nothing near a clock change.
std::optional<long> steadyMachineOffset(sys_seconds time)
{
    // Wide enough for a wall clock of any zone, read as UTC, and an offset added to it. No zone
    // changes its clock there and back within three days.
    constexpr std::chrono::hours Reach(36);
    std::tm before {};
    std::tm after {};
    const std::time_t from = std::chrono::system_clock::to_time_t(time - Reach);
    const std::time_t to = std::chrono::system_clock::to_time_t(time + Reach);
    if (localtime_r(&from, &before) == nullptr || localtime_r(&to, &after) == nullptr
        || before.tm_gmtoff != after.tm_gmtoff)
        return {};
    return before.tm_gmtoff;
}

/// What the general way gives for a date in the usual form, away from the machine's clock changes:
/// adding an offset then moves the wall clock by just this much. Worth it because every date-time
/// in local time asks the system for the zone again, several times.
std::optional<QString> convertUsualDate(const QString& dateText)
{
    const std::optional<sys_seconds> time = readPlainForm(dateText);
    if (!time || !tzLocal.isValid())
        return {};
    const std::optional<long> machineOffset = steadyMachineOffset(*time);
    if (!machineOffset)
        return {};
    const qint64 seconds = time->time_since_epoch().count();
    const int offset = tzLocal.offsetFromUtc(QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC));
    if (offset != *machineOffset && isDebugEnabled())
        return {}; // the general way reports such a date
    return plainForm(*time + std::chrono::seconds(offset));
}

} // namespace

QDateTime wallClockOf(const QTimeZone& zone, const QDateTime& plain, const QDateTime& utc)
{
    // Seconds are added to `plain` and not to `utc`, so that the text keeps the form it came in:
    // with "Z" or an offset, or without either.
    return zone.isValid() ? plain.addSecs(zone.offsetFromUtc(utc)) : utc.toLocalTime();
}

QString ConvertUTCDateToLocalDate(const QString& dateText)
{
    if (!bUseUTC || QStringView(dateText).trimmed().isEmpty())
        return dateText;
    if (!tzLocal.isValid())
        tzLocal = QTimeZone("Europe/Berlin");
    if (const std::optional<QString> converted = convertUsualDate(dateText))
        return *converted;

    const QDateTime plain = QDateTime::fromString(dateText, Qt::ISODate);
    QDateTime utc = plain;
    utc.setTimeSpec(Qt::UTC);
    const QDateTime local = wallClockOf(tzLocal, plain, utc);
    reportForeignZone(dateText, local, utc);
    return local.toString(Qt::ISODate);
}

QString ConvertUTCDateToLocalDate(const QJsonObject& object, const QString& key)
{
    const QJsonValue date = bUseUTC ? object.value(key + QLatin1String("_gmt")) : object.value(key);
    return ConvertUTCDateToLocalDate(date.toVariant().toString());
}
