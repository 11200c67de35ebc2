#include "tools/demo_shop/invented_shop.h"

#include "tools/demo_shop/catalogue.h"
#include "tools/demo_shop/invoices.h"
#include "tools/demo_shop/order_json.h"
#include "tools/demo_shop/order_maker.h"
#include "tools/demo_shop/rest_answers.h"
#include "tools/demo_shop/shop_time.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace demo_shop {

namespace {

const QStringList kStates {QStringLiteral("completed"), QStringLiteral("refunded"),
                           QStringLiteral("processing"), QStringLiteral("pending"),
                           QStringLiteral("cancelled")};
const QStringList kUnusedStates {QStringLiteral("on-hold"), QStringLiteral("failed"),
                                 QStringLiteral("trash")};

// A shop splits its list parameters at commas and blanks. Empty: some value is no state.
QStringList statesOf(const QString& text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,]+"));
    const QStringList asked = text.split(separators, Qt::SkipEmptyParts);
    if (asked.isEmpty() || asked.contains(QStringLiteral("any")))
        return kStates;
    const bool isKnown = std::all_of(asked.begin(), asked.end(), [](const QString& state) {
        return kStates.contains(state) || kUnusedStates.contains(state);
    });
    return isKnown ? asked : QStringList();
}

// The part of the orders between `after` and `before`, both exclusive, as indexes.
struct Window
{
    qint64 begin = 0;
    qint64 end = 0;
    QString wrongParameter;
};

Window windowOf(const ShopRequest& request, const OrderPlan& plan)
{
    Window window {0, plan.orderCount(), {}};
    const bool isGmt = request.queryValue(QStringLiteral("dates_are_gmt")) == u"true";
    const QString afterKey = QStringLiteral("after");
    const QString beforeKey = QStringLiteral("before");
    const QString after = request.queryValue(afterKey);
    const QString before = request.queryValue(beforeKey);
    if (!after.isEmpty()) {
        const auto moment = momentOf(after, isGmt);
        if (!moment)
            return {0, 0, afterKey};
        // Whole seconds: later than a moment is not before the next one.
        window.begin = plan.countBefore(*moment + 1);
    }
    if (!before.isEmpty()) {
        const auto moment = momentOf(before, isGmt);
        if (!moment)
            return {0, 0, beforeKey};
        window.end = plan.countBefore(*moment);
    }
    window.end = std::max(window.begin, window.end);
    return window;
}

ShopAnswer jsonAnswer(QByteArray body)
{
    ShopAnswer answer;
    answer.body = std::move(body);
    return answer;
}

ShopAnswer unknownOrder()
{
    return errorAnswer(404, "woocommerce_rest_shop_order_invalid_id",
                       QStringLiteral("Invalid ID."));
}

} // namespace

InventedShop::InventedShop(qint64 orders, quint32 seed, QDate firstDay)
    : m_plan(orders, seed, firstDay)
{
}

ShopAnswer InventedShop::operator()(const ShopRequest& request) const
{
    static const QRegularExpression route(
        QStringLiteral("^/wp-json/wc/v3/(taxes|orders|products|invoices)(?:/(\\d+)(?:/"
                       "(refunds|invoices|pdf))?)?$"));
    const QRegularExpressionMatch match = route.match(request.path);
    if (request.method != "GET" || !match.hasMatch())
        return noRouteAnswer();

    const QString list = match.captured(1);
    const QString part = match.captured(3);
    const bool hasId = match.hasCaptured(2);
    const qint64 id = match.captured(2).toLongLong();
    if (list == u"taxes" && !hasId)
        return taxes(request);
    if (list == u"orders" && !hasId)
        return orders(request);
    if (list == u"orders" && part.isEmpty())
        return order(request, id);
    if (list == u"orders" && part == u"refunds")
        return refunds(request, id);
    if (list == u"orders" && part == u"invoices")
        return invoices(request, id);
    if (list == u"products" && hasId && part.isEmpty())
        return product(request, id);
    if (list == u"invoices" && part == u"pdf")
        return invoiceFile(id);
    return noRouteAnswer();
}

ShopAnswer InventedShop::taxes(const ShopRequest& request) const
{
    const auto page = pageOf(request);
    if (const auto* wrong = std::get_if<ShopAnswer>(&page))
        return *wrong;
    const auto& [number, perPage] = std::get<Page>(page);
    return listAnswer(taxRatesJson(request.baseUrl, std::get<Page>(page).first(), perPage),
                      qint64(taxRates().size()), perPage);
}

ShopAnswer InventedShop::orders(const ShopRequest& request) const
{
    const auto asked = pageOf(request);
    if (const auto* wrong = std::get_if<ShopAnswer>(&asked))
        return *wrong;
    const Page page = std::get<Page>(asked);
    const QStringList states = statesOf(request.queryValue(QStringLiteral("status")));
    if (states.isEmpty())
        return badParameterAnswer(QStringLiteral("status"));
    const Window window = windowOf(request, m_plan);
    if (!window.wrongParameter.isEmpty())
        return badParameterAnswer(window.wrongParameter);

    // A shop lists the newest first unless told otherwise.
    const bool isAscending = request.queryValue(QStringLiteral("order")) == u"asc";
    const qint64 begin = m_plan.countUpTo(window.begin, states);
    const qint64 end = m_plan.countUpTo(window.end, states);
    const qint64 total = end - begin;
    const qint64 last = std::min(total, page.first() + page.perPage);
    JsonWriter json;
    json.array();
    for (qint64 i = page.first(); i < last; ++i) {
        const qint64 place = isAscending ? begin + i : end - 1 - i;
        writeOrder(json, makeOrder(m_plan, m_plan.indexOf(place, states), m_deletedProducts),
                   request.baseUrl);
    }
    json.end();
    return listAnswer(json.bytes(), total, page.perPage);
}

ShopAnswer InventedShop::order(const ShopRequest& request, qint64 id) const
{
    const qint64 index = indexOfOrder(id);
    if (index < 0)
        return unknownOrder();
    JsonWriter json;
    writeOrder(json, makeOrder(m_plan, index, m_deletedProducts), request.baseUrl);
    return jsonAnswer(json.bytes());
}

ShopAnswer InventedShop::refunds(const ShopRequest& request, qint64 id) const
{
    const qint64 index = indexOfOrder(id);
    if (index < 0)
        return errorAnswer(404, "woocommerce_rest_invalid_order_id",
                           QStringLiteral("Invalid order ID."));
    const Order order = makeOrder(m_plan, index, m_deletedProducts);
    return listAnswer(refundsJson(order, request.baseUrl), qint64(order.refunds.size()), 10);
}

ShopAnswer InventedShop::invoices(const ShopRequest& request, qint64 id) const
{
    const qint64 index = indexOfOrder(id);
    if (index < 0)
        return unknownOrder();
    const Order order = makeOrder(m_plan, index, m_deletedProducts);
    return jsonAnswer(invoicesJson(invoicesOf(order), request.baseUrl));
}

ShopAnswer InventedShop::invoiceFile(qint64 id) const
{
    const qint64 index = indexOfPost(id);
    if (index >= 0) {
        const auto invoices = invoicesOf(makeOrder(m_plan, index, m_deletedProducts));
        for (const Invoice& invoice : invoices) {
            if (invoice.id == id)
                return jsonAnswer(invoiceFileJson(invoice));
        }
    }
    return errorAnswer(404, "woocommerce_rest_invoice_invalid_id", QStringLiteral("Invalid ID."));
}

ShopAnswer InventedShop::product(const ShopRequest& request, qint64 id) const
{
    const bool isPossible = id <= std::numeric_limits<int>::max();
    const Product* product = isPossible ? productById(int(id)) : nullptr;
    if (!product)
        return errorAnswer(404, "woocommerce_rest_product_invalid_id",
                           QStringLiteral("Invalid ID."));
    return jsonAnswer(productJson(*product, request.baseUrl));
}

qint64 InventedShop::indexOfPost(qint64 id) const
{
    const qint64 index = id < kFirstOrderId ? -1 : (id - kFirstOrderId) / PostsPerOrder;
    return index < m_plan.orderCount() ? index : -1;
}

qint64 InventedShop::indexOfOrder(qint64 id) const
{
    return (id - kFirstOrderId) % PostsPerOrder == OrderPost ? indexOfPost(id) : -1;
}

} // namespace demo_shop
