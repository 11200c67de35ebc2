#pragma once

#include "tools/demo_shop/shop_server.h"

#include <variant>

namespace demo_shop {

/// An answer in the shape of a shop's errors: {"code":...,"message":...,"data":{"status":...}}.
ShopAnswer errorAnswer(int status, const char* code, const QString& message);

/// The answer to a path or method that the shop does not know.
ShopAnswer noRouteAnswer();

/// The answer to a list parameter with an impossible value (400).
ShopAnswer badParameterAnswer(const QString& name);

/// A list's answer with the headers X-WP-Total and X-WP-TotalPages.
ShopAnswer listAnswer(QByteArray body, qint64 total, int perPage);

/// Which part of a list is asked for.
struct Page
{
    int number = 1;
    int perPage = 10;

    qint64 first() const { return qint64(number - 1) * perPage; }
};

/// Reads `page` and `per_page`, 1 to 100; without them the first 10 are meant.
std::variant<Page, ShopAnswer> pageOf(const ShopRequest& request);

} // namespace demo_shop
