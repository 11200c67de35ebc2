#include "form/events/form_guard.h"
#include "form/model/callback.h"
#include "form/model/info.h"

namespace mod_form_qt {

bool IsCallbackSet(const Callback& cb)
{
    return std::holds_alternative<LegacyCallback>(cb)
        || std::holds_alternative<ContextCallback>(cb);
}

int ExecCallBack(const Callback& cb, const QPointer<QWidget>& mainWidget,
                 const QPointer<QWidget>& widget, const QVariant& value, CallbackType type,
                 const INFO& row, QMap<QString, QVariant>* map, QVariant* result,
                 const QVariant* previous)
{
    // A function that holds nothing would throw.
    if (const auto* legacy = std::get_if<LegacyCallback>(&cb); legacy && *legacy)
        return (*legacy)(mainWidget, widget, value, type, row, map, result, previous);
    if (const auto* withContext = std::get_if<ContextCallback>(&cb); withContext && *withContext)
        return (*withContext)({mainWidget, widget, value, type, row, map, result, previous});
    return 1;
}

int BeforeCallBack(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                   QWidget* widget, const QVariant& value, CallbackType type,
                   QMap<QString, QVariant>* map, QVariant* result, const QVariant* previous)
{
    const QPointer<QWidget> source(widget);
    if (INFO::eventBlocked(source))
        return 1;
    const FormGuard form(mainWidget);
    if (IsCallbackSet(row.callback)
        && ExecCallBack(row.callback, mainWidget, source, value, type, row, map, result, previous)
            == 0)
        return 0;
    // The form may have gone with its map; what it was asked about is then beyond taking.
    if (!form.stands())
        return 0;
    if (IsCallbackSet(mainRow.callback))
        return ExecCallBack(mainRow.callback, mainWidget, source, value, type, row, map, result,
                            previous)
                == 0
            ? 0
            : 1;
    return 1;
}

void AfterCallBack(const INFO& row, const INFO& mainRow, QPointer<QWidget> mainWidget,
                   QWidget* widget, const QVariant& value, CallbackType type,
                   QMap<QString, QVariant>* map, QVariant* result, const QVariant* previous)
{
    const QPointer<QWidget> source(widget);
    if (INFO::eventBlocked(source))
        return;
    const FormGuard form(mainWidget);
    ExecCallBack(row.callback, mainWidget, source, value, type, row, map, result, previous);
    if (form.stands())
        ExecCallBack(mainRow.callback, mainWidget, source, value, type, row, map, result, previous);
}

} // namespace mod_form_qt
