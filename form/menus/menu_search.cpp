#include "form/menus/menu_search.h"

#include <QLoggingCategory>
#include <QMenuBar>
#include <QStatusBar>

namespace mod_form_qt {

namespace {

void log(int level, const QString& text, const QString& kind)
{
    if (QLoggingCategory::defaultCategory()->isDebugEnabled()) {
        qDebug().noquote() << QStringLiteral("[%1] %2%3 (%4)")
                                  .arg(QString::number(level), QString(level, QLatin1Char('-')),
                                       text, kind);
    }
}

std::pair<MenuEntry, QString> entryOf(QAction* action)
{
    if (action->isSeparator())
        return {QPointer<QAction>(action), QStringLiteral("separator")};
    if (auto* menu = action->menu<QMenu*>())
        return {QPointer<QMenu>(menu), QStringLiteral("menu")};
    if (auto* widgetAction = qobject_cast<QWidgetAction*>(action))
        return {QPointer<QWidgetAction>(widgetAction), QStringLiteral("widgetaction")};
    return {QPointer<QAction>(action), QStringLiteral("action")};
}

/// \param seen  in/out: the menus that have been listed, which are not listed once more; null lists
///              all
void walk(QMenu* menu, int level, std::vector<PlacedMenuEntry>& out,
          QSet<const QMenu*>* seen = nullptr)
{
    if (seen) {
        if (seen->contains(menu))
            return;
        seen->insert(menu);
    }
    if (level == 0) {
        log(level, menu->title(), QStringLiteral("top-menu"));
        out.emplace_back(QPointer<QMenu>(menu), nullptr);
    }
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        const auto [entry, kind] = entryOf(action);
        log(level, action->text(), kind);
        out.emplace_back(entry, menu);
        if (auto* submenu = action->menu<QMenu*>())
            walk(submenu, level + 1, out, seen);
    }
}

/// The objects that are noted under a name; those that have gone are null.
template <typename T>
QList<QPointer<T>> storedList(const QMap<QString, QVariant>* map, const QString& name)
{
    return map ? map->value(INFO::buildObjectDataKey(name)).template value<QList<QPointer<T>>>()
               : QList<QPointer<T>>();
}

template <typename T>
void storeOnce(T* object, QMap<QString, QVariant>* map, const QString& name)
{
    if (map == nullptr || object == nullptr)
        return;
    QList<QPointer<T>> objects = storedList<T>(map, name);
    if (objects.contains(object))
        return;
    objects.append(object);
    map->insert(INFO::buildObjectDataKey(name), QVariant::fromValue(objects));
}

} // namespace

void showTree(QMenu* menu, int level, std::vector<MenuEntry>* out)
{
    if (menu == nullptr)
        return;
    std::vector<PlacedMenuEntry> entries;
    walk(menu, level, entries);
    if (out == nullptr)
        return;
    for (const auto& [entry, parent] : entries)
        out->push_back(entry);
}

void INFO::storeMenu(QObject* menu, QMap<QString, QVariant>* map)
{
    storeOnce(menu, map, objectMenuKeyName);
}

QList<QPointer<QObject>> INFO::menus(const QMap<QString, QVariant>* map)
{
    return storedList<QObject>(map, objectMenuKeyName);
}

void INFO::collectMenuData(const QMap<QString, QVariant>* map,
                           std::vector<std::pair<MenuEntry, QPointer<QMenu>>>* out)
{
    std::vector<PlacedMenuEntry> entries;
    QSet<const QMenu*> seen; // a menu of a menu bar may be stored beside the bar
    const QList<QPointer<QObject>> stored = menus(map);
    for (const QPointer<QObject>& object : stored) {
        if (auto* menu = qobject_cast<QMenu*>(object)) {
            walk(menu, 0, entries, &seen);
        } else if (const auto* bar = qobject_cast<QMenuBar*>(object)) {
            const QList<QAction*> actions = bar->actions();
            for (const QAction* action : actions) {
                if (auto* barMenu = action->menu<QMenu*>())
                    walk(barMenu, 0, entries, &seen);
            }
        }
    }
    if (out)
        out->insert(out->end(), entries.begin(), entries.end());
}

void INFO::storeStatusBars(QStatusBar* bar, QMap<QString, QVariant>* map)
{
    storeOnce(bar, map, statusBarKeyName);
}

QList<QPointer<QStatusBar>> INFO::statusBars(const QMap<QString, QVariant>* map)
{
    return storedList<QStatusBar>(map, statusBarKeyName);
}

} // namespace mod_form_qt
