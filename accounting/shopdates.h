#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QTimeZone>

/// True if the shop's dates are read as UTC, from the fields that end in "_gmt", and shown as wall
/// clock of the German zone; false to take them as they come.
extern bool bUseUTC;

/// The German zone. Invalid until the first conversion, and for ever on a machine whose zone
/// database lacks it; a valid zone is kept.
extern QTimeZone tzLocal;

/// The wall clock of a zone for a time in UTC.
/// \param zone   an invalid one stands for the machine's own zone
/// \param plain  the date as it was read, with the zone that its text names
/// \param utc    the same wall clock taken as UTC
QDateTime wallClockOf(const QTimeZone& zone, const QDateTime& plain, const QDateTime& utc);

/// Turns a shop date that is meant as UTC into wall-clock text of the German zone.
/// \param dateText  ISO 8601; "Z" or an offset at its end is ignored for the conversion and kept
/// \return          ISO 8601 without milliseconds; empty for a text that is no date. A blank text
///                  comes back unchanged, and so does every text if `bUseUTC` is false.
///
/// Times that the machine's own zone skips or repeats at a clock change follow that zone's clock.
QString ConvertUTCDateToLocalDate(const QString& dateText);

/// Reads a date field of a shop record and converts it: the field `key` + "_gmt" if `bUseUTC` is
/// true, else `key` itself. A missing field and null give an empty text.
QString ConvertUTCDateToLocalDate(const QJsonObject& object, const QString& key);
