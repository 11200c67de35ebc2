#include "form/rows/number_validator.h"

#include <algorithm>

namespace mod_form_qt {

NumberValidator::NumberValidator(const NumberBounds& bounds, bool correct, QObject* parent)
    : QValidator(parent)
    , m_bounds(bounds)
    , m_correct(correct)
{
}

QValidator::State NumberValidator::validateWhole(const QString& input) const
{
    const bool canBeNegative = m_bounds.isSigned && m_bounds.min < 0;
    if (input.isEmpty() || (canBeNegative && input == QLatin1String("-")))
        return Intermediate;
    const QLatin1Char minus('-');
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    const QStringView digits = QStringView(input).mid(input.startsWith(minus) ? 1 : 0);
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDigit)
        || (input.startsWith(minus) && !canBeNegative))
        return Invalid;

    bool ok = false;
    if (!m_bounds.isSigned) {
        const quint64 number = input.toULongLong(&ok);
        const bool inside = ok && number >= m_bounds.unsignedMin && number <= m_bounds.unsignedMax;
        return inside ? Acceptable : Intermediate;
    }
    const qint64 number = input.toLongLong(&ok);
    return ok && number >= m_bounds.min && number <= m_bounds.max ? Acceptable : Intermediate;
}

QValidator::State NumberValidator::validateReal(const QString& input) const
{
    QLocale numbers = locale();
    numbers.setNumberOptions(QLocale::RejectGroupSeparator);
    if (m_bounds.realMin >= 0 && input.startsWith(numbers.negativeSign()))
        return Invalid;
    // Only the form is left to it: it would not let a number beyond the bounds be typed at all, not
    // even on the way to another one.
    QDoubleValidator validator;
    validator.setDecimals(m_bounds.decimals);
    validator.setNotation(QDoubleValidator::StandardNotation);
    validator.setLocale(numbers);
    QString text = input;
    int pos = 0;
    const State state = validator.validate(text, pos);
    if (state != Acceptable)
        return state;
    const double number = numbers.toDouble(text);
    return number >= m_bounds.realMin && number <= m_bounds.realMax ? Acceptable : Intermediate;
}

QValidator::State NumberValidator::validate(QString& input, int& /*pos*/) const
{
    const State state = m_bounds.whole ? validateWhole(input) : validateReal(input);
    // What lies outside stays typable where it is corrected; elsewhere too, since "1" may be on its
    // way to "15". Only a text too long for any number is refused.
    return state == Intermediate && input.size() > 400 ? Invalid : state;
}

void NumberValidator::fixup(QString& input) const
{
    if (!m_correct)
        return;
    if (!m_bounds.whole) {
        bool ok = false;
        const double number = locale().toDouble(input, &ok);
        QLocale numbers = locale();
        numbers.setNumberOptions(QLocale::OmitGroupSeparator);
        const double inside = std::clamp(ok ? number : 0.0, m_bounds.realMin, m_bounds.realMax);
        input = numbers.toString(inside, 'f', m_bounds.decimals);
        return;
    }
    bool ok = false;
    const bool negative = input.startsWith(QLatin1Char('-'));
    if (!m_bounds.isSigned) {
        const quint64 number = input.toULongLong(&ok);
        // Digits that are no number are too many of them.
        const quint64 read = ok ? number : (input.isEmpty() || negative ? 0 : m_bounds.unsignedMax);
        input = QString::number(std::clamp(read, m_bounds.unsignedMin, m_bounds.unsignedMax));
        return;
    }
    const qint64 number = input.toLongLong(&ok);
    const qint64 beyond = input.size() < 2 ? 0 : (negative ? m_bounds.min : m_bounds.max);
    input = QString::number(std::clamp(ok ? number : beyond, m_bounds.min, m_bounds.max));
}

} // namespace mod_form_qt
