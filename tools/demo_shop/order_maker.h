#pragma once

#include "tools/demo_shop/order_model.h"

namespace demo_shop {

/// Makes an order from its index alone.
/// \param withDeletedProducts  some orders' first line names a product that is gone
Order makeOrder(const OrderPlan& plan, qint64 index, bool withDeletedProducts);

/// The refunds of an order that is complete but for them, the newest first.
std::vector<Refund> makeRefunds(const Order& order, quint32 seed);

} // namespace demo_shop
