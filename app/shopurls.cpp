#include "app/shopurls.h"

#include <QDateTime>
#include <QUrlQuery>

namespace {

const int iPageSize = 100;

QUrl pathUrl(const QString& baseUrl, const QString& path, const QUrlQuery& query = {})
{
    QUrl url(baseUrl + path);
    if (!query.isEmpty())
        url.setQuery(query);
    return url;
}

void addPage(QUrlQuery& query, int page)
{
    query.addQueryItem(QStringLiteral("page"), QString::number(page));
}

QString bareHost(const QUrl& url)
{
    const QString host = url.host().toLower();
    return host.startsWith(QLatin1String("www.")) ? host.mid(4) : host;
}

} // namespace

QUrl taxesUrl(const QString& baseUrl, int page)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("per_page"), QString::number(iPageSize));
    addPage(query, page);
    query.addQueryItem(QStringLiteral("orderby"), QStringLiteral("id"));
    query.addQueryItem(QStringLiteral("order"), QStringLiteral("asc"));
    return pathUrl(baseUrl, QStringLiteral("/wp-json/wc/v3/taxes"), query);
}

QUrl ordersUrl(const QString& baseUrl, int page, const OrderWindow& window)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("per_page"), QString::number(iPageSize));
    query.addQueryItem(QStringLiteral("status"), QStringLiteral("completed, refunded"));
    addPage(query, page);
    query.addQueryItem(QStringLiteral("orderby"), QStringLiteral("date"));
    query.addQueryItem(QStringLiteral("order"), QStringLiteral("asc"));
    query.addQueryItem(QStringLiteral("dates_are_gmt"), QStringLiteral("true"));
    if (window.after) {
        const QDateTime utc = QDateTime(*window.after, QTime(0, 0)).toUTC();
        query.addQueryItem(QStringLiteral("after"), utc.toString(Qt::ISODate));
    }
    if (window.before) {
        // The day is added to the UTC value: on the days of the clock change this differs by an
        // hour from adding it to the local date.
        const QDateTime utc = QDateTime(*window.before, QTime(0, 0)).toUTC().addDays(1);
        query.addQueryItem(QStringLiteral("before"), utc.toString(Qt::ISODate));
    }
    return pathUrl(baseUrl, QStringLiteral("/wp-json/wc/v3/orders"), query);
}

QUrl productUrl(const QString& baseUrl, int productId)
{
    return pathUrl(baseUrl, QStringLiteral("/wp-json/wc/v3/products/%1").arg(productId));
}

QUrl refundsUrl(const QString& baseUrl, int orderId)
{
    return pathUrl(baseUrl, QStringLiteral("/wp-json/wc/v3/orders/%1/refunds").arg(orderId));
}

QUrl invoicesUrl(const QString& baseUrl, int orderId)
{
    return pathUrl(baseUrl, QStringLiteral("/wp-json/wc/v3/orders/%1/invoices").arg(orderId));
}

bool isRedirectAllowed(const QUrl& origin, const QUrl& current, const QUrl& target)
{
    if (bareHost(origin) != bareHost(target))
        return false;
    return current.scheme() != QLatin1String("https") || target.scheme() == QLatin1String("https");
}
