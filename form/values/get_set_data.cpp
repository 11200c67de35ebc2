#include "form/model/info.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTextDocument>
#include <QTextEdit>

#include <optional>

namespace mod_form_qt {

namespace {

/// Reads or writes a widget if it is of class T.
template <typename T, typename Read, typename Write>
bool exchange(QWidget* widget, bool set, QVariant& value, Read read, Write write)
{
    auto* input = qobject_cast<T*>(widget);
    if (input == nullptr)
        return false;
    if (set)
        write(input, value);
    else
        value = read(input);
    return true;
}

QVariant readText(QTextEdit* edit)
{
    return edit->acceptRichText() ? edit->toHtml() : edit->toPlainText();
}

void writeText(QTextEdit* edit, const QVariant& value)
{
    if (edit->acceptRichText())
        edit->setHtml(value.toString());
    else
        edit->setPlainText(value.toString());
}

bool exchangeNumberOrDate(QWidget* widget, bool set, QVariant& value)
{
    return exchange<QSpinBox>(
               widget, set, value, [](QSpinBox* box) { return QVariant(box->value()); },
               [](QSpinBox* box, const QVariant& v) { box->setValue(v.toInt()); })
        || exchange<QDoubleSpinBox>(
               widget, set, value, [](QDoubleSpinBox* box) { return QVariant(box->value()); },
               [](QDoubleSpinBox* box, const QVariant& v) { box->setValue(v.toDouble()); })
        || exchange<QDateEdit>(
               widget, set, value, [](QDateEdit* edit) { return QVariant(edit->date()); },
               [](QDateEdit* edit, const QVariant& v) { edit->setDate(v.toDate()); })
        || exchange<QDateTimeEdit>(
               widget, set, value, [](QDateTimeEdit* edit) { return QVariant(edit->dateTime()); },
               [](QDateTimeEdit* edit, const QVariant& v) { edit->setDateTime(v.toDateTime()); });
}

bool exchangeText(QWidget* widget, bool set, QVariant& value)
{
    return exchange<QTextEdit>(widget, set, value, readText, writeText)
        || exchange<QPlainTextEdit>(
               widget, set, value,
               [](QPlainTextEdit* edit) { return QVariant(edit->document()->toPlainText()); },
               [](QPlainTextEdit* edit, const QVariant& v) { edit->setPlainText(v.toString()); })
        || exchange<QLineEdit>(
               widget, set, value, [](QLineEdit* edit) { return QVariant(edit->text()); },
               [](QLineEdit* edit, const QVariant& v) { edit->setText(v.toString()); });
}

bool exchangeCheck(QWidget* widget, bool set, QVariant& value)
{
    return exchange<QCheckBox>(
               widget, set, value,
               [](QCheckBox* box) { return QVariant(box->checkState() == Qt::Checked); },
               [](QCheckBox* box, const QVariant& v) {
                   box->setCheckState(v.toBool() ? Qt::Checked : Qt::Unchecked);
               })
        || exchange<QRadioButton>(
               widget, set, value, [](QRadioButton* box) { return QVariant(box->isChecked()); },
               [](QRadioButton* box, const QVariant& v) { box->setChecked(v.toBool()); });
}

} // namespace

void INFO::getSetData(QWidget* widget, bool set, bool blockSignals, QVariant& value)
{
    if (widget == nullptr)
        return;
    std::optional<QSignalBlocker> quiet;
    std::optional<QSignalBlocker> quietEdit;
    if (blockSignals) {
        quiet.emplace(widget);
        if (qobject_cast<QAbstractSpinBox*>(widget)) {
            if (auto* edit = widget->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly))
                quietEdit.emplace(edit);
        }
    }
    exchangeNumberOrDate(widget, set, value) || exchangeText(widget, set, value)
        || exchangeCheck(widget, set, value);
}

void INFO::blockEvent(const QPointer<QWidget>& widget, bool on)
{
    if (widget)
        widget->setProperty(WIDGET_INFO::blockEventsPropertyKey, on ? QVariant(true) : QVariant());
}

bool INFO::eventBlocked(const QPointer<QWidget>& widget)
{
    return widget && widget->property(WIDGET_INFO::blockEventsPropertyKey).toBool();
}

INFO::EVENTBLOCK::EVENTBLOCK(const QPointer<QWidget>& widget)
    : m_widget(widget)
    , m_mine(widget && !eventBlocked(widget))
{
    if (m_mine)
        blockEvent(m_widget, true);
}

INFO::EVENTBLOCK::~EVENTBLOCK()
{
    if (m_mine)
        blockEvent(m_widget, false);
}

} // namespace mod_form_qt
