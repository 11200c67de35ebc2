#include "tools/demo_shop/order_maker.h"

#include <algorithm>

namespace demo_shop {

namespace {

constexpr quint32 kRefundStream = 4;
// An order's refunds take their item ids from the upper half of those the order has.
constexpr qint64 kFirstItem = 32;
constexpr qint64 kItemsPerRefund = 16;
constexpr qint64 kDay = 86400;

// A line of a refund that gives `quantity` pieces back, with 0 pieces a line of zeros.
OrderLine refundLine(const OrderLine& line, int quantity)
{
    OrderLine back = line;
    back.refundedId = line.id;
    back.quantity = -quantity;
    const auto part = [&](qint64 amount) {
        return -roundedQuotient(amount * quantity, std::max(1, line.quantity));
    };
    back.net = part(line.net);
    back.tax = part(line.tax);
    back.netBefore = back.net;
    back.taxBefore = back.tax;
    back.price = quantity == 0 ? 0 : double(-back.net) / 100 / quantity;
    if (quantity == 0)
        back.rate = nullptr;
    return back;
}

ShippingLine refundShipping(const ShippingLine& line)
{
    ShippingLine back = line;
    back.refundedId = line.id;
    back.net = -line.net;
    back.tax = -line.tax;
    for (ShippingPart& part : back.parts) {
        part.net = -part.net;
        part.tax = -part.tax;
    }
    return back;
}

class RefundMaker
{
public:
    RefundMaker(const Order& order, quint32 seed)
        : m_order(order)
        , m_random(seed, kRefundStream, order.index)
    {
    }

    std::vector<Refund> make();

private:
    Refund begin(PostOffset post, const QString& reason);
    Refund whole(const QString& reason);
    Refund byLine(std::size_t at, int quantity, PostOffset post, const QString& reason);
    Refund byAmount(qint64 amount, bool withLines, PostOffset post, const QString& reason);
    Refund shippingOnly(const QString& reason);
    void finish(Refund& refund, std::optional<qint64> amount = std::nullopt);

    const Order& m_order;
    CounterRandom m_random;
    qint64 m_lastDate = 0;
};

Refund RefundMaker::begin(PostOffset post, const QString& reason)
{
    Refund refund;
    refund.id = m_order.postId(post);
    refund.reason = reason;
    const qint64 from = std::max({m_order.created, m_order.modified, m_lastDate});
    refund.created = from + m_random.between(1, 4) * kDay + m_random.below(3600);
    m_lastDate = refund.created;
    return refund;
}

void RefundMaker::finish(Refund& refund, std::optional<qint64> amount)
{
    const qint64 nth = refund.id - m_order.postId(OlderRefundPost);
    qint64 item = firstItemId(m_order.index) + kFirstItem + nth * kItemsPerRefund;
    qint64 sum = 0;
    for (OrderLine& line : refund.lines) {
        line.id = item++;
        sum += line.net + line.tax;
        refund.tax += line.tax;
    }
    for (ShippingLine& line : refund.shipping) {
        line.id = item++;
        sum += line.net + line.tax;
        refund.tax += line.tax;
    }
    refund.taxes = taxLinesOf(refund.lines, {}, refund.shipping);
    for (TaxLine& line : refund.taxes)
        line.id = item++;
    refund.amount = amount.value_or(-sum);
    refund.isFull = refund.amount == m_order.total;
}

Refund RefundMaker::whole(const QString& reason)
{
    Refund refund = begin(OlderRefundPost, reason);
    for (const OrderLine& line : m_order.lines)
        refund.lines.push_back(refundLine(line, line.quantity));
    for (const ShippingLine& line : m_order.shipping)
        refund.shipping.push_back(refundShipping(line));
    finish(refund);
    return refund;
}

Refund RefundMaker::byLine(std::size_t at, int quantity, PostOffset post, const QString& reason)
{
    Refund refund = begin(post, reason);
    refund.lines.push_back(refundLine(m_order.lines[at], quantity));
    finish(refund);
    return refund;
}

Refund RefundMaker::byAmount(qint64 amount, bool withLines, PostOffset post, const QString& reason)
{
    Refund refund = begin(post, reason);
    if (withLines) {
        for (const OrderLine& line : m_order.lines)
            refund.lines.push_back(refundLine(line, 0));
    }
    finish(refund, amount);
    return refund;
}

Refund RefundMaker::shippingOnly(const QString& reason)
{
    Refund refund = begin(OlderRefundPost, reason);
    for (const ShippingLine& line : m_order.shipping)
        refund.shipping.push_back(refundShipping(line));
    finish(refund);
    return refund;
}

std::vector<Refund> RefundMaker::make()
{
    // Orders without lines are not refunded, and have the role FeeOnly.
    const int pieces = m_order.lines.empty() ? 0 : m_order.lines.front().quantity;
    switch (m_order.role) {
    case Role::RefundFullByLines:
        return {whole(QStringLiteral("Widerruf; Ware \"unbenutzt\" zurück"))};
    case Role::RefundByStatusChange:
        return {whole(QStringLiteral("Order fully refunded."))};
    case Role::RefundFirstLine:
        return {byLine(0, pieces, OlderRefundPost, QStringLiteral("Beschädigt"))};
    case Role::RefundOnePiece:
        return {byLine(0, 1, OlderRefundPost, {})};
    case Role::RefundAmountWithoutLines:
        return {byAmount(m_random.between(1, 5) * qint64(100), false, OlderRefundPost,
                         QStringLiteral("Kulanz"))};
    case Role::RefundFullWithZeroLines:
        return {byAmount(m_order.total, true, OlderRefundPost, QStringLiteral("Kurs abgesagt"))};
    case Role::RefundPartWithZeroLines:
        return {byAmount(3000, true, OlderRefundPost, QStringLiteral("Teilbetrag"))};
    case Role::RefundLargeWithZeroLines:
        return {byAmount(1234567, true, OlderRefundPost, QStringLiteral("Nicht lieferbar"))};
    case Role::RefundShippingOnly:
        return {shippingOnly(QStringLiteral("Porto"))};
    case Role::RefundTwice: {
        const Refund older = byLine(0, pieces, OlderRefundPost, {});
        return {byAmount(150, false, NewerRefundPost, QStringLiteral("Nachlass")), older};
    }
    default:
        return {};
    }
}

} // namespace

std::vector<Refund> makeRefunds(const Order& order, quint32 seed)
{
    return RefundMaker(order, seed).make();
}

} // namespace demo_shop
