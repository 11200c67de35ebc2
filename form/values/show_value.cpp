#include "form/values/show_value.h"

#include "form/model/info_option.h"
#include "form/values/exclusive_buttons.h"
#include "form/values/number_text.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QSignalBlocker>

#include <memory>
#include <vector>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

void showDate(QDateEdit* edit, const QVariant& date, const QMap<QString, QVariant>* map,
              const QString& key)
{
    const INFO::EVENTBLOCK block(edit);
    const bool isAbsent = date == INFO::dateInvalid;
    auto* present = WIDGET_INFO::widget<QCheckBox>(map, key, E_CHECKBOX);
    if (present) {
        const QSignalBlocker quiet(present);
        present->setChecked(!isAbsent);
        edit->setEnabled(!isAbsent);
    }
    // Behind an unchecked box the last date stays to be seen.
    if (!isAbsent || !present) {
        QVariant shown = date;
        INFO::getSetData(edit, true, true, shown);
    }
    if (!isAbsent)
        edit->setProperty("_lastDate", date);
}

QString numberTextFor(QWidget* widget, const QVariant& value)
{
    const Option option(WIDGET_INFO::options(widget));
    const QLocale locale = option.value(Option::localeKey, widget->locale()).toLocale();
    const int precision =
        option.value(Option::precisionKey, Option::defaultNumberPrecision).toInt();
    return numberText(value, locale, precision);
}

} // namespace

QDate dateOrInvalid(const QVariant& value)
{
    QDate date;
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        date = QDate::fromJulianDay(value.toLongLong());
        break;
    default:
        date = value.toDate();
    }
    return date.isValid() && date < INFO::dateInvalid ? date : INFO::dateInvalid;
}

void showValue(QWidget* widget, const QVariant& value, const QMap<QString, QVariant>* map,
               const QString& key)
{
    showValue(widget, WIDGET_INFO::typeExt(widget), value, map, key);
}

void showValue(QWidget* widget, int eleType, const QVariant& value,
               const QMap<QString, QVariant>* map, const QString& key)
{
    auto* date = qobject_cast<QDateEdit*>(widget);
    if (date && eleType == E_DATE) {
        showDate(date, value, map, key);
        return;
    }
    // Another button of a group that this one unchecks stores it, but nobody is told.
    std::vector<std::unique_ptr<INFO::EVENTBLOCK>> quiet;
    for (QAbstractButton* other : exclusiveSiblings(widget))
        quiet.push_back(std::make_unique<INFO::EVENTBLOCK>(other));
    QVariant shown = value;
    if (eleType == E_NUMBER && qobject_cast<QLineEdit*>(widget))
        shown = numberTextFor(widget, value);
    INFO::getSetData(widget, true, true, shown);
}

} // namespace mod_form_qt
