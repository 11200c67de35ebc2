#include "tools/form_gallery/observer.h"

namespace gallery {

using namespace mod_form_qt;

Callback observed(const Callback& callback, bool ofRow, const Observer& observer)
{
    return ContextCallback([callback, ofRow, observer](const CallbackContext& ctx) {
        const int answer = ExecCallBack(callback, ctx.mainWidget, ctx.widget, ctx.value, ctx.type,
                                        ctx.row, ctx.map, ctx.result, ctx.previous);
        observer(ctx, ofRow, answer);
        return answer;
    });
}

QList<INFO> observed(QList<INFO> rows, const Observer& observer)
{
    for (INFO& row : rows) {
        if (IsCallbackSet(row.callback))
            row.callback = observed(row.callback, true, observer);
    }
    return rows;
}

} // namespace gallery
