#pragma once

#include "tools/demo_shop/shop_server.h"

#include <QStringList>

#include <optional>

namespace demo_shop {

/// Which requests a fault befalls.
struct PlannedFault
{
    int number = 1;
    bool andLater = false; ///< all requests from `number` on
    Fault fault;
};

/// Reads "N:kind", "N+:kind" or, for the kind "status", "N:status:CODE".
/// \return  nothing if the text is none of these or names an unknown kind
std::optional<PlannedFault> plannedFault(const QString& text);

/// The names of all kinds of faults, in the order of Fault::Kind.
QStringList faultNames();

/// A plan by requests' numbers. Of several that fit, the last one given holds.
ShopServer::FaultPlan faultPlan(const QList<PlannedFault>& faults);

} // namespace demo_shop
