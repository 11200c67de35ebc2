#include "form/widgets/widget_attr.h"

#include "form/model/info.h"
#include "form/widgets/wheel_guard.h"

#include <QAbstractItemModel>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyle>
#include <QTextDocument>
#include <QTextEdit>
#include <QtMath>

namespace mod_form_qt {

namespace {

using Groups = QMap<int, QPointer<QButtonGroup>>;

bool isGuardable(const QWidget* widget)
{
    return qobject_cast<const QSpinBox*>(widget) != nullptr
        || qobject_cast<const QDoubleSpinBox*>(widget) != nullptr
        || qobject_cast<const QComboBox*>(widget) != nullptr
        || qobject_cast<const QDateTimeEdit*>(widget) != nullptr;
}

void addWheelGuard(QWidget* widget, INFO::MainFlags flags, const std::bitset<256>& attr)
{
    const bool wanted = isBitSet(attr, A_STRONG_FOCUS)
        || (flags.testFlag(INFO::MF_WHEEL_GUARD) && INFO::bGlobalWheelGuard);
    if (!wanted || isBitSet(attr, A_ALLOW_WHEEL))
        return;
    // Otherwise the wheel would first give the widget the focus and then pass the guard.
    widget->setFocusPolicy(Qt::StrongFocus);
    using Guard = helper::DynamicWidgetEventFilter;
    if (widget->findChild<Guard*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        widget->installEventFilter(new Guard(widget));
}

void addComboAttr(QComboBox& box, const std::bitset<256>& attr)
{
    if (isBitSet(attr, A_ADJUST_WIDTH_TO_CONTENTS))
        box.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    else if (isBitSet(attr, A_COMBO_AUTO_WIDTH_FIRST_OPEN))
        box.setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
    else if (isBitSet(attr, A_COMBO_AUTO_WIDTH_COMPACT))
        box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);

    if (INFO::useLimitExternalComboItems)
        helper::setupLimitedPopup(&box, INFO::maxVisibleComboItems);
    if (isBitSet(attr, A_SORTED))
        box.model()->sort(box.modelColumn());
}

template <typename Edit>
void addTextEditAttr(Edit& edit, const std::bitset<256>& attr, int heightLines)
{
    if (isBitSet(attr, A_READONLY))
        edit.setReadOnly(true);
    if (heightLines <= 0)
        return;
    const QTextDocument& text = *edit.document();
    const QMargins margins = edit.contentsMargins();
    edit.setFixedHeight(heightLines * QFontMetrics(text.defaultFont()).lineSpacing()
                        + 2 * edit.frameWidth() + margins.top() + margins.bottom()
                        + qCeil(2 * text.documentMargin()));
}

void addLineEditAttr(QLineEdit& edit, const std::bitset<256>& attr)
{
    if (isBitSet(attr, A_READONLY))
        edit.setReadOnly(true);
    if (isBitSet(attr, A_PWD))
        edit.setEchoMode(QLineEdit::Password);
    else if (isBitSet(attr, A_PWD_ECHO))
        edit.setEchoMode(QLineEdit::PasswordEchoOnEdit);

    if (isBitSet(attr, A_ADJUST_WIDTH_TO_CONTENTS)) {
        edit.ensurePolished();
        const QString text = edit.text().isEmpty() ? edit.placeholderText() : edit.text();
        const QMargins margins = edit.textMargins();
        edit.setMinimumWidth(
            edit.fontMetrics().horizontalAdvance(text) + margins.left() + margins.right()
            + edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &edit));
    }
}

void addToGroup(QAbstractButton& button, const std::bitset<256>& attr, Groups* groups,
                QObject* groupParent)
{
    const int distance = lastBitSet(attr, A_GROUP_ID1, A_GROUP_ID10);
    if (distance < 0 || groups == nullptr)
        return;
    QPointer<QButtonGroup>& group = (*groups)[distance + 1];
    if (group == nullptr)
        group = new QButtonGroup(groupParent);
    group->addButton(&button, -1);
}

} // namespace

void INFO::addWidgetAttr(QWidget* widget, bool guardWheel, MainFlags flags,
                         const std::bitset<256>& attr, int heightLines, Groups* groups,
                         QObject* groupParent)
{
    if (widget == nullptr)
        return;
    if (guardWheel && isGuardable(widget))
        addWheelGuard(widget, flags, attr);

    if (auto* box = qobject_cast<QComboBox*>(widget))
        addComboAttr(*box, attr);
    else if (auto* richEdit = qobject_cast<QTextEdit*>(widget))
        addTextEditAttr(*richEdit, attr, heightLines);
    else if (auto* plainEdit = qobject_cast<QPlainTextEdit*>(widget))
        addTextEditAttr(*plainEdit, attr, heightLines);
    else if (auto* lineEdit = qobject_cast<QLineEdit*>(widget))
        addLineEditAttr(*lineEdit, attr);

    const bool isButton = qobject_cast<QCheckBox*>(widget) != nullptr
        || qobject_cast<QRadioButton*>(widget) != nullptr;
    if (isButton)
        addToGroup(*qobject_cast<QAbstractButton*>(widget), attr, groups, groupParent);
    if (!isBitSet(attr, A_READONLY))
        return;
    if (auto* spinBox = qobject_cast<QAbstractSpinBox*>(widget))
        spinBox->setReadOnly(true);
    else if (isButton || qobject_cast<QComboBox*>(widget) != nullptr
             || qobject_cast<QListWidget*>(widget) != nullptr)
        widget->setEnabled(false);
}

void setLayoutVisible(QLayout* layout, bool visible)
{
    if (layout == nullptr)
        return;
    for (int i = 0; i < layout->count(); ++i) {
        const QLayoutItem* item = layout->itemAt(i);
        if (QWidget* widget = item->widget())
            widget->setVisible(visible);
        else
            setLayoutVisible(layout->itemAt(i)->layout(), visible);
    }
}

namespace helper {

void setupLimitedPopup(QComboBox* box, int maxVisibleItems)
{
    if (box == nullptr || maxVisibleItems < 1)
        return;
    box->setMaxVisibleItems(maxVisibleItems);

    // Styles that lay the list over the box ignore the limit.
    const QString rule = QStringLiteral("combobox-popup: 0");
    QString sheet = box->styleSheet();
    if (sheet.contains(rule))
        return;
    // A sheet is either bare declarations or rules; the two do not mix.
    if (sheet.contains(QLatin1Char('{')))
        sheet += QStringLiteral("\nQComboBox { %1; }").arg(rule);
    else if (sheet.trimmed().isEmpty())
        sheet = rule + QLatin1Char(';');
    else
        sheet += QStringLiteral("\n; %1;").arg(rule);
    box->setStyleSheet(sheet);
}

} // namespace helper
} // namespace mod_form_qt
