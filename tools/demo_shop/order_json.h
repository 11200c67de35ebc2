#pragma once

#include "tools/demo_shop/json_writer.h"
#include "tools/demo_shop/order_model.h"

namespace demo_shop {

/// Writes an order with all fields of the shop and its extension Germanized.
void writeOrder(JsonWriter& json, const Order& order, const QString& baseUrl);

/// The list of an order's refunds as JSON, the newest first.
QByteArray refundsJson(const Order& order, const QString& baseUrl);

/// An element of a line's meta_data.
/// \param displayKey  how the shop shows the key, null for the key itself
void writeItemMeta(JsonWriter& json, qint64 id, const char* key, const QString& value,
                   const char* displayKey = nullptr);

/// Parts that orders and refunds have in common.
void writeLines(JsonWriter& json, const std::vector<OrderLine>& lines);
void writeTaxLines(JsonWriter& json, const std::vector<TaxLine>& lines);
void writeShippingLines(JsonWriter& json, const std::vector<ShippingLine>& lines,
                        const std::vector<OrderLine>& items);

} // namespace demo_shop
