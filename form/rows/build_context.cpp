#include "form/rows/build_context.h"

#include "form/events/connect.h"
#include "form/values/data.h"
#include "form/values/row_value.h"
#include "form/widgets/widget_attr.h"

#include <QLabel>
#include <QTimer>

namespace mod_form_qt {

bool BuildContext::isBold(const PreparedRow& row) const
{
    return defaults.boldLabels != row.has(A_FLIP_LABEL_BOLD);
}

RowHandle BuildContext::share(const PreparedRow& row) const
{
    return std::make_shared<const RowContext>(RowContext {form, row.row});
}

QVariant BuildContext::valueOf(const PreparedRow& row) const
{
    return INFO::isVariantPtr(row.row.data) ? INFO::getBaseValue(row.row.data)
                                            : INFO::DATA<QVariant>(row.row.data).value();
}

void BuildContext::addLabel(const PreparedRow& row, BuiltRow& built)
{
    if (row.texts.first().isEmpty() || row.has(A_NO_LABEL))
        return;
    auto* label = new QLabel(row.label, container());
    label->setWordWrap(row.has(A_LABEL_WORDWRAP));
    built.add(label, E_LABEL);
}

QString BuildContext::partText(const PreparedRow& row, qsizetype part, const QString& fallback)
{
    const QString text = row.texts.value(part);
    return text.isEmpty() ? fallback : text;
}

void BuildContext::closeLayout()
{
    const OpenLayout closed = layouts.back();
    layouts.pop_back();
    if (closed.hideAtEnd && closed.closedGroup)
        setGroupContentsVisible(closed.hideAtEnd, false);
    else
        setLayoutVisible(closed.hideAtEnd, false);
}

void BuildContext::addTimers(const QVariant& wanted, const INFO& row)
{
    if (!wanted.isValid())
        return;
    const QVariantList list = wanted.toList();
    // One timer, or a list of such.
    if (!list.isEmpty() && list.first().typeId() == QMetaType::QVariantList) {
        for (const QVariant& timer : list)
            addTimers(timer, row);
        return;
    }
    INFO raising = row;
    if (list.size() > 1)
        raising.key = list.at(1).toString();
    auto* timer = new QTimer(timerOwner ? timerOwner : outermost);
    timer->setObjectName(raising.key);
    timer->setInterval(list.isEmpty() ? 250 : list.first().toInt());
    connectTimer(std::make_shared<const RowContext>(RowContext {form, raising}), timer);
    timers.emplace_back(timer);
}

} // namespace mod_form_qt
