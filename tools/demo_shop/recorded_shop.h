#pragma once

#include "tools/demo_shop/shop_server.h"

#include <QHash>

namespace demo_shop {

/// A handler that answers with recordings of a real shop. Its folder holds `index.json`, an object
/// with `shop` (the address in the recordings) and `entries` of `request` (path with query),
/// `file`, `status`, `content_type` and, for lists, `x_wp_total` and `x_wp_totalpages`. Entries
/// with `credentials` were recorded with wrong ones and are left out.
class RecordedShop
{
public:
    /// Reads the index and all files. isValid() tells whether this went well.
    explicit RecordedShop(const QString& folder);

    bool isValid() const { return m_error.isEmpty(); }

    /// Why the folder cannot be served, empty if it can.
    QString errorString() const { return m_error; }

    /// The requests that are answered, as the index has them.
    QStringList requests() const { return m_requests; }

    /// The recorded answer, with the shop's address replaced by that of the server; 404 with a
    /// shop's error for a request that was not recorded. Percent-encoding makes no difference.
    ShopAnswer operator()(const ShopRequest& request) const;

private:
    bool addEntry(const QString& folder, const class QJsonObject& entry);

    QString m_error;
    QStringList m_requests;
    QByteArray m_shop;
    QHash<QString, ShopAnswer> m_answers;
};

} // namespace demo_shop
