#include "tools/demo_shop/order_maker.h"

#include "tools/demo_shop/order_steps.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace demo_shop {

namespace {

constexpr quint32 kOrderStream = 3;
constexpr int kDeletedEvery = 17;
constexpr int kDeletedAt = 3;

} // namespace

OrderMaker::OrderMaker(const OrderPlan& plan, qint64 index)
    : m_random(plan.seed(), kOrderStream, index)
    , m_nextItem(firstItemId(index))
{
    m_order.index = index;
    m_order.id = kFirstOrderId + index * PostsPerOrder;
    m_order.role = plan.roleOf(index);
    m_order.status = statusOf(m_order.role);
    m_order.created = plan.createdAt(index);
}

Order OrderMaker::make()
{
    takeCountry();
    takeLines();
    takeCoupon();
    takeShipping();
    takeFees();
    sumUp();
    takePayment();
    takeDates();
    takePeople();
    m_order.hasInvoice = m_order.completed && m_random.percent(85);
    return std::move(m_order);
}

qint64 roundedQuotient(qint64 dividend, qint64 divisor)
{
    const qint64 half = std::abs(divisor) / 2;
    return (dividend < 0 ? dividend - half : dividend + half) / divisor;
}

std::vector<TaxLine> taxLinesOf(const std::vector<OrderLine>& lines,
                                const std::vector<FeeLine>& fees,
                                const std::vector<ShippingLine>& shipping)
{
    std::vector<TaxLine> taxes;
    const auto of = [&taxes](const TaxRate* rate) -> TaxLine& {
        const auto it = std::find_if(taxes.begin(), taxes.end(),
                                     [rate](const TaxLine& line) { return line.rate == rate; });
        if (it != taxes.end())
            return *it;
        taxes.push_back({0, rate, 0, 0});
        return taxes.back();
    };
    for (const OrderLine& line : lines) {
        if (line.rate)
            of(line.rate).tax += line.tax;
    }
    for (const FeeLine& fee : fees) {
        if (fee.rate)
            of(fee.rate).tax += fee.tax;
    }
    for (const ShippingLine& line : shipping) {
        for (const ShippingPart& part : line.parts)
            of(part.rate).shippingTax += part.tax;
    }
    return taxes;
}

Order makeOrder(const OrderPlan& plan, qint64 index, bool withDeletedProducts)
{
    Order order = OrderMaker(plan, index).make();
    if (withDeletedProducts && index % kDeletedEvery == kDeletedAt && !order.lines.empty())
        order.lines.front().isDeleted = true;
    order.refunds = makeRefunds(order, plan.seed());
    if (!order.refunds.empty())
        order.modified = std::max(order.modified, order.refunds.front().created);
    return order;
}

} // namespace demo_shop
