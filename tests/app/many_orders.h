#pragma once

#include "tests/app/sample_orders.h"

namespace sample {

/// Orders with the ids from 1 to \a count, one line each.
/// \param product  product of every line; 0 for lines without one, and thus without a request
inline QJsonArray manyOrders(int count, int product = 0)
{
    QJsonArray orders;
    for (int id = 1; id <= count; ++id)
        orders.append(order(id, {product > 0 ? productLine(id, product) : line(id)}));
    return orders;
}

} // namespace sample
