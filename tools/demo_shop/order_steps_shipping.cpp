#include "tools/demo_shop/order_steps.h"

#include <algorithm>

namespace demo_shop {

bool OrderMaker::isNothingSent() const
{
    return std::all_of(m_order.lines.begin(), m_order.lines.end(),
                       [](const OrderLine& line) { return line.product->isVirtual; });
}

void OrderMaker::addShipping(const QString& title, const char* method, const char* instance,
                             qint64 gross)
{
    ShippingLine shipping;
    shipping.id = m_nextItem++;
    shipping.title = title;
    shipping.method = method;
    shipping.instance = instance;

    // The cost is shared among the rates in the proportion of the lines' net amounts; the last
    // rate takes what is left, so that nothing is lost by rounding.
    const std::vector<TaxLine> rates = taxLinesOf(m_order.lines, {}, {});
    qint64 netSum = 0;
    for (const OrderLine& line : m_order.lines)
        netSum += line.net;
    qint64 left = gross;
    for (std::size_t i = 0; i < rates.size(); ++i) {
        const TaxRate* rate = rates[i].rate;
        qint64 net = 0;
        for (const OrderLine& line : m_order.lines)
            net += line.rate == rate ? line.net : 0;
        const bool isLast = i + 1 == rates.size();
        const qint64 part =
            isLast ? left : roundedQuotient(gross * net, std::max<qint64>(1, netSum));
        left -= part;
        const qint64 partNet = roundedQuotient(part * 1000, 1000 + rate->perMille);
        shipping.net += partNet;
        shipping.tax += part - partNet;
        shipping.parts.push_back({rate, partNet, part - partNet});
    }
    m_order.shipping.push_back(shipping);
}

void OrderMaker::addUntaxedShipping(const QString& title, const char* instance, qint64 net,
                                    bool isTaxable)
{
    ShippingLine shipping;
    shipping.id = m_nextItem++;
    shipping.title = title;
    shipping.instance = instance;
    shipping.net = net;
    shipping.isTaxable = isTaxable;
    m_order.shipping.push_back(shipping);
}

void OrderMaker::takeShipping()
{
    if (m_order.lines.empty() || isNothingSent())
        return;
    if (m_country == "CH")
        addUntaxedShipping(QStringLiteral("Versand Schweiz"), "6", 2400, true);
    else if (m_country != "DE")
        addShipping(QStringLiteral("Paket EU"), "flat_rate", "5", 1390);
    else
        takeGermanShipping();
}

void OrderMaker::takeGermanShipping()
{
    const QString parcel = QStringLiteral("Paket");
    switch (m_order.role) {
    case Role::FreeShipping:
        addShipping(QStringLiteral("Kostenloser Versand"), "free_shipping", "3", 0);
        break;
    case Role::PickUp:
        addShipping(QStringLiteral("Abholung im Laden"), "local_pickup", "4", 0);
        break;
    case Role::TwoShippingLines:
        addShipping(parcel, "flat_rate", "", 490);
        addShipping(QStringLiteral("Zuschlag Insel"), "flat_rate", "", 840);
        break;
    case Role::UntaxedShipping:
        addUntaxedShipping(QStringLiteral("Briefporto"), "7", 160, false);
        break;
    case Role::RefundLargeWithZeroLines:
        addShipping(QStringLiteral("Spedition"), "flat_rate", "8", 11900);
        break;
    case Role::RefundShippingOnly:
    case Role::RefundFullByLines:
        addShipping(parcel, "flat_rate", "1", 490);
        break;
    default:
        // 5.95 is 5.00 and 0.95: a cost that its tax explains to the cent, as 4.90 does not.
        if (m_random.percent(30))
            addShipping(QStringLiteral("Paket versichert"), "flat_rate", "2", 595);
        else if (m_random.percent(10))
            addShipping(QStringLiteral("Kostenloser Versand"), "free_shipping", "3", 0);
        else
            addShipping(parcel, "flat_rate", "1", 490);
        break;
    }
}

void OrderMaker::addFee(const QString& name, qint64 gross)
{
    FeeLine fee;
    fee.id = m_nextItem++;
    fee.name = name;
    fee.rate = rateFor(m_country, "standard");
    fee.net = roundedQuotient(gross * 1000, 1000 + fee.rate->perMille);
    fee.tax = gross - fee.net;
    m_order.fees.push_back(fee);
}

void OrderMaker::takeFees()
{
    if (m_order.role == Role::CashOnDeliveryFee)
        addFee(QStringLiteral("Nachnahmegebühr"), 400);
    else if (m_order.role == Role::NegativeFee)
        addFee(QStringLiteral("Treuerabatt"), -100);
    else if (m_order.role == Role::FeeOnly)
        addFee(QStringLiteral("Beratung"), 4760);
}

void OrderMaker::sumUp()
{
    for (const OrderLine& line : m_order.lines) {
        m_order.cartTax += line.tax;
        m_order.total += line.net + line.tax;
    }
    for (const FeeLine& fee : m_order.fees) {
        m_order.cartTax += fee.tax;
        m_order.total += fee.net + fee.tax;
    }
    for (const ShippingLine& shipping : m_order.shipping) {
        m_order.shippingNet += shipping.net;
        m_order.shippingTax += shipping.tax;
        m_order.total += shipping.net + shipping.tax;
    }
    m_order.taxes = taxLinesOf(m_order.lines, m_order.fees, m_order.shipping);
    for (TaxLine& line : m_order.taxes)
        line.id = m_nextItem++;
}

} // namespace demo_shop
