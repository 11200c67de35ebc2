#include "accounting/order_taxes.h"

#include "accounting/rounding.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

std::map<int, QString> globalTaxRates;

namespace {

constexpr int UncleanSplit = 1;
constexpr int Untaxed = -1;

// Through the variant, since the shop sends numbers as texts, which QJsonValue itself reads as 0.
QString textOf(const QJsonObject& object, QLatin1StringView key)
{
    return object.value(key).toVariant().toString();
}

double amountOf(const QJsonObject& object, QLatin1StringView key)
{
    return object.value(key).toVariant().toDouble();
}

int idOf(const QJsonObject& object, QLatin1StringView key)
{
    return object.value(key).toVariant().toInt();
}

/// Adds the parts of one taxed shipping line to `shipping`.
/// \return the net amount that the line's taxes imply
double splitOverRates(const QJsonArray& taxes, double total, const OrderTaxMap& rates,
                      ShippingMap& shipping)
{
    double remaining = std::abs(total);
    double netSum = 0;
    for (const QJsonValueConstRef entry : taxes) {
        if (!entry.isObject())
            continue;
        const QJsonObject tax = entry.toObject();
        const auto rateEntry = rates.find(idOf(tax, "id"_L1));
        if (rateEntry == rates.end())
            continue;
        const double rate = std::get<0>(rateEntry->second).toDouble();
        if (Round(rate, 2) == 0)
            continue;
        const double net = Round(amountOf(tax, "total"_L1) / (rate * 0.01), 2);
        // Rounded taxes imply a little more than the line's total at times.
        const double part = std::min(std::abs(remaining), std::abs(net));
        remaining -= part;
        shipping[rateEntry->first] += net < 0 ? -part : part;
        netSum += net;
    }
    return netSum;
}

} // namespace

bool GetLocalTaxRates(const QJsonObject& order,
                      std::map<int, std::tuple<QString, QString, QString>>& rates)
{
    rates.clear();
    const QJsonArray lines = order.value("tax_lines"_L1).toArray();
    for (const QJsonValueConstRef entry : lines) {
        const QJsonObject line = entry.toObject();
        if (!line.contains("rate_percent"_L1))
            continue;
        rates[idOf(line, "rate_id"_L1)] = {textOf(line, "rate_percent"_L1),
                                           textOf(line, "tax_total"_L1),
                                           textOf(line, "shipping_tax_total"_L1)};
    }
    return !rates.empty();
}

bool GetShippingTax(const QJsonObject& order,
                    const std::map<int, std::tuple<QString, QString, QString>>& rates,
                    std::map<int, double>& shipping, int& errors)
{
    shipping.clear();
    const QJsonArray lines = order.value("shipping_lines"_L1).toArray();
    double sumTax = 0;
    double sumTotal = 0;
    for (const QJsonValueConstRef entry : lines) {
        const QJsonObject line = entry.toObject();
        const double total = amountOf(line, "total"_L1);
        sumTax += amountOf(line, "total_tax"_L1);
        sumTotal += total;

        const QJsonArray taxes = line.value("taxes"_L1).toArray();
        const double netSum = splitOverRates(taxes, total, rates, shipping);
        if (taxes.isEmpty())
            shipping[Untaxed] += total;
        // A line without taxes implies a net amount of 0, so it counts as unclean unless it is
        // free.
        if (Round(netSum, 2) != Round(total, 2))
            errors |= UncleanSplit;
    }

    if (errors > 0 && (errors & UncleanSplit) != 0 && !shipping.empty()) {
        // Gross here, net in the clean case: the flag tells the host which of the two it gets.
        const int smallestId = shipping.begin()->first;
        shipping = {{smallestId, sumTax + sumTotal}};
    }
    return !shipping.empty();
}

bool GetLineItemsTaxes(const QJsonObject& item,
                       const std::map<int, std::tuple<QString, QString, QString>>& rates,
                       double totalTax, int& rateId, QString& key, QVariant& value)
{
    const QJsonArray taxes = item.value("taxes"_L1).toArray();
    if (taxes.isEmpty())
        return false;
    rateId = idOf(taxes.first().toObject(), "id"_L1);

    QString rate = u"0.00"_s;
    if (const auto own = rates.find(rateId); own != rates.end())
        rate = std::get<0>(own->second);
    else if (const auto global = globalTaxRates.find(rateId); global != globalTaxRates.end())
        rate = global->second;
    else if (Round(totalTax, 2) != 0)
        rate = u"-1"_s;
    key = u"tax_rate"_s;
    value = rate;
    return true;
}
