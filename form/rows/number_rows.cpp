#include "form/rows/number_validator.h"
#include "form/rows/row_family.h"
#include "form/values/number_text.h"

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>

#include <limits>

namespace mod_form_qt {

namespace {

using Option = INFO::Option;

template <typename T>
NumberBounds boundsOf()
{
    using Limits = std::numeric_limits<T>;
    NumberBounds bounds;
    bounds.whole = Limits::is_integer;
    bounds.isSigned = Limits::is_signed;
    if constexpr (!Limits::is_integer) {
        bounds.realMin = double(Limits::lowest());
        bounds.realMax = double(Limits::max());
    } else if constexpr (Limits::is_signed) {
        bounds.min = Limits::min();
        bounds.max = Limits::max();
    } else {
        bounds.unsignedMax = Limits::max();
    }
    return bounds;
}

NumberBounds byteBounds()
{
    NumberBounds bounds;
    bounds.min = -128;
    bounds.max = 127;
    return bounds;
}

/// What numbers of a type can be; `known` turns false for a type that is no number.
NumberBounds typeBounds(int metaType, bool& known)
{
    // clang-format off
    switch (metaType) {
    case QMetaType::Bool: return boundsOf<bool>();
    case QMetaType::SChar:
    case QMetaType::Char: return byteBounds();
    case QMetaType::UChar: return boundsOf<unsigned char>();
    case QMetaType::Short: return boundsOf<short>();
    case QMetaType::UShort: return boundsOf<unsigned short>();
    case QMetaType::Int: return boundsOf<int>();
    case QMetaType::UInt: return boundsOf<unsigned>();
    case QMetaType::Long: return boundsOf<long>();
    case QMetaType::ULong: return boundsOf<unsigned long>();
    case QMetaType::LongLong: return boundsOf<qlonglong>();
    case QMetaType::ULongLong: return boundsOf<qulonglong>();
    case QMetaType::Float: return boundsOf<float>();
    case QMetaType::Double: return boundsOf<double>();
    default: known = false; return boundsOf<double>();
    }
    // clang-format on
}

/// A number row in its three shapes is built from this.
struct NumberRow
{
    const PreparedRow& row;
    QVariant value {};
    int metaType = QMetaType::Double;
    NumberBounds bounds {};
    int precision = Option::defaultNumberPrecision;
    bool correct = Option::useAutoCorrectMinMax;
    bool grouped = Option::useNumberGrouping;
};

void narrow(NumberBounds& bounds, const Option& option)
{
    const QVariant min = option.min();
    const QVariant max = option.max();
    const QVariant isSigned = option.isSignedDataType();
    if (isSigned.isValid() && !isSigned.toBool()) {
        bounds.min = std::max<qint64>(bounds.min, 0);
        bounds.realMin = std::max(bounds.realMin, 0.0);
    }
    if (min.isValid()) {
        bounds.min = min.toLongLong();
        bounds.unsignedMin = min.toLongLong() < 0 ? 0 : min.toULongLong();
        bounds.realMin = min.toDouble();
    }
    if (max.isValid()) {
        bounds.max = max.toLongLong();
        bounds.unsignedMax = max.toULongLong();
        bounds.realMax = max.toDouble();
    }
    // A maximum below the minimum leaves the one number that is asked for first.
    bounds.max = std::max(bounds.max, bounds.min);
    bounds.unsignedMax = std::max(bounds.unsignedMax, bounds.unsignedMin);
    bounds.realMax = std::max(bounds.realMax, bounds.realMin);
}

NumberRow read(const PreparedRow& row, const QVariant& value)
{
    NumberRow number {row, value};
    number.metaType = value.typeId();
    bool known = true;
    number.bounds = typeBounds(number.metaType, known);
    if (!known) {
        known = true;
        number.metaType = row.option.metaType().isValid() ? row.option.metaType().toInt()
                                                          : int(QMetaType::Double);
        number.bounds = typeBounds(number.metaType, known);
        if (!known)
            number.metaType = QMetaType::Double;
    }
    number.precision = row.option.value(Option::precisionKey, number.precision).toInt();
    number.correct = row.option.value(Option::autoCorrectMinMaxKey, number.correct).toBool();
    number.grouped = row.option.value(Option::groupSepKey, number.grouped).toBool();
    narrow(number.bounds, row.option);
    number.bounds.decimals = number.precision;
    return number;
}

/// What the two kinds of spin boxes have in common.
template <typename SpinBox>
void dress(SpinBox* box, const NumberRow& number)
{
    const Option& option = number.row.option;
    box->setPrefix(option.prefix());
    box->setSuffix(option.suffix());
    box->setGroupSeparatorShown(number.grouped);
    if (number.correct)
        box->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    if (number.row.has(A_READONLY))
        box->setReadOnly(true);
    if (number.row.has(A_SPINBOX_LINEEDIT_READONLY)) {
        if (auto* edit = box->template findChild<QLineEdit*>())
            edit->setReadOnly(true);
    }
}

/// A spin box that takes nothing typed for no number to be corrected: an emptied field shows its
/// number again, instead of the nearest bound.
template <typename Base>
class NumberBox : public Base
{
public:
    using Base::Base;

    void fixup(QString& text) const override
    {
        QString typed = text;
        if (typed.startsWith(this->prefix()))
            typed.remove(0, this->prefix().size());
        if (typed.endsWith(this->suffix()))
            typed.chop(this->suffix().size());
        if (typed.trimmed().isEmpty())
            text = this->prefix() + this->textFromValue(this->value()) + this->suffix();
        else
            Base::fixup(text);
    }
};

int toSpinBox(qint64 number)
{
    return int(std::clamp<qint64>(number, std::numeric_limits<int>::min(),
                                  std::numeric_limits<int>::max()));
}

int unsignedToSpinBox(quint64 number)
{
    return int(std::min<quint64>(number, std::numeric_limits<int>::max()));
}

QWidget* spinBox(const NumberRow& number, QWidget* parent)
{
    const NumberBounds& bounds = number.bounds;
    auto* box = new NumberBox<QSpinBox>(parent);
    box->setEnabled(false);
    if (bounds.isSigned)
        box->setRange(toSpinBox(bounds.min), toSpinBox(bounds.max));
    else
        box->setRange(unsignedToSpinBox(bounds.unsignedMin), unsignedToSpinBox(bounds.unsignedMax));
    const QVariant step = number.row.option.spinBoxSingleStep();
    if (step.isValid())
        box->setSingleStep(step.toInt());
    dress(box, number);
    box->setValue(bounds.isSigned ? toSpinBox(INFO::varToInt64(number.value))
                                  : unsignedToSpinBox(INFO::varToUInt64(number.value)));
    box->setEnabled(true);
    return box;
}

QWidget* doubleSpinBox(const NumberRow& number, QWidget* parent)
{
    auto* box = new NumberBox<QDoubleSpinBox>(parent);
    box->setEnabled(false);
    box->setDecimals(number.precision);
    box->setRange(number.bounds.realMin, number.bounds.realMax);
    const QVariant step = number.row.option.spinBoxSingleStep();
    if (step.isValid())
        box->setSingleStep(step.toDouble());
    dress(box, number);
    box->setValue(number.value.toDouble());
    box->setEnabled(true);
    return box;
}

QWidget* lineEdit(const NumberRow& number, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    const QVariant locale = number.row.option.value(Option::localeKey);
    if (locale.isValid())
        edit->setLocale(locale.toLocale());
    auto* validator = new NumberValidator(number.bounds, number.correct, edit);
    validator->setLocale(edit->locale());
    edit->setText(numberText(number.value, edit->locale(), number.precision));
    edit->setValidator(validator);
    return edit;
}

bool fitsSpinBox(int metaType)
{
    switch (metaType) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
        return true;
    default:
        return false;
    }
}

class NumberRows : public RowFamily
{
public:
    BuiltRow build(const PreparedRow& row, BuildContext& context) const override
    {
        BuiltRow built;
        context.addLabel(row, built);
        const NumberRow number = read(row, context.valueOf(row));
        QWidget* const parent = context.container();
        const bool spins = row.option.useSpinBox();
        if (spins && fitsSpinBox(number.metaType))
            built.add(spinBox(number, parent), E_NUMBER);
        else if (spins && !number.bounds.whole)
            built.add(doubleSpinBox(number, parent), E_NUMBER);
        else
            built.add(lineEdit(number, parent), E_LINEEDIT);
        return built;
    }
};

} // namespace

const RowFamily& numberRows()
{
    return theFamily<NumberRows>();
}

} // namespace mod_form_qt
