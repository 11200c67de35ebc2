#pragma once

#include "tools/demo_shop/order_plan.h"
#include "tools/demo_shop/shop_server.h"

namespace demo_shop {

/// A handler with an invented shop: tax rates, orders, refunds, products, invoices and their files.
/// Each answer is computed from the number of orders, the seed and the request; nothing is kept, so
/// a million orders need no more memory than ten. Equal shops answer with equal bytes.
class InventedShop
{
public:
    /// \param orders    how many completed and refunded orders the shop has; it holds some of other
    ///                  states besides
    /// \param firstDay  the day in Germany of the first order
    explicit InventedShop(qint64 orders, quint32 seed = 1, QDate firstDay = QDate(2026, 1, 5));

    /// Lets the first line of some orders name a product that is gone: its id is 0.
    void setDeletedProducts(bool on) { m_deletedProducts = on; }

    ShopAnswer operator()(const ShopRequest& request) const;

private:
    ShopAnswer taxes(const ShopRequest& request) const;
    ShopAnswer orders(const ShopRequest& request) const;
    ShopAnswer order(const ShopRequest& request, qint64 id) const;
    ShopAnswer refunds(const ShopRequest& request, qint64 id) const;
    ShopAnswer invoices(const ShopRequest& request, qint64 id) const;
    ShopAnswer invoiceFile(qint64 id) const;
    ShopAnswer product(const ShopRequest& request, qint64 id) const;

    /// The index of the order that a post belongs to, -1 if there is no such order.
    qint64 indexOfPost(qint64 id) const;
    /// The index of an order by its own id, -1 if there is no such order.
    qint64 indexOfOrder(qint64 id) const;

    OrderPlan m_plan;
    bool m_deletedProducts = false;
};

} // namespace demo_shop
