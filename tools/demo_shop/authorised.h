#pragma once

#include "tools/demo_shop/shop_server.h"

namespace demo_shop {

/// Wraps a handler: only requests with Basic authorisation by this key and secret reach it. Others
/// get the 401 of a shop, which differs for an unknown key (or none) and a wrong secret.
ShopServer::Handler authorised(ShopServer::Handler handler, const QByteArray& key,
                               const QByteArray& secret);

} // namespace demo_shop
