#include "tools/demo_shop/recorded_shop.h"

#include "tools/demo_shop/rest_answers.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace demo_shop {

namespace {

// Two writings of one request give one key. The separators of the parts cannot stand in a decoded
// text of the shop, so two requests never share a key.
QString keyOf(const QString& path, const QUrlQuery& query)
{
    QString key = path;
    const auto items = query.queryItems(QUrl::FullyDecoded);
    for (const auto& [name, value] : items)
        key += QChar(u'\x1f') + name + QChar(u'\x1e') + value;
    return key;
}

} // namespace

RecordedShop::RecordedShop(const QString& folder)
{
    QFile file(folder + "/index.json");
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
        return;
    }
    QJsonParseError parsing;
    const QJsonObject index = QJsonDocument::fromJson(file.readAll(), &parsing).object();
    if (parsing.error != QJsonParseError::NoError) {
        m_error = QStringLiteral("%1: %2").arg(file.fileName(), parsing.errorString());
        return;
    }
    m_shop = index.value(u"shop").toString().toUtf8();
    const QJsonArray entries = index.value(u"entries").toArray();
    if (entries.isEmpty())
        m_error = QStringLiteral("%1: no entries").arg(file.fileName());
    for (const QJsonValue entry : entries) {
        if (!addEntry(folder, entry.toObject()))
            return;
    }
}

bool RecordedShop::addEntry(const QString& folder, const QJsonObject& entry)
{
    if (entry.contains(u"credentials"))
        return true;
    QFile file(folder + u'/' + entry.value(u"file").toString());
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
        return false;
    }
    ShopAnswer answer;
    answer.status = entry.value(u"status").toInt(200);
    if (entry.contains(u"content_type"))
        answer.contentType = entry.value(u"content_type").toString().toLatin1();
    answer.body = file.readAll();
    if (entry.contains(u"x_wp_total"))
        answer.headers = {
            {"X-WP-Total", QByteArray::number(entry.value(u"x_wp_total").toInt())},
            {"X-WP-TotalPages", QByteArray::number(entry.value(u"x_wp_totalpages").toInt())},
        };
    const QString request = entry.value(u"request").toString();
    const QUrl url(request);
    m_requests << request;
    m_answers.insert(keyOf(url.path(QUrl::FullyDecoded), QUrlQuery(url)), answer);
    return true;
}

ShopAnswer RecordedShop::operator()(const ShopRequest& request) const
{
    const auto it = m_answers.constFind(keyOf(request.path, request.query));
    if (request.method != "GET" || it == m_answers.constEnd())
        return noRouteAnswer();
    ShopAnswer answer = *it;
    if (!m_shop.isEmpty() && !request.baseUrl.isEmpty()) {
        QByteArray here = request.baseUrl.toUtf8();
        QByteArray there = m_shop;
        answer.body.replace(there, here);
        // JSON may write a slash as "\/".
        answer.body.replace(there.replace("/", "\\/"), here.replace("/", "\\/"));
    }
    return answer;
}

} // namespace demo_shop
