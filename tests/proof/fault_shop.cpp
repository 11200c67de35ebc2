#include "tests/proof/fault_shop.h"

#include "tests/app/many_orders.h"

#include <QMap>

namespace proof {

namespace {

constexpr int kOrders = 103;
constexpr int kPage = 100;
constexpr char kBase[] = "@BASE@";

QByteArray ordersPage(int page)
{
    QJsonArray all = sample::manyOrders(kOrders);
    all[1] = sample::order(2, {sample::productLine(2, 11), sample::line(3)},
                           sample::fee(QStringLiteral("0.69")));
    all[100] = sample::order(101, {sample::line(101)},
                             {{QStringLiteral("status"), QStringLiteral("refunded")}});
    QJsonArray part;
    for (int i = (page - 1) * kPage; i < page * kPage && i < kOrders; ++i)
        part.append(all.at(i));
    return sample::json(part);
}

QByteArray refunds()
{
    return sample::json({sample::refund(
        901, {sample::line(101, {{QStringLiteral("total"), QStringLiteral("-10.00")}})},
        {{QStringLiteral("amount"), QStringLiteral("10.00")}})});
}

QByteArray invoices(int id)
{
    const QString number = QString::number(id);
    const QJsonObject link {{QStringLiteral("href"), QLatin1String(kBase) + "/file/" + number}};
    const QJsonObject links {{QStringLiteral("pdf"), QJsonArray {link}}};
    return sample::json(
        QJsonArray {QJsonObject {{QStringLiteral("number"), number},
                                 {QStringLiteral("formatted_number"), "RE-" + number},
                                 {QStringLiteral("_links"), links}}});
}

QByteArray invoiceFile(int id)
{
    const QByteArray pdf = "%PDF-1.4 " + QByteArray::number(id) + QByteArray(2000, 'x');
    return R"({"file":")" + pdf.toBase64() + R"("})";
}

QMap<QByteArray, QByteArray> answers()
{
    QMap<QByteArray, QByteArray> map {
        {"/taxes?per_page=100&page=1&", R"([{"id":3,"rate":"19"}])"},
        {"refunded&page=1&", ordersPage(1)},
        {"refunded&page=2&", ordersPage(2)},
        {"/orders/101/refunds", refunds()},
        {"/products/11", R"({"virtual":false,"downloadable":true})"},
    };
    for (const int id : {3, 103}) {
        const QByteArray number = QByteArray::number(id);
        map.insert("/orders/" + number + "/invoices", invoices(id));
        map.insert("/file/" + number, invoiceFile(id));
    }
    return map;
}

} // namespace

QByteArray shopAnswer(const QByteArray& target, const QByteArray& base)
{
    static const QMap<QByteArray, QByteArray> known = answers();
    for (auto it = known.cbegin(); it != known.cend(); ++it) {
        if (target.contains(it.key()))
            return QByteArray(it.value()).replace(kBase, base);
    }
    return "[]";
}

} // namespace proof
