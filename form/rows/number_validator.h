#pragma once

#include <QLocale>
#include <QValidator>

namespace mod_form_qt {

/// What a number may be.
struct NumberBounds
{
    bool whole = true; ///< false: with decimals
    bool isSigned = true; ///< of whole numbers: which of the two pairs counts
    qint64 min = 0;
    qint64 max = 0;
    quint64 unsignedMin = 0;
    quint64 unsignedMax = 0;
    double realMin = 0;
    double realMax = 0;
    int decimals = 0; ///< of numbers that are not whole
};

/// Lets only a number within its bounds be typed into a line edit.
class NumberValidator : public QValidator
{
public:
    /// \param correct  a number beyond its bounds is drawn to the nearest one when editing ends
    NumberValidator(const NumberBounds& bounds, bool correct, QObject* parent);

    /// \return  Intermediate for what can still become a number within the bounds
    State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;

private:
    State validateWhole(const QString& input) const;
    State validateReal(const QString& input) const;

    NumberBounds m_bounds;
    bool m_correct;
};

} // namespace mod_form_qt
