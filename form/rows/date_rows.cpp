#include "form/rows/row_family.h"
#include "form/values/row_value.h"
#include "form/values/show_value.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QRegularExpression>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

/// A year always shows in full, or the century would be anybody's guess.
void showFullYear(QDateTimeEdit* edit)
{
    static const QRegularExpression year(QStringLiteral("y{1,4}"));
    edit->setDisplayFormat(edit->displayFormat().replace(year, QStringLiteral("yyyy")));
}

/// A locale of the row's own; the editor by itself follows the program's.
void followLocale(QDateTimeEdit* edit, const QVariant& locale)
{
    if (!locale.isValid())
        return;
    edit->setLocale(locale.toLocale());
    edit->setDisplayFormat(qobject_cast<QDateEdit*>(edit)
                               ? edit->locale().dateFormat(QLocale::ShortFormat)
                               : edit->locale().dateTimeFormat(QLocale::ShortFormat));
}

void setBound(QDateTimeEdit* edit, const QVariant& bound, void (QDateTimeEdit::*setDate)(QDate),
              void (QDateTimeEdit::*setDateTime)(const QDateTime&),
              void (QDateTimeEdit::*setTime)(QTime))
{
    if (bound.typeId() == QMetaType::QDateTime)
        (edit->*setDateTime)(bound.toDateTime());
    else if (bound.typeId() == QMetaType::QTime)
        (edit->*setTime)(bound.toTime());
    else if (bound.isValid() && bound.toDate().isValid())
        (edit->*setDate)(bound.toDate());
}

void dress(QDateTimeEdit* edit, const PreparedRow& row)
{
    followLocale(edit, row.option.value(Option::localeKey));
    showFullYear(edit);
    edit->setCalendarPopup(!row.has(A_SPINBOX));
    if (row.has(A_SPINBOX))
        edit->setButtonSymbols(QAbstractSpinBox::UpDownArrows);
    setBound(edit, row.option.min(), &QDateTimeEdit::setMinimumDate,
             &QDateTimeEdit::setMinimumDateTime, &QDateTimeEdit::setMinimumTime);
    setBound(edit, row.option.max(), &QDateTimeEdit::setMaximumDate,
             &QDateTimeEdit::setMaximumDateTime, &QDateTimeEdit::setMaximumTime);
    edit->setReadOnly(row.has(A_READONLY));
}

void buildDate(const PreparedRow& row, BuildContext& context, BuiltRow& built)
{
    const QDate date = dateOrInvalid(context.valueOf(row));
    const bool absent = date == INFO::dateInvalid;
    const QDate shown = absent ? QDate::currentDate() : date;

    QCheckBox* present = nullptr;
    if (row.has(A_INVALID_CHECKBOX)) {
        present = new QCheckBox(context.container());
        present->setChecked(!absent);
        present->setEnabled(!row.has(A_READONLY));
        if (RowValue stored(row.row, context.map()); absent && stored.exists())
            stored.write(INFO::dateInvalid);
        built.widgets.push_back({present, E_CHECKBOX, false, true, -1});
    }
    auto* edit = new QDateEdit(context.container());
    dress(edit, row);
    edit->setDate(shown);
    edit->setProperty("_lastDate", shown);
    edit->setEnabled(present == nullptr || !absent);
    built.add(edit, E_DATE);
}

class DateRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        context.addLabel(row, built);
        if (row.row.eleType == E_DATE) {
            buildDate(row, context, built);
            return built;
        }
        auto* edit = new QDateTimeEdit(context.container());
        dress(edit, row);
        const QDateTime moment = context.valueOf(row).toDateTime();
        if (moment.isValid())
            edit->setDateTime(moment);
        built.add(edit, E_DATETIME);
        return built;
    }
};

} // namespace

const RowFamily& dateRows()
{
    return theFamily<DateRows>();
}

} // namespace mod_form_qt
