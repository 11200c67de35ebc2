#pragma once

#include "tools/demo_shop/catalogue.h"
#include "tools/demo_shop/order_plan.h"
#include "tools/demo_shop/people.h"

#include <QString>

#include <optional>
#include <vector>

namespace demo_shop {

// All amounts are in cents, all moments in seconds since 1970 UTC.

/// One line of an order or, with negative amounts, of a refund.
struct OrderLine
{
    qint64 id = 0;
    const Product* product = nullptr;
    bool isDeleted = false; ///< the product is gone: its id reads 0
    int quantity = 0;
    qint64 netBefore = 0; ///< before a coupon
    qint64 taxBefore = 0;
    qint64 net = 0;
    qint64 tax = 0;
    const TaxRate* rate = nullptr; ///< null where no tax is taken
    double price = 0; ///< net price of one piece, not rounded
    qint64 refundedId = 0; ///< in a refund: the order's line
};

/// The part of a shipping cost that bears one rate.
struct ShippingPart
{
    const TaxRate* rate = nullptr;
    qint64 net = 0;
    qint64 tax = 0;
};

/// One shipping line of an order or a refund.
struct ShippingLine
{
    qint64 id = 0;
    QString title;
    const char* method = "flat_rate";
    const char* instance = "1";
    qint64 net = 0;
    qint64 tax = 0;
    std::vector<ShippingPart> parts; ///< empty where no tax is taken
    bool isTaxable = true;
    qint64 refundedId = 0;
};

/// A fee, or with a negative amount a rebate.
struct FeeLine
{
    qint64 id = 0;
    QString name;
    qint64 net = 0;
    qint64 tax = 0;
    const TaxRate* rate = nullptr;
};

/// A coupon that was used.
struct CouponLine
{
    qint64 id = 0;
    QString code;
    int percent = 0;
    qint64 discount = 0;
    qint64 discountTax = 0;
};

/// What an order or refund bears of one rate.
struct TaxLine
{
    qint64 id = 0;
    const TaxRate* rate = nullptr;
    qint64 tax = 0;
    qint64 shippingTax = 0;
};

struct Refund
{
    qint64 id = 0;
    qint64 created = 0;
    qint64 amount = 0; ///< positive
    qint64 tax = 0; ///< negative, what the lines bear
    QString reason;
    bool isFull = false;
    std::vector<OrderLine> lines;
    std::vector<ShippingLine> shipping;
    std::vector<TaxLine> taxes;
};

struct Payment
{
    QString method;
    QString title;
    QString transaction;
    bool isPayPal = false;
    std::optional<qint64> fee; ///< PayPal's, where it is stored
};

/// Positions in the row of ids that an order has for itself and what belongs to it.
enum PostOffset {
    OrderPost = 0,
    OlderRefundPost = 1,
    NewerRefundPost = 2,
    InvoicePost = 3,
    CancellationPost = 4,
    PostsPerOrder = 5
};

/// Ids start above those of products and pages.
inline constexpr qint64 kFirstOrderId = 1000;

/// The first of the 64 ids that an order has for its lines and those of its refunds.
inline qint64 firstItemId(qint64 index)
{
    return 1 + index * 64;
}

struct Order
{
    qint64 index = 0;
    qint64 id = 0;
    Role role = Role::Plain;
    QString status;
    bool fromBackOffice = false;
    qint64 customerId = 0;
    qint64 created = 0;
    qint64 modified = 0;
    std::optional<qint64> paid;
    std::optional<qint64> completed;
    Person billing;
    Person shippingTo; ///< empty where nothing is sent
    QString note;
    Payment payment;
    std::vector<OrderLine> lines;
    std::vector<ShippingLine> shipping;
    std::vector<FeeLine> fees;
    std::vector<CouponLine> coupons;
    std::vector<TaxLine> taxes;
    std::vector<Refund> refunds; ///< the newest first
    bool hasInvoice = false;
    qint64 cartTax = 0;
    qint64 shippingNet = 0;
    qint64 shippingTax = 0;
    qint64 discount = 0;
    qint64 discountTax = 0;
    qint64 total = 0;

    qint64 postId(PostOffset offset) const { return id + offset; }
};

/// Quotient of two whole numbers, rounded to the nearest; halves go away from zero.
qint64 roundedQuotient(qint64 dividend, qint64 divisor);

/// Gathers what lines, fees and shipping bear of each rate, in the order in which the rates occur.
std::vector<TaxLine> taxLinesOf(const std::vector<OrderLine>& lines,
                                const std::vector<FeeLine>& fees,
                                const std::vector<ShippingLine>& shipping);

} // namespace demo_shop
