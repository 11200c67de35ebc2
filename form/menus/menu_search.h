#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <QWidgetAction>

namespace mod_form_qt {

/// An entry and the menu it stands in, null for a top-level menu.
using PlacedMenuEntry = std::pair<MenuEntry, QPointer<QMenu>>;

/// Lists a menu and, depth first, everything in it, and writes it to the debug log.
/// \param level  depth of `menu`, 0 for a top-level one
/// \param out    gets the entries appended; null lists to the log only
MOD_FORM_QT_EXPORT void showTree(QMenu* menu, int level, std::vector<MenuEntry>* out);

/// The entry itself, for collections with and without the menus.
inline const MenuEntry& menuEntry(const MenuEntry& entry)
{
    return entry;
}

/// The entry of a pair of entry and menu.
inline const MenuEntry& menuEntry(const PlacedMenuEntry& placed)
{
    return placed.first;
}

/// \param entries  what `showTree` or `INFO::collectMenuData` has listed
/// \param matches  gets an entry of kind T
/// \return         the first entry of that kind that matches, null if there is none
template <typename T, typename Entries, typename Matches>
T* findMenuEntry(const Entries& entries, const Matches& matches)
{
    for (const auto& listed : entries) {
        const auto* entry = std::get_if<QPointer<T>>(&menuEntry(listed));
        if (entry && *entry && matches(**entry))
            return entry->data();
    }
    return nullptr;
}

/// Finds an entry by its identifier.
/// \tparam T  the kind of entry: QAction, which a separator is as well, QWidgetAction or QMenu
/// \param id  empty finds the first entry of that kind without an identifier
/// \return    the first match, null if there is none
template <typename T, typename Entries>
T* findMenuDataByID(const Entries& entries, const MAP_KEY_TYPE& id)
{
    const QByteArray property = INFO::menuIDKey.toUtf8();
    return findMenuEntry<T>(entries, [&](const T& entry) {
        return entry.property(property.constData()).toString() == id.toString();
    });
}

/// Finds an entry by the value of `QAction::data`.
/// \tparam T  the kind of entry: QAction or QWidgetAction
/// \return    the first match, null if there is none
template <typename T, typename Entries>
T* findMenuDataByUserData(const Entries& entries, const QVariant& value)
{
    return findMenuEntry<T>(entries, [&](const T& entry) { return entry.data() == value; });
}

} // namespace mod_form_qt
