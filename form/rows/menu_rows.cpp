#include "form/events/connect.h"
#include "form/menus/menu_search.h"
#include "form/rows/row_family.h"
#include "form/rows/row_objects.h"

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

/// Lets one action report, and notes it if its check state is a value of the form.
void addAction(QAction* action, const PreparedRow& row, const QString& key, BuildContext& context)
{
    INFO raising = row.row;
    raising.key = key;
    const RowHandle handle = std::make_shared<const RowContext>(RowContext {context.form, raising});
    QList<QString> signalNames;
    connectAction(handle, action, signalNames);
    if (action->isCheckable() && !key.isEmpty())
        context.checkableActions.emplace_back(key, action);
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
    for (const MenuEntry& entry : entries) {
        const auto* action = std::get_if<QPointer<QAction>>(&entry);
        if (action && *action && !(*action)->isSeparator())
            addAction(*action, row, idOf(*action), context);
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
    const QVariant checked = valueBeside(row, context);
    if (action->isCheckable() && checked.isValid()) {
        const QSignalBlocker silent(action);
        action->setChecked(checked.toBool());
    }
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
