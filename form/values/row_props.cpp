#include "form/model/info_option.h"

#include <QWidget>

#include <array>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

void setHorizontalPolicy(QWidget* widget, int value)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setHorizontalPolicy(static_cast<QSizePolicy::Policy>(value));
    widget->setSizePolicy(policy);
}

void setVerticalPolicy(QWidget* widget, int value)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setVerticalPolicy(static_cast<QSizePolicy::Policy>(value));
    widget->setSizePolicy(policy);
}

struct Property
{
    const QString& key;
    void (*apply)(QWidget*, int);
};

/// In the order in which they are applied.
const std::array<Property, 8>& properties()
{
    static const std::array<Property, 8> all = {{
        {Option::minWidthKey, [](QWidget* w, int value) { w->setMinimumWidth(value); }},
        {Option::maxWidthKey, [](QWidget* w, int value) { w->setMaximumWidth(value); }},
        {Option::minHeightKey, [](QWidget* w, int value) { w->setMinimumHeight(value); }},
        {Option::maxHeightKey, [](QWidget* w, int value) { w->setMaximumHeight(value); }},
        {Option::sizePolicyHKey, setHorizontalPolicy},
        {Option::sizePolicyVKey, setVerticalPolicy},
        {Option::fixedWidthKey, [](QWidget* w, int value) { w->setFixedWidth(value); }},
        {Option::fixedHeightKey, [](QWidget* w, int value) { w->setFixedHeight(value); }},
    }};
    return all;
}

std::pair<bool, Qt::Alignment> wantedAlignment(int index, int type, int typeExt,
                                               const Option& option,
                                               const QMap<int, Qt::Alignment>& byType)
{
    if (option.mayHaveNumbered(Option::indexAlignKey)) {
        if (const auto found = option.alignByIndex(index); found.first)
            return found;
    }
    if (option.mayHaveNumbered(Option::typeAlignKey)) {
        for (const int wanted : {typeExt, type}) {
            if (const auto found = option.alignByType(wanted); found.first)
                return found;
        }
    }
    for (const int wanted : {typeExt, type}) {
        if (const auto found = byType.constFind(wanted); found != byType.constEnd())
            return {true, *found};
    }
    return {false, {}};
}

} // namespace

void INFO::setProps(QWidget* widget, int index, const Option& option)
{
    if (widget == nullptr)
        return;
    std::array<const Property*, 8> present {};
    std::size_t count = 0;
    for (const Property& property : properties()) {
        if (option.mayHaveNumbered(property.key))
            present[count++] = &property;
    }
    if (count == 0)
        return;
    for (const int n : {WIDGET_INFO::type(widget), WIDGET_INFO::typeExt(widget), index}) {
        for (std::size_t i = 0; i < count; ++i) {
            const QVariant value = option.numbered(present[i]->key, n);
            if (value.isValid())
                present[i]->apply(widget, value.toInt());
        }
    }
}

Qt::Alignment INFO::align(QWidget* widget, int index, const Option& option, Qt::Alignment fallback,
                          const QMap<int, QFlags<Qt::AlignmentFlag>>& byType)
{
    if (!fallback && byType.isEmpty() && !option.mayHaveNumbered(Option::indexAlignKey)
        && !option.mayHaveNumbered(Option::typeAlignKey))
        return {};
    const int type = WIDGET_INFO::type(widget);
    const int typeExt = WIDGET_INFO::typeExt(widget);
    const auto [found, wanted] = wantedAlignment(index, type, typeExt, option, byType);
    Qt::Alignment alignment = found ? wanted : fallback;
    // A line that is aligned along its own direction would shrink to nothing.
    if (type == E_HLINE || typeExt == E_HLINE)
        alignment &= ~Qt::Alignment::fromInt(0xF);
    if (type == E_VLINE || typeExt == E_VLINE)
        alignment &= ~Qt::Alignment::fromInt(0x1E0);
    return alignment;
}

int INFO::stretch(QWidget* widget, int index, const Option& option)
{
    if (!option.mayHaveNumbered(Option::stretchKey))
        return 0;
    for (const int n : {WIDGET_INFO::type(widget), WIDGET_INFO::typeExt(widget), index}) {
        const QVariant value = option.numbered(Option::stretchKey, n);
        if (value.isValid())
            return value.toInt();
    }
    return 0;
}

} // namespace mod_form_qt
