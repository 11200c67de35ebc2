#include "accounting/rounding.h"

#include <QLocale>

namespace {

QLocale plainNumbers()
{
    QLocale locale(QLocale::C, QLocale::AnyScript, QLocale::AnyTerritory);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace

double Round(double value, int digits)
{
    static const QLocale locale = plainNumbers();
    // Latin1 before reading: a byte array reads the same number many times faster than a QString,
    // which looks up every character in the locale first.
    return locale.toString(value, 'f', digits).toLatin1().toDouble();
}

double RundungsKorrektur(double value, int digits, double /*third*/)
{
    const double rounded = Round(value, 6);
    if (rounded < 0.0)
        return Round(-1e-06 + value, digits);
    if (rounded > 0.0)
        return Round(1e-06 + value, digits);
    return Round(value, digits);
}

double B_From_PS_N_ROUND(double percent, double net, int digits)
{
    double gross = percent * net;
    gross *= 0.01;
    gross += net;
    return RundungsKorrektur(gross, digits, net);
}
