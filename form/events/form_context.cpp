#include "form/events/form_context.h"

namespace mod_form_qt {

namespace {

/// Kept with the widget and not with a form: a widget can hold several forms, and its destructor
/// knows none of them.
constexpr const char* armedPropertyKey = "mod_form_qt_armed";

using Flag = std::shared_ptr<bool>;

Flag storedFlag(const QWidget& widget)
{
    return widget.property(armedPropertyKey).value<Flag>();
}

} // namespace

std::shared_ptr<bool> formArmed(QWidget* mainWidget)
{
    if (mainWidget == nullptr)
        return nullptr;
    Flag flag = storedFlag(*mainWidget);
    if (flag == nullptr) {
        flag = std::make_shared<bool>(true);
        mainWidget->setProperty(armedPropertyKey, QVariant::fromValue(flag));
    }
    return flag;
}

void disarmForm(QWidget* mainWidget)
{
    if (mainWidget == nullptr)
        return;
    if (const Flag flag = storedFlag(*mainWidget))
        *flag = false;
}

} // namespace mod_form_qt
