#include "form/build/run_window.h"

#include "form/events/close_flow.h"
#include "form/values/data.h"
#include "form/values/trigger_emit.h"
#include "form/widgets/helper_windows.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QMainWindow>
#include <QScopedValueRollback>
#include <QScreen>
#include <QThread>

namespace mod_form_qt {

namespace {

constexpr const char* executingPropertyKey = "mod_form_qt_executing";
constexpr INFO::MainFlags runModes = MF_EXEC | MF_OPEN | MF_SHOW;

bool isFormWindow(const QWidget* widget)
{
    return qobject_cast<const QDialog*>(widget) || qobject_cast<const QMainWindow*>(widget);
}

void stayOnTop(QWidget* window)
{
    const bool visible = window->isVisible();
    window->setWindowFlag(Qt::WindowStaysOnTopHint);
    if (visible)
        window->show(); // the change of flags has hidden it
}

void place(QWidget* window, INFO::MainFlags flags)
{
    if (flags.testFlag(MF_PLACE_CENTER)) {
        if (flags.testFlag(MF_PLACE_MAXIMIZED)) {
            window->showMaximized();
        } else {
            QRect frame = window->frameGeometry();
            frame.moveCenter(window->screen()->availableGeometry().center());
            window->move(frame.topLeft());
        }
    }
    if (flags.testFlag(MF_PLACE_RAISE)) {
        window->show();
        window->activateWindow();
    }
}

int runDialog(QDialog* dialog, INFO::MainFlags flags)
{
    if (flags.testFlag(MF_EXEC))
        return execDialog(dialog);
    const bool blocksAll = flags.testFlag(MF_MODAL);
    if (blocksAll)
        dialog->setWindowModality(Qt::ApplicationModal); // has no effect on a visible window
    if (flags.testFlag(MF_OPEN) && !blocksAll) {
        dialog->open();
    } else {
        // open() would be modal to the parent only.
        dialog->setResult(0);
        dialog->show();
    }
    return 1;
}

/// Ends an event loop when a window has closed.
class CloseWatch : public QObject
{
public:
    CloseWatch(QWidget* window, QEventLoop& loop)
        : m_loop(loop)
    {
        window->installEventFilter(this);
        connect(window, &QObject::destroyed, &loop, &QEventLoop::quit);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* window = qobject_cast<QWidget*>(object);
        // A window that is deleted on closing is waited for, so that it does not outlive its run.
        if (window && event->type() == QEvent::Hide && !event->spontaneous()
            && closingDecided(window) && !window->testAttribute(Qt::WA_DeleteOnClose)) {
            m_loop.quit();
        }
        return false;
    }

private:
    QEventLoop& m_loop;
};

int runMainWindow(QMainWindow* window, INFO::MainFlags flags)
{
    const QScopedValueRollback<bool> byUser(emitHelper::active, false);
    // Its first callback may have closed it already.
    if (!closingDecided(window))
        helper::MainWnd::exitCode = -1;
    window->setWindowModality(Qt::ApplicationModal);
    window->show();
    // Inside another event loop the application's would return at once.
    const bool appLoop = QCoreApplication::instance() && !flags.testFlag(MF_LOCAL_EVENT_LOOP)
        && QThread::currentThread()->loopLevel() == 0;
    if (appLoop) {
        QApplication::exec();
    } else {
        QEventLoop loop;
        const CloseWatch watch(window, loop);
        loop.exec();
    }
    return helper::MainWnd::exitCode;
}

void shareWindow(QWidget* window, INFO::Result& result)
{
    // Its parent may die first.
    const auto guard = std::make_shared<QPointer<QWidget>>(window);
    QSharedPointer<QWidget> shared(window, [guard](QWidget*) {
        if (*guard)
            (*guard)->deleteLater();
    });
    result.window.swap(shared);
}

bool takesSeveral(const INFO& row)
{
    return row.eleType != E_COMBOBOX;
}

/// Puts what the map holds for a row into list data of the caller's.
/// \param list  in/out: list data or a pointer to it
void writeBackList(const INFO& row, const QVariant& stored, QVariant& list)
{
    if (INFO::isListData(stored) && INFO::isListDataPtr(list)) {
        *list.value<T_LISTDATA_PTR>() = stored.value<T_LISTDATA>();
    } else if (INFO::isListData(stored)) {
        list = stored;
    } else {
        INFO::loadedSelDataToListData(stored, list, takesSeveral(row));
    }
}

void writeBack(const QMap<QString, QVariant>& map, const INFO& row)
{
    const auto entry = map.constFind(row.key);
    if (entry == map.cend() || entry.value() == row.data)
        return; // a pointer that still stands in the map has been written all along
    if (INFO::isListDataPtr(row.data) && row.data.value<T_LISTDATA_PTR>()) {
        QVariant list = row.data;
        if (INFO::isListDataPtr(entry.value())) {
            if (const auto* other = entry.value().value<T_LISTDATA_PTR>())
                *row.data.value<T_LISTDATA_PTR>() = *other;
        } else {
            writeBackList(row, entry.value(), list);
        }
    } else if (INFO::isVariantPtr(row.data) && row.data.value<T_VARIANT_PTR>()) {
        QVariant& variable = *row.data.value<T_VARIANT_PTR>();
        const INFO::DATA<QVariant> stored(entry.value());
        if (INFO::isListDataOrListDataPtr(variable))
            writeBackList(row, stored.value(), variable);
        else
            variable = QVariant(stored.value());
    }
}

} // namespace

INFO::MainFlags withOneRunMode(INFO::MainFlags flags)
{
    for (const auto mode : {MF_EXEC, MF_OPEN, MF_SHOW}) {
        if (flags.testFlag(mode))
            return (flags & ~runModes) | mode;
    }
    return flags;
}

void prepareWindow(const FormContext& form, INFO::Result& result)
{
    QWidget* window = form.mainWidget;
    if (window == nullptr || !window->isWindow())
        return;
    const bool isDialog = qobject_cast<QDialog*>(window) != nullptr;
    if (form.flags.testFlag(MF_STAY_ON_TOP)
        && (form.flags.testFlag(MF_CREATE_WINDOW)
            || (isDialog && form.flags.testFlag(MF_APPLY_TO_WIDGET)))) {
        stayOnTop(window);
    }
    if (isFormWindow(window) && form.flags.testAnyFlags(runModes)) {
        if (form.flags.testFlag(MF_SHARED_DELETE_LATER))
            shareWindow(window, result);
        else
            window->setAttribute(Qt::WA_DeleteOnClose);
    }
    if (form.flags.testAnyFlags(MF_PLACE_CENTER | MF_PLACE_RAISE)) {
        const INFO::MainFlags flags = form.flags;
        QTimer::singleShot(0, window, [window, flags] { place(window, flags); });
    }
}

int runWindow(const FormContext& form)
{
    const INFO::MainFlags flags = withOneRunMode(form.flags);
    if (!flags.testAnyFlags(runModes))
        return 1;
    if (auto* dialog = qobject_cast<QDialog*>(form.mainWidget))
        return runDialog(dialog, flags);
    if (auto* window = qobject_cast<QMainWindow*>(form.mainWidget))
        return runMainWindow(window, flags);
    return 1;
}

int execDialog(QDialog* dialog)
{
    const QPointer<QDialog> guard = dialog;
    dialog->setProperty(executingPropertyKey, true);
    // A window that a callback opens belongs to the user, whatever raised the callback.
    const QScopedValueRollback<bool> byUser(emitHelper::active, false);
    const int code = dialog->exec();
    if (guard)
        guard->setProperty(executingPropertyKey, QVariant());
    return code;
}

bool isExecuting(const QDialog* dialog)
{
    return dialog->property(executingPropertyKey).toBool();
}

void keepAccepted(QMap<QString, QVariant>* map, const QList<INFO>& rows,
                  const std::vector<std::pair<QString, QPointer<QAction>>>& checkableActions)
{
    if (map == nullptr)
        return;
    for (const auto& [key, action] : checkableActions) {
        if (!action || key.isEmpty())
            continue;
        if (INFO::isVariantPtr(map->value(key)))
            INFO::DATA<QVariant>(map, key, true).setValue(action->isChecked());
        else
            map->insert(key, action->isChecked());
    }
    for (const INFO& row : rows) {
        if (!row.key.isEmpty())
            writeBack(*map, row);
    }
}

} // namespace mod_form_qt
