#include "tools/demo_shop/shop_time.h"

#include <QDateTime>
#include <QTimeZone>

namespace demo_shop {

namespace {

constexpr int kHour = 3600;

// Summer time of the EU begins and ends at 01:00 UTC of a month's last Sunday. Computed, so that
// the shop answers the same on a machine without a zone database.
qint64 lastSundayOf(int year, int month)
{
    const QDate last(year, month, 31);
    const QDate sunday = last.addDays(-(last.dayOfWeek() % 7));
    return (sunday.toJulianDay() - QDate(1970, 1, 1).toJulianDay()) * 24 * kHour + kHour;
}

QDateTime inUtc(qint64 utc)
{
    return QDateTime::fromSecsSinceEpoch(utc, QTimeZone::utc());
}

} // namespace

int germanOffset(qint64 utc)
{
    const int year = inUtc(utc).date().year();
    const bool summer = utc >= lastSundayOf(year, 3) && utc < lastSundayOf(year, 10);
    return summer ? 2 * kHour : kHour;
}

QString gmtText(qint64 utc)
{
    return inUtc(utc).toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss"));
}

QString localText(qint64 utc)
{
    return gmtText(utc + germanOffset(utc));
}

std::optional<qint64> momentOf(const QString& text, bool isGmt)
{
    QDateTime moment = QDateTime::fromString(text, Qt::ISODate);
    if (!moment.isValid())
        return std::nullopt;
    if (moment.timeSpec() != Qt::LocalTime)
        return moment.toSecsSinceEpoch();
    moment.setTimeZone(QTimeZone::utc());
    const qint64 asUtc = moment.toSecsSinceEpoch();
    return isGmt ? asUtc : asUtc - germanOffset(asUtc - kHour);
}

qint64 startOfGermanDay(QDate day)
{
    const qint64 asUtc = QDateTime(day, QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch();
    return asUtc - germanOffset(asUtc - kHour);
}

} // namespace demo_shop
