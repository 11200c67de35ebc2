#include "form/menus/menu_entries.h"

#include <QImage>
#include <QPixmap>
#include <QWidgetAction>

namespace mod_form_qt {

namespace {

void setId(QObject* entry, const MAP_KEY_TYPE& id)
{
    entry->setProperty(INFO::menuIDKey.toUtf8().constData(), id.toString());
}

void insert(QMenu* menu, QAction* before, QAction* action)
{
    if (menu)
        menu->insertAction(before, action);
}

QIcon iconOf(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QPixmap:
        return {value.value<QPixmap>()};
    case QMetaType::QImage:
        return {QPixmap::fromImage(value.value<QImage>())};
    default:
        return value.value<QIcon>();
    }
}

/// What an action and a menu have in common.
template <typename Entry>
void setCommonRole(Entry* entry, Qt::ItemDataRole role, const QVariant& value)
{
    switch (role) {
    case Qt::DecorationRole:
        entry->setIcon(iconOf(value));
        break;
    case Qt::ToolTipRole:
        entry->setToolTip(value.toString());
        break;
    case Qt::StatusTipRole:
        entry->setStatusTip(value.toString());
        break;
    case Qt::WhatsThisRole:
        entry->setWhatsThis(value.toString());
        break;
    case Qt::FontRole:
        entry->setFont(value.value<QFont>());
        break;
    case Qt::AccessibleTextRole:
        entry->setProperty("accessibleName", value.toString());
        break;
    case Qt::AccessibleDescriptionRole:
        entry->setProperty("accessibleDescription", value.toString());
        break;
    default:
        break;
    }
}

} // namespace

void setRoles(QAction* action, const Roles& roles)
{
    if (action == nullptr)
        return;
    for (const auto& [role, value] : roles) {
        if (role == Qt::DisplayRole)
            action->setText(value.toString());
        else
            setCommonRole(action, role, value);
    }
}

void setRoles(QMenu* menu, const Roles& roles)
{
    if (menu == nullptr)
        return;
    for (const auto& [role, value] : roles) {
        if (role == Qt::DisplayRole) {
            menu->setTitle(value.toString());
            continue;
        }
        setCommonRole(menu, role, value);
        // What the user points at is the entry, the menu itself is only the list that opens.
        setCommonRole(menu->menuAction(), role, value);
    }
}

QAction* addAction(QMenu* menu, QAction* before, const QString& text, const MAP_KEY_TYPE& id,
                   int checkState, int groupNo, const Roles& roles, bool visible, bool enabled,
                   const QKeySequence& shortcut, int shortcutContext)
{
    auto* action = new QAction(text, menu);
    action->setProperty(INFO::menuGroupNoKey.toUtf8().constData(), groupNo);
    setId(action, id);
    action->setCheckable(checkState >= 0);
    action->setChecked(checkState == 1);
    action->setVisible(visible);
    action->setEnabled(enabled);
    if (!shortcut.isEmpty())
        action->setShortcut(shortcut);
    if (shortcutContext >= Qt::WidgetShortcut && shortcutContext <= Qt::WidgetWithChildrenShortcut)
        action->setShortcutContext(Qt::ShortcutContext(shortcutContext));
    setRoles(action, roles);
    insert(menu, before, action);
    return action;
}

QAction* createAction(const QString& text, const MAP_KEY_TYPE& id, int checkState, int groupNo,
                      const Roles& roles, bool visible, bool enabled, const QKeySequence& shortcut,
                      int shortcutContext)
{
    return addAction(nullptr, nullptr, text, id, checkState, groupNo, roles, visible, enabled,
                     shortcut, shortcutContext);
}

QAction* addSeparator(QMenu* menu, QAction* before, const QString& text, const MAP_KEY_TYPE& id,
                      const Roles& roles, bool visible, bool enabled)
{
    QAction* separator = addAction(menu, before, text, id, 0, -1, roles, visible, enabled, {}, -1);
    separator->setSeparator(true);
    return separator;
}

QAction* createSeparator(const QString& text, const MAP_KEY_TYPE& id, const Roles& roles,
                         bool visible, bool enabled)
{
    return addSeparator(nullptr, nullptr, text, id, roles, visible, enabled);
}

QMenu* addMenu(QMenu* parent, QAction* before, const QString& text, const MAP_KEY_TYPE& id,
               const Roles& roles, bool visible, bool enabled)
{
    auto* menu = parent && before == nullptr ? parent->addMenu(text) : new QMenu(text, parent);
    menu->setSeparatorsCollapsible(false);
    setId(menu, id);
    // To show the menu itself would open it.
    menu->menuAction()->setVisible(visible);
    menu->menuAction()->setEnabled(enabled);
    setRoles(menu, roles);
    if (parent && before)
        parent->insertMenu(before, menu);
    return menu;
}

QMenu* createMenu(const QString& text, const MAP_KEY_TYPE& id, const Roles& roles, bool visible,
                  bool enabled)
{
    return addMenu(nullptr, nullptr, text, id, roles, visible, enabled);
}

QWidgetAction* addMenuWidget(QMenu* menu, QAction* before, QWidget* widget, const MAP_KEY_TYPE& id)
{
    if (widget == nullptr)
        return nullptr;
    auto* action = new QWidgetAction(menu);
    setId(action, id);
    action->setDefaultWidget(widget);
    insert(menu, before, action);
    return action;
}

QWidgetAction* createMenuWidget(QWidget* widget, const MAP_KEY_TYPE& id)
{
    return addMenuWidget(nullptr, nullptr, widget, id);
}

} // namespace mod_form_qt
