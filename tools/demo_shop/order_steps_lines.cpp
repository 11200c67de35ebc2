#include "tools/demo_shop/order_steps.h"

#include <cmath>

namespace demo_shop {

namespace {

const std::vector<int> kStandardParcels {14, 15, 16, 21, 23};
const std::vector<int> kReducedParcels {17, 18, 29};
const std::vector<int> kParcels {14, 15, 16, 17, 18, 21, 23, 29};

} // namespace

void OrderMaker::takeCountry()
{
    switch (m_order.role) {
    case Role::Austria:
        m_country = "AT";
        break;
    case Role::France:
        m_country = "FR";
        break;
    case Role::Switzerland:
        m_country = "CH";
        break;
    case Role::Plain:
        if (m_random.percent(10))
            m_country = "AT";
        break;
    default:
        break;
    }
}

void OrderMaker::addLine(int productId, int quantity)
{
    OrderLine line;
    line.id = m_nextItem++;
    line.product = productById(productId);
    line.quantity = quantity;
    line.rate = rateFor(m_country, line.product->taxClass);

    // Prices include the tax of Germany; other countries pay the net price and their own tax.
    const TaxRate* home = rateFor("DE", line.product->taxClass);
    const qint64 gross = line.product->gross * quantity;
    line.net = roundedQuotient(gross * 1000, 1000 + home->perMille);
    if (line.rate == home)
        line.tax = gross - line.net;
    else if (line.rate)
        line.tax = roundedQuotient(line.net * line.rate->perMille, 1000);
    line.netBefore = line.net;
    line.taxBefore = line.tax;

    const double net = double(gross) * 10 / (1000 + home->perMille);
    line.price = std::round(net * 1e6) / 1e6 / quantity;
    m_order.lines.push_back(line);
}

void OrderMaker::addRandomLines(const std::vector<int>& choice, int count, int maxQuantity)
{
    std::vector<int> left = choice;
    for (int i = 0; i < count && !left.empty(); ++i) {
        const auto at = left.begin() + m_random.below(int(left.size()));
        addLine(*at, m_random.between(1, maxQuantity));
        left.erase(at);
    }
}

void OrderMaker::takeLines()
{
    switch (m_order.role) {
    case Role::FeeOnly:
        break;
    case Role::Austria:
    case Role::France:
    case Role::MixedRates:
        addRandomLines(kStandardParcels, m_random.between(1, 2), 3);
        addRandomLines(kReducedParcels, 1, 2);
        break;
    case Role::RefundFirstLine:
    case Role::RefundTwice:
        addRandomLines(kParcels, m_random.between(2, 3), 2);
        break;
    case Role::SixLines:
        addRandomLines(kParcels, 6, 4);
        break;
    case Role::RefundFullWithZeroLines:
        addLine(19, 1);
        if (m_random.percent(60))
            addLine(20, m_random.between(1, 2));
        break;
    default:
        takeRoleLines();
        break;
    }
}

void OrderMaker::takeRoleLines()
{
    switch (m_order.role) {
    case Role::RefundPartWithZeroLines:
        addLine(19, 2);
        addLine(20, 1);
        break;
    case Role::RefundLargeWithZeroLines:
        addLine(28, 10);
        break;
    case Role::RefundOnePiece:
        addLine(m_random.oneOf(kParcels), 3);
        break;
    case Role::VirtualProduct:
        addLine(19, m_random.between(1, 2));
        break;
    case Role::Download:
        addLine(20, 1);
        break;
    case Role::ZeroRate:
        addLine(27, m_random.between(1, 4));
        break;
    case Role::Coupon:
        addLine(21, 20);
        break;
    case Role::FreeItem:
        addRandomLines(kStandardParcels, 1, 2);
        addLine(22, 2);
        break;
    case Role::Variations:
        addLine(25, 2);
        addLine(26, 1);
        break;
    default:
        addRandomLines(kParcels, 1 + m_random.below(3) * m_random.below(2), 3);
        break;
    }
}

void OrderMaker::takeCoupon()
{
    if (m_order.role != Role::Coupon)
        return;
    constexpr int percent = 10;
    OrderLine& line = m_order.lines.front();
    const qint64 gross = line.net + line.tax;
    const qint64 reduced = roundedQuotient(gross * (100 - percent), 100);
    line.net = roundedQuotient(reduced * 1000, 1000 + line.rate->perMille);
    line.tax = reduced - line.net;

    CouponLine coupon;
    coupon.id = m_nextItem++;
    coupon.code = QStringLiteral("frühling10");
    coupon.percent = percent;
    coupon.discount = line.netBefore - line.net;
    coupon.discountTax = line.taxBefore - line.tax;
    m_order.coupons.push_back(coupon);
    m_order.discount = coupon.discount;
    m_order.discountTax = coupon.discountTax;
}

} // namespace demo_shop
