#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QVariant>

namespace mod_form_qt {

/// How deep values may be nested in lists and maps. What a user makes has a few levels; damaged
/// bytes may claim thousands, which no stack holds.
inline constexpr int maxValueDepth = 64;

/// Tells whether a value survives being written to a file. One value that does not makes the whole
/// map in which it stands unreadable.
/// \return  false if the value, or one inside its lists and maps, is of a type that cannot be
///          written to a data stream, such as a pointer, or nested deeper than
///          `maxValueDepth`; an invalid value can
bool isPersistable(const QVariant& value);

/// The entries of a map as they go into a file or another image of the map.
/// \param keys  if not null, only entries whose key it holds are taken
/// \return      the base values by key, without temporary entries and without values that are not
///              persistable
QMap<QString, QVariant> persistedEntries(const QMap<QString, QVariant>& map,
                                         const QSet<QString>* keys);

} // namespace mod_form_qt
