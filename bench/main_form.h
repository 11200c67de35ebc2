#pragma once

#include "form/mod_form_qt.h"

#include <QMainWindow>

namespace bench {

/// The variables that rows of the program's main form are bound to.
struct MainFormValues
{
    QVariant mainurl = QStringLiteral("https://shop.example");
    QVariant apiKey = QStringLiteral("ck_0123456789");
    QVariant apiSecret = QStringLiteral("cs_0123456789");
    QVariant dateFilterUse = true;
    QVariant dateFilterAfter = QDate(2024, 1, 1);
    QVariant dateFilterBefore = QDate(2024, 12, 31);
    QVariant idCacheUse = false;
    QVariant germanizedUse = true;
    QVariant germanizedPdfFolder = QStringLiteral("/tmp/rechnungen");
    QVariant germanizedOverwritePdf = false;
    QVariant paypalUse = true;
    QVariant woocommerceUse = true;
};

/// A list of the main form: the shown texts and the values.
using Choices = QList<std::pair<QString, QVariant>>;

Choices skrChoices();
Choices roleChoices();
Choices costCentreChoices();
Choices b2cChoices();
Choices dateChoices();

/// Builds the main form's 56 rows into a window by the form engine.
/// \param values, map  outlive the window
void buildByEngine(QMainWindow& window, MainFormValues& values, QMap<QString, QVariant>& map);

/// Builds the same widgets in plain Qt. They report to nobody.
void buildByHand(QMainWindow& window, const MainFormValues& values);

} // namespace bench
