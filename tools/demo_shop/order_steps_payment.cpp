#include "tools/demo_shop/order_steps.h"

namespace demo_shop {

QString OrderMaker::token(int length, const char* letters)
{
    QString text;
    for (int i = 0; i < length; ++i)
        text += QLatin1Char(letters[m_random.below(int(qstrlen(letters)))]);
    return text;
}

void OrderMaker::payBy(const char* method, const QString& title)
{
    m_order.payment.method = QLatin1String(method);
    m_order.payment.title = title;
    if (m_order.payment.method == u"stripe")
        m_order.payment.transaction =
            QStringLiteral("ch_") + token(24, "0123456789abcdefghijklmnopqrstuvwxyz");
}

void OrderMaker::payByPayPal(const char* method, const QString& title)
{
    payBy(method, title);
    m_order.payment.isPayPal = true;
    m_order.payment.transaction = token(17, "0123456789ABCDEFGHJKLMNPQRSTUVWXYZ");
    m_order.payment.fee = roundedQuotient(m_order.total * 249, 10000) + 35;
}

void OrderMaker::takePayment()
{
    const QString card = QStringLiteral("Kreditkarte");
    const QString transfer = QStringLiteral("Überweisung im Voraus");
    const QString invoice = QStringLiteral("Rechnung");
    switch (m_order.role) {
    case Role::FreeShipping:
        payByPayPal("ppcp-gateway", QStringLiteral("PayPal"));
        m_order.payment.fee = 35;
        return;
    case Role::PayPalWithoutFee:
        payByPayPal("ppcp-gateway", QStringLiteral("PayPal"));
        m_order.payment.fee.reset();
        return;
    case Role::CardWithoutPayPalTitle:
        payByPayPal("ppcp-credit-card-gateway", card);
        return;
    case Role::CashOnDeliveryFee:
        payBy("cod", QStringLiteral("Nachnahme"));
        return;
    case Role::DirectDebit:
        payBy("direct-debit", QStringLiteral("SEPA-Lastschrift"));
        return;
    case Role::TwoShippingLines:
    case Role::NegativeFee:
    case Role::FeeOnly:
    case Role::AwkwardCompany:
        m_order.fromBackOffice = true;
        payBy("invoice", invoice);
        return;
    case Role::NeverPaid:
        payBy("invoice", invoice);
        return;
    case Role::Pending:
    case Role::Cancelled:
        payBy("bacs", transfer);
        return;
    default:
        break;
    }
    const int draw = m_random.below(100);
    if (draw < 45)
        payByPayPal("ppcp-gateway", QStringLiteral("PayPal"));
    else if (draw < 55)
        payByPayPal("ppcp-credit-card-gateway", QStringLiteral("Kreditkarte (über PayPal)"));
    else if (draw < 80)
        payBy("bacs", transfer);
    else if (draw < 90)
        payBy("stripe", card);
    else
        payBy("invoice", invoice);
}

void OrderMaker::takeDates()
{
    constexpr qint64 hour = 3600;
    const bool isSlow = m_order.payment.method == u"bacs";
    const qint64 paid = m_order.created
        + (isSlow ? m_random.between(20, 80) * hour : qint64(m_random.between(8, 60)));
    const qint64 completed = paid + m_random.between(1, 72) * hour;
    m_order.modified = m_order.created;

    const Role role = m_order.role;
    if (role != Role::NeverPaid && role != Role::Pending && role != Role::Cancelled)
        m_order.modified = *(m_order.paid = paid);
    if (role <= Role::Plain && role != Role::NeverCompleted)
        m_order.modified = *(m_order.completed = completed);
}

void OrderMaker::takePeople()
{
    const QString country = QLatin1String(m_country);
    if (m_random.percent(20))
        m_order.customerId = m_random.between(1, 99);
    m_order.billing =
        inventPerson(m_random, country, m_order.index, m_order.role == Role::AwkwardCompany);
    if (!m_order.shipping.empty())
        m_order.shippingTo = m_order.billing;
    if (m_order.role == Role::OtherShippingAddress)
        m_order.shippingTo = inventPerson(m_random, country, m_order.index, false);
    m_order.note = inventNote(m_random, m_order.role == Role::AwkwardNote);
}

} // namespace demo_shop
