#pragma once

#include "form/model/list_data.h"

#include <QMap>
#include <QMetaType>
#include <QSet>
#include <QString>
#include <QVariant>

namespace mod_form_qt {

/// One row of a form description. Its static members are the engine's operations; they take the
/// form data map as a pointer that may be null, and refuse instead of throwing.
class INFO
{
public:
    // All constants are inline: whoever includes this header, even for an object that is built
    // before main, finds them initialised and the types registered.

    /// Meta-type ids of what a value may hold beside plain data.
    inline static const int LISTDATA_METATYPE =
        qRegisterMetaType<T_LISTDATA>("mod_form_qt::T_LISTDATA");
    inline static const int LISTDATA_PTR_METATYPE =
        qRegisterMetaType<T_LISTDATA_PTR>("mod_form_qt::T_LISTDATA_PTR");
    inline static const int VARIANT_PTR_METATYPE =
        qRegisterMetaType<T_VARIANT_PTR>("mod_form_qt::T_VARIANT_PTR");
    inline static const int VARMAP_SHARED_PTR_METATYPE =
        qRegisterMetaType<T_VARMAP_SHARED_PTR>("mod_form_qt::T_VARMAP_SHARED_PTR");

    /// Default key of the value that holds a whole map in an INI group.
    inline static const QString iniVariantMapKey = QStringLiteral("vmap");

    /// Prefixes of the engine's own, temporary entries in a form data map.
    inline static const QString automatikVarName = QStringLiteral("::mod_form_qt_auto_var:");
    inline static const QString widgetDataVarName = QStringLiteral("::mod_form_qt_widget_data:");
    inline static const QString objectDataVarName = QStringLiteral("::mod_form_qt_object_data:");

    /// \return  true if `key` starts, case-sensitively, with one of the three prefixes. Such
    ///          entries are never written to and never taken from a file.
    static bool isTempKeyName(const QString& key);

    // Kinds of values. A value that holds the type itself and one that points at it differ; none
    // of these looks behind a pointer.

    static bool isListData(const QVariant& value);
    static bool isListDataPtr(const QVariant& value);
    static bool isListDataOrListDataPtr(const QVariant& value);
    static bool isVariantPtr(const QVariant& value);
    static bool isVariantMap(const QVariant& value);
    /// \return  true for a QVariantList; a list of texts or of another type is none
    static bool isQVariantListType(const QVariant& value);

    /// \return  the value of the first selected item, invalid if none is selected
    static QVariant getSelectedListValue(const T_LISTDATA& list);
    /// \param list  list data or a pointer to it; anything else and null have no selection
    static QVariant getSelectedListValue(const QVariant& list);

    /// \return  the values of the selected items in the order of the items
    static QVariantList getSelectedListValues(const T_LISTDATA& list);
    /// \param list  list data or a pointer to it; anything else and null have no selection
    static QVariantList getSelectedListValues(const QVariant& list);

    /// Reduces a value to the plain data behind it.
    /// \param value   a value as it stands in a form data map
    /// \param asList  list data gives a list in any case; wins over `single`
    /// \param single  list data with exactly one selected item gives that item's value
    /// \return        of list data the values of the selected items, as a QVariantList that is
    ///                empty if there is none; of a pointer what it points at, through any number
    ///                of pointers; invalid for a null pointer and for pointers that form a ring;
    ///                anything else as it is
    static QVariant getBaseValue(const QVariant& value, bool asList = false, bool single = false);

    /// Reduces the entry `key` of `map`, as above.
    /// \return  invalid also for a null map and a missing key; the map is never changed
    static QVariant getBaseValue(const QMap<QString, QVariant>* map, const QString& key,
                                 bool asList = false, bool single = false);

    /// Without this one, a literal as key would as well be read as the switch of a single value.
    static QVariant getBaseValue(const QMap<QString, QVariant>* map, const char* key,
                                 bool asList = false, bool single = false)
    {
        return getBaseValue(map, QString::fromUtf8(key), asList, single);
    }

    /// \return  `iniVariantMapKey`
    static QString getDefaultIniSumMapName();

    /// Stores a map in a group of an INI file and leaves the file's other groups alone. List data
    /// is stored by its selection, a pointer by what it points at. Temporary entries and values
    /// that could not be read back are left out.
    /// \param map           null does nothing
    /// \param fileName      the file; it and its folder are created as needed. Empty does nothing
    /// \param group         the group's name
    /// \param separateKeys  false: the map is one value under `sumMapName`, which it replaces, even
    ///                      with an empty map. true: each entry has a key of its own, and keys that
    ///                      are in the group already stay; entries with a "/" in their key go to a
    ///                      subgroup, from which they are not read back
    /// \param keys          if not null, only entries whose key it holds are stored
    /// \param sumMapName    empty stands for `iniVariantMapKey`
    ///
    /// A failure of any kind is silent: the save then has no effect.
    static void saveMapToIniFile(const QMap<QString, QVariant>* map, const QString& fileName,
                                 const QString& group, bool separateKeys = false,
                                 const QSet<QString>* keys = nullptr,
                                 const QString& sumMapName = QString());

    /// Reads back what `saveMapToIniFile` has stored.
    /// \param map           out. With `separateKeys` false the stored map replaces it, otherwise
    ///                      the stored entries are added to it. Values stored under keys of their
    ///                      own may come back as texts
    /// \param separateKeys  as at the save; the key `sumMapName` is then passed over
    /// \param sumMapName    empty stands for `iniVariantMapKey`
    /// \return              true if the attempt ran, which includes a missing or unreadable file,
    ///                      group or key: `map` is then untouched. false for a null map, an empty
    ///                      file name and after an exception
    static bool loadMapFromIniFile(QMap<QString, QVariant>* map, const QString& fileName,
                                   const QString& group, bool separateKeys = false,
                                   const QString& sumMapName = QString());
};

} // namespace mod_form_qt
