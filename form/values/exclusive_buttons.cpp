#include "form/values/exclusive_buttons.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QPointer>
#include <QSignalBlocker>
#include <QTimer>
#include <QVariant>

#include <algorithm>

namespace mod_form_qt {

namespace {

/// Property of a checked button that holds the one it has replaced.
constexpr const char* replacedPropertyKey = "mod_form_qt_replaced";

QAbstractButton* checkedOf(const QList<QAbstractButton*>& buttons)
{
    const auto found =
        std::find_if(buttons.begin(), buttons.end(),
                     [](const QAbstractButton* other) { return other->isChecked(); });
    return found == buttons.end() ? nullptr : *found;
}

/// Unchecks a button of a group that otherwise lets none be unchecked.
void uncheckAlone(QAbstractButton* button)
{
    const QSignalBlocker silent(button);
    QButtonGroup* const group = button->group();
    const bool autoExclusive = button->autoExclusive();
    if (group)
        group->setExclusive(false);
    button->setAutoExclusive(false);
    button->setChecked(false);
    button->setAutoExclusive(autoExclusive);
    if (group)
        group->setExclusive(true);
}

} // namespace

QList<QAbstractButton*> exclusiveSiblings(const QWidget* widget)
{
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    if (button == nullptr)
        return {};
    QList<QAbstractButton*> siblings;
    if (const QButtonGroup* group = button->group()) {
        if (group->exclusive())
            siblings = group->buttons();
    } else if (button->autoExclusive() && button->parentWidget()) {
        siblings = button->parentWidget()->findChildren<QAbstractButton*>(
            QString(), Qt::FindDirectChildrenOnly);
        siblings.removeIf(
            [](const QAbstractButton* other) { return other->group() || !other->autoExclusive(); });
    }
    siblings.removeIf([button](const QAbstractButton* other) { return other == button; });
    return siblings;
}

void noteReplaced(QAbstractButton* unchecked)
{
    const QList<QAbstractButton*> siblings = exclusiveSiblings(unchecked);
    if (siblings.isEmpty())
        return;
    if (QAbstractButton* const checked = checkedOf(siblings)) {
        checked->setProperty(replacedPropertyKey,
                             QVariant::fromValue(QPointer<QObject>(unchecked)));
        return;
    }
    // A check box reports before the group unchecks the other one: here the new one has been
    // refused already.
    if (qobject_cast<QCheckBox*>(unchecked)) {
        QTimer::singleShot(0, unchecked, [unchecked] {
            if (!checkedOf(exclusiveSiblings(unchecked)))
                unchecked->setChecked(true);
        });
    }
}

void undoChecked(QAbstractButton* checked)
{
    if (exclusiveSiblings(checked).isEmpty())
        return;
    const auto replaced = checked->property(replacedPropertyKey).value<QPointer<QObject>>();
    checked->setProperty(replacedPropertyKey, QVariant());
    if (auto* other = qobject_cast<QAbstractButton*>(replaced.data()))
        other->setChecked(true); // which unchecks this one
    else
        uncheckAlone(checked);
}

} // namespace mod_form_qt
