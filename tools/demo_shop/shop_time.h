#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace demo_shop {

/// Seconds that the time of Germany is ahead of UTC at a moment.
/// \param utc  seconds since 1970-01-01 UTC
int germanOffset(qint64 utc);

/// "2026-01-05T09:15:00": a moment in UTC, as the shop's fields ending in _gmt have it.
QString gmtText(qint64 utc);

/// The same moment in German time, as the shop's other date fields have it.
QString localText(qint64 utc);

/// Reads the value of `after` or `before`.
/// \param isGmt  a text without a zone is UTC, else German time
/// \return       seconds since 1970-01-01 UTC; nothing if the text is no date
std::optional<qint64> momentOf(const QString& text, bool isGmt);

/// The moment at which a day begins in Germany.
qint64 startOfGermanDay(QDate day);

} // namespace demo_shop
