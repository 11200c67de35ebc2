#pragma once

#include <QDate>
#include <QStringList>

#include <array>

namespace demo_shop {

/// What is special about an order. Each block of orders holds every role that is not Plain once.
enum class Role {
    RefundFullByLines,
    RefundFirstLine,
    RefundAmountWithoutLines,
    RefundFullWithZeroLines,
    RefundPartWithZeroLines,
    RefundLargeWithZeroLines,
    RefundTwice,
    RefundShippingOnly,
    RefundByStatusChange,
    RefundOnePiece,
    Austria,
    France,
    Switzerland,
    VirtualProduct,
    Download,
    MixedRates,
    ZeroRate,
    FreeShipping,
    PickUp,
    TwoShippingLines,
    UntaxedShipping,
    Coupon,
    CashOnDeliveryFee,
    NegativeFee,
    FeeOnly,
    FreeItem,
    PayPalWithoutFee,
    CardWithoutPayPalTitle,
    DirectDebit,
    SixLines,
    Variations,
    OtherShippingAddress,
    AwkwardCompany,
    AwkwardNote,
    NeverPaid,
    NeverCompleted,
    Plain,
    // The roles from here on are those of orders that are neither completed nor refunded.
    Processing,
    Pending,
    Cancelled,
};

/// An order's status as the shop names it: "completed", "refunded", ...
QString statusOf(Role role);

/// Which orders a shop has, when they were made and which role each plays. Everything is computed
/// from an order's index, which counts all orders from 0 in the order of their dates.
class OrderPlan
{
public:
    /// \param listed    number of orders that are completed or refunded; for each 50 of them there
    ///                  are three of other states
    /// \param firstDay  the day in Germany on which the first order is made
    OrderPlan(qint64 listed, quint32 seed, QDate firstDay);

    qint64 orderCount() const { return m_total; }

    quint32 seed() const { return m_seed; }

    Role roleOf(qint64 index) const;
    /// The moment of the order, in seconds since 1970 UTC. Greater than that of the order before.
    qint64 createdAt(qint64 index) const;

    /// Number of orders made before a moment, which is one past the index of the last of them.
    qint64 countBefore(qint64 utc) const;
    /// Number of orders of the given states among those with an index below `index`.
    qint64 countUpTo(qint64 index, const QStringList& states) const;
    /// Index of an order by its place, from 0, among those of the given states.
    qint64 indexOf(qint64 place, const QStringList& states) const;

private:
    static constexpr int kListedPerBlock = 50;
    static constexpr int kBlock = kListedPerBlock + 3;
    using Block = std::array<Role, kBlock>;

    Block block(qint64 number) const;

    quint32 m_seed;
    qint64 m_start;
    qint64 m_total = 0;
    qint64 m_step = 0;
};

} // namespace demo_shop
