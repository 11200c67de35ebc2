#pragma once

#include <QDate>
#include <QString>

class QMainWindow;

namespace bench {

/// What the main form shows while it is measured.
struct SampleValues
{
    QString mainurl = QStringLiteral("https://shop.example");
    QString apiKey = QStringLiteral("ck_0123456789");
    QString apiSecret = QStringLiteral("cs_0123456789");
    bool dateFilterUse = true;
    QDate dateFilterAfter = QDate(2024, 1, 1);
    QDate dateFilterBefore = QDate(2024, 12, 31);
    bool idCacheUse = false;
    bool germanizedUse = true;
    QString germanizedPdfFolder = QStringLiteral("/tmp/rechnungen");
    bool germanizedOverwritePdf = false;
    bool paypalUse = true;
    bool woocommerceUse = true;
};

/// Builds the widgets of the program's main form in plain Qt. They report to nobody.
void buildByHand(QMainWindow& window, const SampleValues& values);

} // namespace bench
