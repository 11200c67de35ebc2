#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

/// What has to be in order before a run.
struct StartSettings
{
    bool bGermanized = false; ///< invoices are fetched
    QString pdfFolder; ///< where they go
    bool bTxIdOnly = false; ///< only PayPal's transaction ids are exported
    QString outputFilePath; ///< the export
    bool bWooCommerce = false;
    bool bPaypal = false;
    QString csPaypalLabel; ///< the labels of the three kinds of export
    QString csWooCommerceLabel;
    QString csTxIdOnlyLabel;
    QVariant b2c_handling; ///< selected values, invalid without a selection
    QVariant belegdatum;
    QVariant skr;
};

/// Why a run can't start, as a message to the user.
struct FailedCheck
{
    QString title;
    QString text;
};

/// \return  the first check that fails, nothing if a run can start
std::optional<FailedCheck> firstFailedCheck(const StartSettings& settings);
