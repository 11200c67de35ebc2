#include "form/values/number_text.h"

#include <algorithm>

namespace mod_form_qt {

namespace {

QString decimalText(double number, QLocale locale, int precision)
{
    locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    QString text = locale.toString(number, 'f', std::max(precision, 0));
    const QString point = locale.decimalPoint();
    if (text.contains(point)) {
        while (text.endsWith(locale.zeroDigit()))
            text.chop(locale.zeroDigit().size());
        if (text.endsWith(point))
            text.chop(point.size());
    }
    const QString zero = locale.zeroDigit();
    return text == locale.negativeSign() + zero ? zero : text;
}

} // namespace

QString numberText(const QVariant& value, const QLocale& locale, int precision)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return decimalText(value.toDouble(), locale, precision);
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Char:
    case QMetaType::SChar:
        return QString::number(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::UChar:
        return QString::number(value.toULongLong());
    default:
        return value.toString();
    }
}

} // namespace mod_form_qt
