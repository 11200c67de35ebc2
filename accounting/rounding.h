#pragma once

/// Rounds a value to a number of decimal places, by a trip through its decimal text.
///
/// What counts is the exact binary value, so 1.005 at 2 digits gives 1.00; an exact tie goes away
/// from zero, so 0.125 at 2 digits gives 0.13. Infinities and NaN come back as they are.
double Round(double value, int digits);

/// Rounds an amount that may lie just below a decimal 5 only because of its binary form: the value
/// is first moved away from zero by a millionth, so 1.005 at 2 digits gives 1.01. A value that is
/// zero at six places is rounded as it is.
/// \param third  without effect
double RundungsKorrektur(double value, int digits, double third);

/// The gross amount for a net amount and a percentage, rounded by `RundungsKorrektur`.
double B_From_PS_N_ROUND(double percent, double net, int digits);
