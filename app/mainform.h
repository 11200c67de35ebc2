#pragma once

#include "accounting/payment_import.h"
#include "form/mod_form_qt.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QVariant>

/// The variables that rows of the form are bound to, with what a first start shows.
struct MainFormValues
{
    QVariant mainurl = QString();
    QVariant apiKey = QString();
    QVariant apiSecret = QString();
    QVariant germanized_use = false;
    QVariant germanized_overwrite_pdf = false;
    QVariant germanized_pdf_folder = QString();
    QVariant woocommerce_use = true;
    QVariant paypal_use = true;
    QVariant date_filter_use = false;
    QVariant date_filter_before = QDate(2037, 1, 1);
    QVariant date_filter_after = QDate(1970, 1, 1);
    QVariant id_cache_use = true;
};

/// What the form's rows call; named as the rows' actions.
struct MainFormCallbacks
{
    mod_form_qt::LegacyCallback fnc_start;
    mod_form_qt::LegacyCallback fnc_stop;
    mod_form_qt::LegacyCallback skr_change;
    mod_form_qt::LegacyCallback buchungs_konto_change;
    mod_form_qt::LegacyCallback edit_payment_method_sort;
    mod_form_qt::LegacyCallback id_cache_del;
};

/// What the form shows that is not fixed.
struct MainFormSource
{
    MainFormValues& values; ///< outlives the form
    const payment_import::KontenMap& konten; ///< one account role to choose for each entry
    int nSKRDefault = 0; ///< the host's chart: 3, 4, 49, or 0 for none
    bool bHostFolder = false; ///< the PDF folder is the host's and can't be changed
    QString csPaypalLabel;
    QString csWooCommerceLabel;
};

/// \return  the rows of the main form, from the shop's address to the closing line
QList<mod_form_qt::INFO> mainFormRows(const MainFormSource& source,
                                      const MainFormCallbacks& callbacks);

/// \return  the rows of the dialog for the replacements, whose text stands under the key "value"
QList<mod_form_qt::INFO> paymentMethodRows(const QString& replacements);

/// The replacements that a first start offers: a line for each, long form and short form.
extern const QString defaultPaymentMethods;

/// \return  the value of the item that is selected in a list of the form, invalid if there is none
QVariant selectedValue(const QMap<QString, QVariant>& options, const QString& key);
