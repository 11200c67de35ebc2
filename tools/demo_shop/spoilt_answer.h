#pragma once

#include "tools/demo_shop/shop_server.h"

namespace demo_shop {

/// The answer as a fault of its content leaves it: Status, CutJson, Html, EmptyBody, LeadingNotice
/// and ByteOrderMark. Any other kind leaves it as it is.
ShopAnswer spoilt(ShopAnswer answer, const Fault& fault);

/// True for the kinds that need the connection itself to be interfered with.
bool isOnTheWire(Fault::Kind kind);

} // namespace demo_shop
