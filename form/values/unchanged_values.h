#pragma once

#include "form/model/info.h"

namespace mod_form_qt {

/// Finds entries of a map by keys that mostly come in ascending order. The next entry is then the
/// one behind the last, and no search through the map is needed.
class KeyCursor
{
public:
    using Entry = QMap<QString, QVariant>::const_iterator;

    /// \param map     not null, outlives this
    /// \param prefix  stands before each key; with one, only entries that have it are found
    explicit KeyCursor(const QMap<QString, QVariant>* map, QString prefix = QString());

    /// \return  the entry `prefix` + `key`, null if there is none; valid until the next call and
    ///          until the map is written to
    const Entry* find(const QString& key);

    /// To be called when the map may have been written to.
    void forget() { m_known = false; }

private:
    bool isNext(const QString& key) const;
    void search(const QString& key);

    const QMap<QString, QVariant>* m_map;
    QString m_prefix;
    Entry m_found;
    Entry m_next; // the next entry in the order of keys
    Entry m_end; // behind the last one with the prefix
    bool m_known = false; // what is next and where the end is
};

/// Notes the rows of a form that need nothing done when they are given the value that their map
/// entry holds: inputs that show no more than it. To be called once all rows are in; the records of
/// the widgets take the note along when they go.
/// \param keys  of rows that are neither bound nor share their key with another row
void notePlainRows(const QSet<QString>& keys, QMap<QString, QVariant>* map);

/// Tells which values the rows of a form have already. Most keys of a form are given the value they
/// have, and in a form of thousands of rows everything that is looked at is in none of the caches:
/// neither the widgets nor their records are, if the row has been noted.
class UnchangedValues
{
public:
    /// \param map  the form data map; not null, outlives this
    explicit UnchangedValues(const QMap<QString, QVariant>* map);

    /// Fast for keys that come in ascending order.
    /// \return  true if giving a row that value would change neither the map, nor a variable, nor
    ///          what is shown. false also if this cannot be told at little cost
    bool holds(const QString& key, const QVariant& value);

    /// To be called when the map may have been written to.
    void forget();

private:
    bool isPlain(const QString& entryKey);
    const WIDGET_INFO* rowOf(const QString& key);

    const QMap<QString, QVariant>* m_map;
    KeyCursor m_entries;
    KeyCursor m_records;
    const QStringList* m_plain = nullptr; // null: not looked up yet
    qsizetype m_plainNext = 0; // index of the key that is expected next
};

} // namespace mod_form_qt
