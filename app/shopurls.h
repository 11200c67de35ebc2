#pragma once

#include <QDate>
#include <QString>
#include <QUrl>

#include <optional>

/// Addresses of the shop's REST interface. \a baseUrl is the shop's address as the user typed it,
/// trimmed: no slash is cut off and no scheme added.

/// One page of tax rates, 100 a page, \a page from 1.
QUrl taxesUrl(const QString& baseUrl, int page);

/// Bounds of the order list; an absent one does not limit.
struct OrderWindow
{
    std::optional<QDate> after;
    std::optional<QDate> before;
};

/// One page of completed and refunded orders, 100 a page, \a page from 1, oldest first. Each date
/// means its local midnight; the day after \a OrderWindow::before is the bound, so that the end
/// date is included.
QUrl ordersUrl(const QString& baseUrl, int page, const OrderWindow& window);

/// The flags of one product.
QUrl productUrl(const QString& baseUrl, int productId);
/// The refunds of one order.
QUrl refundsUrl(const QString& baseUrl, int orderId);
/// The invoices of one order, an address of the Germanized extension.
QUrl invoicesUrl(const QString& baseUrl, int orderId);

/// True if a request to \a target may carry the credentials meant for \a origin: the same host,
/// with or without a leading "www.", and not from https (\a current) to http.
bool isRedirectAllowed(const QUrl& origin, const QUrl& current, const QUrl& target);
