#pragma once

#include "form/model/info.h"

namespace mod_form_qt {

/// The value of a row where it lives: in the variable the row is bound to, otherwise in the form
/// data map. A binding is never lost: if the map entry has meanwhile been replaced by a plain
/// value, a change goes to the variable and to that entry.
class RowValue
{
public:
    /// \param row  outlives this
    /// \param key  used if the row has none; empty: the value lives nowhere
    RowValue(const INFO& row, QMap<QString, QVariant>* map, const QString& key = QString());

    /// \return  false if there is nowhere to write to
    bool exists() const;

    /// \return  the value; of list data the list itself, of a pointer what it points at
    QVariant read() const;
    void write(const QVariant& value);

    /// \return  the items of a list row: of the bound list, else of the map entry, else of the
    ///          row's own data
    T_LISTDATA readList() const;
    void writeList(const T_LISTDATA& list);

    const QString& key() const { return m_key; }

private:
    QVariant m_bound; // the row's pointer; invalid if it has none
    const INFO& m_row;
    QMap<QString, QVariant>* m_map;
    QString m_key;
};

/// Name of the property in which the widgets of a bound row keep the pointer: T_VARIANT_PTR or
/// T_LISTDATA_PTR.
inline constexpr const char* boundPropertyKey = "mod_form_qt_bound";

// The value of a row whose INFO is not at hand.
// \param bound  the row's pointer; invalid or null if it has none

/// \return  the pointer that a row's widgets keep, invalid if there is none
QVariant boundPointer(const WIDGET_INFO& row);

/// Writes the variable behind the row's pointer, and the map entry: through the pointer that stands
/// there, over a plain value; a missing one is made. A value for a list marks its items.
void storeValue(const QVariant& bound, QMap<QString, QVariant>* map, const QString& key,
                const QVariant& value);
/// As above, for other items.
void storeList(const QVariant& bound, QMap<QString, QVariant>* map, const QString& key,
               const T_LISTDATA& list);

/// \return  the list data where it lives, null if there is none; valid until the next change
const T_LISTDATA* findList(const QVariant& bound, const QMap<QString, QVariant>* map,
                           const QString& key);

/// \return  true for values of one type that are equal. Not `==` alone, which takes "05" and 5 for
///          the same
bool isSameValue(const QVariant& one, const QVariant& other);

/// As `==`, but does not read texts that share their characters, as copies of one do.
bool isSameText(const QString& one, const QString& other);

/// \return  true for a row whose inputs show its value and nothing else: numbers, dates, texts,
///          check boxes and radio buttons
bool isValueRow(int eleType);

/// \return  true if the row takes its first value from the map
bool usesMapValue(const INFO& row, bool useMapValues, const QSet<QString>& loadedKeys);

/// Ties a row to the map when it is built: takes its first value from the map where the row or the
/// form says so, gives a pointer row without a key a generated one, and puts the row's data into
/// the map. A plain value in the map goes into the row's variable; a pointer in the map is taken
/// over only by a row without one of its own. A selection marks the row's list data.
/// \param row           in/out
/// \param useMapValues  the form's `MF_USE_MAP_VALUES`
/// \param loadedKeys    keys that have just been loaded from a file; they count as
///                      `A_USE_MAP_VALUE`
void bindRow(INFO& row, QMap<QString, QVariant>* map, bool useMapValues,
             const QSet<QString>& loadedKeys);

} // namespace mod_form_qt
