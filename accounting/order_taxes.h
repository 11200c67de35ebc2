#pragma once

#include <QJsonObject>
#include <QString>
#include <QVariant>

#include <map>
#include <tuple>

/// The tax rates of an order: rate id -> `rate_percent`, `tax_total`, `shipping_tax_total`; texts
/// as the shop sends them, with a dot as decimal point.
using OrderTaxMap = std::map<int, std::tuple<QString, QString, QString>>;

/// Parts of a shipping cost: rate id, or -1 for untaxed shipping -> amount.
using ShippingMap = std::map<int, double>;

/// The rates of the whole shop: rate id -> rate text. Filled by the run, read for rates that an
/// order does not name itself.
extern std::map<int, QString> globalTaxRates;

/// Reads the tax rates that an order or refund names itself.
/// \param rates  out: emptied first; lines without `rate_percent` are left out, of two lines with
///               the same rate id the later one counts
/// \return       true if `rates` is not empty
bool GetLocalTaxRates(const QJsonObject& order,
                      std::map<int, std::tuple<QString, QString, QString>>& rates);

/// Splits an order's shipping cost over its tax rates.
/// \param rates     the order's rates
/// \param shipping  out: emptied first; net amounts, or a single gross amount under the smallest
///                  rate id once bit 0 of `errors` is set
/// \param errors    in/out: bit 0 set if the cost did not split cleanly; never cleared
/// \return          true if `shipping` is not empty. Missing fields read as 0; nothing throws.
bool GetShippingTax(const QJsonObject& order,
                    const std::map<int, std::tuple<QString, QString, QString>>& rates,
                    std::map<int, double>& shipping, int& errors);

/// Finds the tax rate of a line item, by its first tax object alone.
/// \param rates     the order's rates; `globalTaxRates` is asked for ids that they lack
/// \param totalTax  the line's tax; decides what an unknown rate reads as
/// \param rateId    out: the rate's id, 0 if the object has none
/// \param key       out: "tax_rate"
/// \param value     out: the rate text; for an unknown rate "-1" if the line bears tax, else "0.00"
/// \return          false, with nothing changed, for a line without tax objects
bool GetLineItemsTaxes(const QJsonObject& item,
                       const std::map<int, std::tuple<QString, QString, QString>>& rates,
                       double totalTax, int& rateId, QString& key, QVariant& value);
