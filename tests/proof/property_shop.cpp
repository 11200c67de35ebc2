#include "tests/proof/property_shop.h"

#include "tests/proof/property_values.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <algorithm>
#include <array>

namespace property {

namespace {

constexpr int pageSize = 100;
constexpr int untaxed = -1;
constexpr int unknownRate = 77;

struct Rate
{
    int id;
    int perMille;
    const char* percent; ///< in an order, as a JSON number
};

// The last one is known to the shop's list alone.
constexpr Rate rates[] = {
    {1, 190, "19"}, {2, 70, "7"}, {3, 0, "0"}, {4, 55, "5.5"}, {5, 210, "21"}};
constexpr int ownRates = 4;

int perMilleOf(int rateId)
{
    for (const Rate& rate : rates)
        if (rate.id == rateId)
            return rate.perMille;
    return rateId == unknownRate ? 160 : 0;
}

qint64 taxOf(qint64 net, int rateId)
{
    const qint64 scaled = qAbs(net) * perMilleOf(rateId);
    const qint64 tax = (scaled + 500) / 1000;
    return net < 0 ? -tax : tax;
}

/// What an order or refund bears of taxes, and how its shipping is split.
struct Surcharges
{
    bool namesRates = true;
    bool flagged = false;
    qint64 gross = 0; ///< shipping with its tax
    QMap<int, qint64> parts; ///< rate id, or -1 -> cents
    QByteArray taxLines;
    QByteArray shippingLines;
};

QByteArray taxObject(int rateId, qint64 tax)
{
    return R"({"id":)" + QByteArray::number(rateId) + R"(,"total":)" + amount(tax).json + '}';
}

QByteArray shippingLine(qint64 net, qint64 tax, const QByteArrayList& taxes)
{
    return R"([{"id":1,"method_title":"Versand","total":)" + amount(net).json + R"(,"total_tax":)"
        + amount(tax).json + R"(,"taxes":[)" + taxes.join(',') + "]}]";
}

/// \param sign  -1 in a refund
Surcharges randomSurcharges(Random& random, int sign)
{
    Surcharges made;
    made.namesRates = random.percent(85);
    QByteArrayList lines;
    for (int i = 0; made.namesRates && i < ownRates; ++i)
        lines.append(R"({"rate_id":)" + QByteArray::number(rates[i].id) + R"(,"rate_percent":)"
                     + rates[i].percent + R"(,"tax_total":"0.00","shipping_tax_total":"0.00"})");
    made.taxLines = '[' + lines.join(',') + ']';
    made.shippingLines = "[]";

    const int kind = random.below(10);
    // Even, so that each rate's tax is a whole number of cents.
    const qint64 net = sign * qint64(200) * random.between(1, 40);
    if (kind < 4) {
        // no shipping
    } else if (kind < 5) {
        made.shippingLines = shippingLine(0, 0, {}); // free: splits cleanly
        made.parts = {{untaxed, 0}};
    } else if (kind < 6) {
        made.shippingLines = shippingLine(net, 0, {});
        made.parts = {{untaxed, net}};
        made.gross = net;
        made.flagged = true;
    } else if (kind < 7) {
        const qint64 tax = taxOf(net, unknownRate);
        made.shippingLines = shippingLine(net, tax, {taxObject(unknownRate, tax)});
        made.gross = net + tax;
        made.flagged = true;
    } else {
        const int id = random.oneOf(std::to_array({1, 2, 4}));
        const bool crooked = kind == 7;
        const bool two = kind == 9;
        const int other = id == 1 ? 2 : 1;
        const qint64 tax = taxOf(net, id) + (crooked ? sign * 9 : 0);
        const qint64 otherTax = two ? taxOf(net, other) : 0;
        QByteArrayList taxes {taxObject(id, tax)};
        if (two)
            taxes.append(taxObject(other, otherTax));
        const qint64 total = two ? 2 * net : net;
        made.shippingLines = shippingLine(total, tax + otherTax, taxes);
        made.gross = total + tax + otherTax;
        made.flagged = crooked || !made.namesRates;
        if (made.namesRates)
            made.parts = {{id, crooked ? made.gross : net}};
        if (made.namesRates && two)
            made.parts.insert(other, net);
    }
    return made;
}

QString rateText(int rateId, qint64 tax, bool orderNamesRates)
{
    if (rateId == untaxed)
        return QStringLiteral("0.00");
    for (int i = 0; orderNamesRates && i < ownRates; ++i)
        if (rates[i].id == rateId)
            return QString::fromLatin1(rates[i].percent);
    const QString listed = listedRate(rateId);
    if (!listed.isEmpty())
        return listed;
    return tax != 0 ? QStringLiteral("-1") : QStringLiteral("0.00");
}

struct LinePlan
{
    int id = 0;
    int rateId = untaxed;
    int productId = -1;
    qint64 net = 0;
    qint64 tax = 0;
    bool complete = false; ///< with every field that a line may have
};

/// Makes a line; takes the shipping part of its rate out of \a parts.
std::pair<Line, QByteArray> makeLine(Random& random, const LinePlan& plan, bool namesRates,
                                     QMap<int, qint64>& parts)
{
    ObjectText object;
    const auto own = [&object](const char* key, const Value& value) {
        object.add(QString::fromLatin1(key), value, QString::fromLatin1(key));
    };
    own("id", wholeNumber(plan.id));
    own("name", awkwardText(random));
    if (plan.productId >= 0)
        own("product_id", wholeNumber(plan.productId));
    if (plan.complete || random.percent(80))
        own("quantity", wholeNumber(random.between(0, 9) * (plan.net < 0 ? -1 : 1)));
    own("subtotal", amount(plan.net + random.between(0, 1) * 100));
    own("total", amount(plan.net));
    own("total_tax", amount(plan.tax));
    if (plan.complete || random.percent(80))
        own("bonus", awkwardNumber(random));
    if (!plan.complete && random.percent(10))
        object.add(QStringLiteral("only_later"), awkwardText(random), QString());
    object.add(QStringLiteral("sku"), awkwardText(random), QString());
    object.add(QStringLiteral("meta_data"), QByteArray("[]"));
    QByteArrayList taxes;
    if (plan.rateId != untaxed)
        taxes.append(taxObject(plan.rateId, plan.tax));
    if (plan.rateId != untaxed && random.percent(10))
        taxes.append(taxObject(1, 0)); // only the first one counts
    object.add(QStringLiteral("taxes"), '[' + taxes.join(',') + ']');

    Line line {plan.id, plan.productId, plan.net, plan.tax, object.cells()};
    line.cells.insert(QStringLiteral("tax_rate"), rateText(plan.rateId, plan.tax, namesRates));
    QString part;
    if (parts.contains(plan.rateId))
        part = shortestText(parts.take(plan.rateId));
    line.cells.insert(QStringLiteral("shipping_part"), part);
    return {line, object.json()};
}

qint64 randomNet(Random& random)
{
    if (random.percent(8))
        return 0;
    if (random.percent(4))
        return qint64(1'000'000) + random.below(50'000'000); // seven digits and more
    return random.between(1, random.percent(50) ? 2000 : 500000);
}

/// One order and its refunds.
class OrderMaker
{
public:
    OrderMaker(quint32 seed, int index, const ClockFilter& useClock)
        : m_random(seed, 1, index)
        , m_useClock(useClock)
        , m_index(index)
    {
        m_order.id = 1000 + index;
    }

    void make();

    Order m_order;
    QByteArray m_json;
    QByteArray m_refundsJson;

private:
    void addLines(ObjectText& object);
    void addFields(ObjectText& object);
    void addRefunds();
    QByteArray makeRefund(int number);
    QList<LinePlan> refundPlans(int shape, int nextId);
    std::optional<qint64> refundAmount(int shape, const QList<LinePlan>& plans, qint64 shipping);

    Random m_random;
    const ClockFilter& m_useClock;
    int m_index;
    QList<LinePlan> m_plans;
};

void OrderMaker::make()
{
    ObjectText object;
    addLines(object);
    addRefunds();
    addFields(object);
    m_order.cells = object.cells();
    m_json = object.json();
}

void OrderMaker::addLines(ObjectText& object)
{
    const Surcharges surcharges = randomSurcharges(m_random, 1);
    m_order.flagged = surcharges.flagged;
    object.add(QStringLiteral("tax_lines"), surcharges.taxLines);
    object.add(QStringLiteral("shipping_lines"), surcharges.shippingLines);
    // The first order names the columns of all.
    const int count = m_index == 0 ? 2 : m_random.below(10) == 0 ? 0 : m_random.between(1, 5);
    QMap<int, qint64> parts = surcharges.parts;
    QByteArrayList lines;
    for (int i = 0; i < count; ++i) {
        LinePlan plan;
        plan.id = m_index * 100 + i + 1;
        plan.rateId = m_random.oneOf(std::to_array({untaxed, 1, 1, 2, 3, 4, 5, unknownRate}));
        plan.complete = m_index == 0;
        if (plan.complete || m_random.percent(85))
            plan.productId = m_random.between(1, 40);
        plan.net = randomNet(m_random);
        plan.tax = taxOf(plan.net, plan.rateId);
        auto [line, json] = makeLine(m_random, plan, surcharges.namesRates, parts);
        m_plans.append(plan);
        m_order.lines.append(line);
        lines.append(json);
    }
    object.add(QStringLiteral("line_items"), '[' + lines.join(',') + ']');
    object.add(QStringLiteral("fee_lines"), QByteArray(R"([{"id":1,"total":"3.00"}])"));
    object.add(QStringLiteral("coupon_lines"), QByteArray(R"([{"id":1,"discount":"1.00"}])"));
}

void OrderMaker::addFields(ObjectText& object)
{
    const bool first = m_index == 0;
    const auto own = [&object](const QString& key, const Value& value) {
        object.add(key, value, key);
    };
    own(QStringLiteral("id"), wholeNumber(m_order.id));
    own(QStringLiteral("status"),
        plainText(m_random.percent(20) ? QStringLiteral(" Refunded ")
                                       : QStringLiteral("completed")));
    own(QStringLiteral("payment_method"), awkwardText(m_random));
    own(QStringLiteral("payment_method_title"), awkwardText(m_random));
    own(QStringLiteral("transaction_id"), awkwardText(m_random));
    own(QStringLiteral("Zusatz; ä'€"), awkwardText(m_random));
    own(QStringLiteral("number"), awkwardNumber(m_random));
    if (first || m_random.percent(70))
        own(QStringLiteral("not_always"), awkwardText(m_random));
    if (!first && m_random.percent(30))
        object.add(QStringLiteral("only_later"), awkwardText(m_random), QString());
    object.add(QStringLiteral("customer_note"), awkwardText(m_random), QString());
    object.add(QStringLiteral("refunds"),
               QByteArray(m_order.refunds.isEmpty() ? "[]" : R"([{"id":1}])"));
    for (const QString& key : {QStringLiteral("date_created"), QStringLiteral("date_paid"),
                               QStringLiteral("date_modified")}) {
        // What the shop's own clock says plays no part.
        object.add(key, awkwardText(m_random), QString());
        object.add(key + QStringLiteral("_gmt"), date(m_random, m_useClock), key);
    }
    ObjectText billing;
    for (const QString& key : {QStringLiteral("first_name"), QStringLiteral("last_name"),
                               QStringLiteral("email"), QStringLiteral("company")})
        billing.add(key, awkwardText(m_random), QStringLiteral("billing_") + key);
    billing.add(QStringLiteral("title"), awkwardText(m_random), QString());
    object.add(QStringLiteral("billing"), billing.json());

    QByteArray metaData = "[]";
    if (m_random.percent(40)) {
        m_order.fee = m_random.percent(10) ? 0 : m_random.between(1, 3000);
        metaData = R"([{"key":"_ppcp_paypal_fees","value":{"paypal_fee":{"value":)"
            + amount(*m_order.fee).json + "}}}]";
    }
    object.add(QStringLiteral("meta_data"), metaData);

    const Cells& nested = billing.cells();
    for (auto it = nested.constBegin(); it != nested.constEnd(); ++it)
        object.keep(it.key(), it.value());
}

void OrderMaker::addRefunds()
{
    QByteArrayList answers;
    const int count = m_random.percent(60) ? m_random.between(1, 3) : 0;
    for (int number = 0; number < count; ++number)
        answers.append(makeRefund(number));
    m_refundsJson = '[' + answers.join(',') + ']';
}

QList<LinePlan> OrderMaker::refundPlans(int shape, int nextId)
{
    QList<LinePlan> plans;
    if (shape == 0)
        return plans; // an amount alone
    const bool zero = shape >= 7;
    for (const LinePlan& line : std::as_const(m_plans)) {
        // All lines, some of them, or the first one alone.
        if (shape == 2 && m_random.percent(50))
            continue;
        if (shape == 3 && !plans.isEmpty())
            break;
        LinePlan back = line;
        back.id = nextId++;
        back.complete = false;
        const qint64 share = shape >= 5 ? m_random.between(1, 4) : 1;
        back.net = zero ? 0 : -line.net / share;
        back.tax = zero ? 0 : taxOf(back.net, line.rateId);
        plans.append(back);
    }
    return plans;
}

std::optional<qint64> OrderMaker::refundAmount(int shape, const QList<LinePlan>& plans,
                                               qint64 shipping)
{
    qint64 own = 0;
    for (const LinePlan& plan : plans)
        own -= plan.net + plan.tax;
    qint64 whole = 0;
    for (const LinePlan& plan : std::as_const(m_plans))
        whole += plan.net + plan.tax;
    switch (shape) {
    case 4:
        return own - shipping; // what a shop pays back that refunds the shipping too
    case 6:
        return own + m_random.between(1, 500);
    case 7:
    case 8:
        return whole;
    case 0:
    case 9:
    case 10:
        return randomNet(m_random);
    case 11:
        return std::nullopt;
    default:
        return own;
    }
}

QByteArray OrderMaker::makeRefund(int number)
{
    const int shape = m_random.below(12);
    const Surcharges surcharges = randomSurcharges(m_random, -1);
    Refund refund;
    refund.id = 500000 + m_index * 10 + number;
    refund.flagged = surcharges.flagged;
    const QList<LinePlan> plans = refundPlans(shape, m_index * 100 + 20 + number * 10);
    refund.amount = refundAmount(shape, plans, surcharges.gross);

    ObjectText object;
    object.add(QStringLiteral("id"), wholeNumber(refund.id).json);
    const Value created = date(m_random, m_useClock);
    refund.date = created.cell;
    object.add(QStringLiteral("date_created_gmt"), created.json);
    object.add(QStringLiteral("reason"), awkwardText(m_random).json);
    if (refund.amount)
        object.add(QStringLiteral("amount"), amount(*refund.amount).json);
    object.add(QStringLiteral("tax_lines"), surcharges.taxLines);
    object.add(QStringLiteral("shipping_lines"), surcharges.shippingLines);
    QMap<int, qint64> parts = surcharges.parts;
    QByteArrayList lines;
    for (const LinePlan& plan : plans) {
        auto [line, json] = makeLine(m_random, plan, surcharges.namesRates, parts);
        refund.lines.append(line);
        lines.append(json);
    }
    object.add(QStringLiteral("line_items"), '[' + lines.join(',') + ']');
    m_order.refunds.append(refund);
    return object.json();
}

QByteArray ratesJson()
{
    QByteArrayList list;
    for (const Rate& rate : rates)
        list.append(R"({"id":)" + QByteArray::number(rate.id) + R"(,"rate":)"
                    + quoted(listedRate(rate.id)) + '}');
    return '[' + list.join(',') + ']';
}

} // namespace

bool Order::hasRefundWithoutAmount() const
{
    return std::ranges::any_of(refunds, [](const Refund& refund) { return !refund.amount; });
}

QString listedRate(int rateId)
{
    for (const Rate& rate : rates)
        if (rate.id == rateId)
            return QStringLiteral("%1.%2000").arg(rate.perMille / 10).arg(rate.perMille % 10);
    return {};
}

QString shortestText(qint64 cents)
{
    QString text = amount(cents).cell;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

quint32 seed()
{
    bool given = false;
    const quint32 number = qEnvironmentVariable("LEDORA_SEED").toUInt(&given);
    return given ? number : QRandomGenerator::system()->generate();
}

Shop::Shop(quint32 seed, int count, const ClockFilter& useClock)
{
    for (int index = 0; index < count; ++index) {
        OrderMaker maker(seed, index, useClock);
        maker.make();
        m_orders.append(maker.m_order);
        m_bodies.append(maker.m_json);
        m_refunds.insert(maker.m_order.id, maker.m_refundsJson);
    }
}

demo_shop::ShopAnswer Shop::operator()(const demo_shop::ShopRequest& request) const
{
    demo_shop::ShopAnswer answer;
    answer.body = "[]";
    const QStringList parts = request.path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const int page = qMax(1, request.queryValue(QStringLiteral("page")).toInt());
    const int id = parts.value(4).toInt(); // .../orders/ID/refunds and the like
    if (request.path.endsWith(QLatin1String("/v3/taxes")) && page == 1) {
        answer.body = ratesJson();
    } else if (request.path.endsWith(QLatin1String("/v3/orders"))) {
        const QByteArrayList bodies = m_bodies.mid((page - 1) * pageSize, pageSize);
        answer.body = '[' + bodies.join(',') + ']';
    } else if (request.path.endsWith(QLatin1String("/refunds"))) {
        answer.body = m_refunds.value(id, "[]");
    } else if (request.path.contains(QLatin1String("/products/"))) {
        answer.body = QByteArray(R"({"virtual":)") + (isVirtual(id) ? "true" : "false")
            + R"(,"downloadable":)" + (isDownload(id) ? "true" : "false") + '}';
    } else if (request.path.endsWith(QLatin1String("/invoices")) && id % 10 == 0) {
        const QByteArray number = QByteArray::number(id);
        answer.body = R"([{"number":)" + number + R"(,"formatted_number":"RE-ä)" + number
            + R"(","date_created_gmt":"2026-05-04T23:30:00","_links":{"pdf":[{"href":")"
            + request.baseUrl.toUtf8() + "/file/" + number + R"("}]}}])";
    } else if (request.path.contains(QLatin1String("/file/"))) {
        answer.body = R"({"file":")" + QByteArray("%PDF-1.4 invoice").toBase64() + R"("})";
    }
    return answer;
}

} // namespace property
