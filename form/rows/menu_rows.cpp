#include "form/events/connect.h"
#include "form/menus/menu_search.h"
#include "form/rows/row_family.h"
#include "form/rows/row_objects.h"
#include "form/values/row_value.h"

#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

namespace mod_form_qt {

namespace {

QMainWindow* mainWindowOf(const BuildContext& context)
{
    return qobject_cast<QMainWindow*>(context.form->mainWidget.data());
}

/// Holds, on a checkable action, the key of its check state in the form data map.
constexpr const char* keyPropertyKey = "mod_form_qt_key";

/// Brings the values of the other actions of a group up to date: the choice of one unchecks another
/// without a word, and a refusal checks that again.
void storeOthers(const RowContext& context, const QAction* chosen)
{
    QMap<QString, QVariant>* const map = context.map();
    const QActionGroup* const group = chosen->actionGroup();
    if (!context.live() || group == nullptr)
        return;
    const QList<QAction*> actions = group->actions();
    for (const QAction* other : actions) {
        const QString key = other->property(keyPropertyKey).toString();
        if (other == chosen || !map->contains(key) || holdsObject(map->value(key)))
            continue;
        if (INFO::getBaseValue(map, key).toBool() != other->isChecked())
            storeValue({}, map, key, other->isChecked());
    }
}

/// Lets one action report, and notes it if its check state is a value of the form.
void addAction(QAction* action, const PreparedRow& row, const QString& key, BuildContext& context)
{
    context.reporting.insert(action);
    INFO raising = row.row;
    raising.key = key;
    const RowHandle handle = std::make_shared<const RowContext>(RowContext {context.form, raising});
    const bool hasValue = action->isCheckable() && !key.isEmpty();
    const auto listen = [&] {
        QObject* const form = context.form->life ? context.form->life.data() : action;
        QObject::connect(action, &QAction::triggered, form,
                         [handle, action] { storeOthers(*handle, action); });
    };
    // Before the callbacks are told, and once more after they may have refused.
    if (hasValue)
        listen();
    QList<QString> signalNames;
    connectAction(handle, action, signalNames);
    if (!hasValue)
        return;
    listen();
    action->setProperty(keyPropertyKey, key);
    context.checkableActions.emplace_back(key, action);
}

/// Checks an action as the map says, silently: nobody has chosen it.
void showChecked(QAction* action, const QVariant& checked)
{
    if (!action->isCheckable() || !checked.isValid())
        return;
    const QSignalBlocker silent(action);
    action->setChecked(checked.toBool());
}

QString idOf(const QAction* action)
{
    return action->property(INFO::menuIDKey.toUtf8().constData()).toString();
}

void buildMenuBar(const PreparedRow& row, BuildContext& context, BuiltRow& built)
{
    auto* bar = objectOf<QMenuBar>(row.row.data);
    if (bar == nullptr) {
        if (holdsObject(row.row.data))
            return;
        bar = new QMenuBar(context.container());
    }
    if (QMainWindow* window = mainWindowOf(context))
        window->setMenuBar(bar);
    else if (context.outermost)
        context.outermost->setMenuBar(bar);
    INFO::storeMenu(bar, context.map());
    context.menuHost = bar;
    built.widgets.push_back({bar, E_MENUBAR, true, false, -1});
}

void buildMenu(const PreparedRow& row, BuildContext& context)
{
    auto* menu = objectOf<QMenu>(row.row.data);
    if (menu == nullptr)
        return;
    QWidget* const host = context.menuHost;
    if (auto* bar = qobject_cast<QMenuBar*>(host))
        bar->addMenu(menu);
    else if (auto* tool = qobject_cast<QToolButton*>(host))
        tool->setMenu(menu);
    else if (auto* button = qobject_cast<QPushButton*>(host))
        button->setMenu(menu);
    INFO::storeMenu(menu, context.map());
    context.menu = menu;

    std::vector<MenuEntry> entries;
    showTree(menu, 0, &entries);
    const bool all = context.form->flags.testFlag(MF_USE_MAP_VALUES);
    for (const MenuEntry& entry : entries) {
        const auto* action = std::get_if<QPointer<QAction>>(&entry);
        if (action == nullptr || *action == nullptr || (*action)->isSeparator())
            continue;
        INFO stored = row.row;
        stored.key = idOf(*action);
        if (usesMapValue(stored, all, context.loadedKeys))
            showChecked(*action, INFO::getBaseValue(context.map(), stored.key));
        // A menu may stand in two places, and so may an action.
        if (!context.reporting.contains(*action))
            addAction(*action, row, stored.key, context);
    }
}

void buildAction(const PreparedRow& row, BuildContext& context)
{
    auto* action = objectOf<QAction>(row.row.data);
    if (action == nullptr)
        return;
    if (context.menu)
        context.menu->addAction(action);
    else if (context.menuHost)
        context.menuHost->addAction(action);
    showChecked(action, valueBeside(row, context));
    addAction(action, row, row.row.key.isEmpty() ? idOf(action) : row.row.key, context);
}

void buildStatusBar(const PreparedRow& row, BuildContext& context, BuiltRow& built)
{
    auto* bar = objectOf<QStatusBar>(row.row.data);
    if (bar == nullptr) {
        if (holdsObject(row.row.data))
            return;
        bar = new QStatusBar(context.container());
        bar->addWidget(new QLabel(bar), 100);
        bar->setSizeGripEnabled(false);
    }
    QMainWindow* const window = mainWindowOf(context);
    if (window)
        window->setStatusBar(bar);
    INFO::storeStatusBars(bar, context.map());
    built.widgets.push_back({bar, E_STATUSBAR, window != nullptr, false, -1});
}

class MenuRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        built.wired = true;
        switch (row.row.eleType) {
        case E_MENUBAR:
            buildMenuBar(row, context, built);
            break;
        case E_MENU:
            buildMenu(row, context);
            break;
        case E_ACTION:
            buildAction(row, context);
            break;
        default:
            buildStatusBar(row, context, built);
        }
        return built;
    }
};

} // namespace

const RowFamily& menuRows()
{
    return theFamily<MenuRows>();
}

} // namespace mod_form_qt
