#include "tests/tools/shop_questions.h"

#include <QTest>

using namespace shop_questions;

class tst_invented_invoices : public QObject
{
    Q_OBJECT

    InventedShop m_shop {500, 7};
    QList<QJsonObject> m_orders;

private slots:
    void initTestCase();
    void completedOrdersMostlyHaveInvoices();
    void refundedOrdersHaveACancellation();
    void invoiceFileIsAPdfOfOnePage();
    void pdfEscapesParentheses();
};

void tst_invented_invoices::initTestCase()
{
    m_orders = ordersOf(m_shop, kListed);
    QCOMPARE(m_orders.size(), 500);
}

void tst_invented_invoices::completedOrdersMostlyHaveInvoices()
{
    int with = 0;
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray invoices = invoicesOf(m_shop, order);
        with += invoices.isEmpty() ? 0 : 1;
        for (const QJsonValue invoice : invoices) {
            QCOMPARE(invoice["order_number"].toString(), QString::number(order["id"].toInteger()));
            QCOMPARE(invoice["total"], order["total"]);
            QVERIFY(!invoice["_links"]["pdf"][0]["href"].toString().isEmpty());
        }
    }
    QVERIFY(with > 350);
    QVERIFY(with < 500);
}

void tst_invented_invoices::refundedOrdersHaveACancellation()
{
    int cancelled = 0;
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray invoices = invoicesOf(m_shop, order);
        if (invoices.isEmpty())
            continue;
        QCOMPARE(invoices.size(), order["status"].toString() == u"refunded" ? 2 : 1);
        QCOMPARE(invoices[0]["type"].toString(), "invoice");
        if (invoices.size() == 2) {
            QCOMPARE(invoices[1]["type"].toString(), "invoice_cancellation");
            QVERIFY(invoices[0]["formatted_number"] != invoices[1]["formatted_number"]);
            ++cancelled;
        }
    }
    QVERIFY(cancelled > 0);
}

void tst_invented_invoices::invoiceFileIsAPdfOfOnePage()
{
    QJsonValue invoice;
    QString amount;
    for (const QJsonObject& order : std::as_const(m_orders)) {
        const QJsonArray invoices = invoicesOf(m_shop, order);
        if (!invoices.isEmpty()) {
            invoice = invoices.first();
            amount = order["total"].toString().replace(u'.', u',');
            break;
        }
    }
    const QUrl href(invoice["_links"]["pdf"][0]["href"].toString());
    QCOMPARE(href.port(), 1);
    const QJsonObject file = parsed(ask(m_shop, href.path())).object();
    const QString number = invoice["formatted_number"].toString();
    QCOMPARE(file["filename"].toString(), number + ".pdf");

    const QByteArray pdf = QByteArray::fromBase64(file["file"].toString().toLatin1());
    QVERIFY(pdf.startsWith("%PDF-1.4\n"));
    QVERIFY(pdf.endsWith("%%EOF\n"));
    QVERIFY(pdf.contains("(Rechnung " + number.toLatin1() + ')'));
    QVERIFY(pdf.contains("(Gesamtbetrag " + amount.toLatin1() + " EUR)"));
    QCOMPARE(pdf.count(QByteArray("/Type /Page ")), 1);

    // Each entry of the cross-reference table points at the object of its number.
    const qsizetype startxref = pdf.lastIndexOf("startxref\n");
    const qsizetype xref = pdf.mid(startxref + 10).split('\n').first().toLongLong();
    QVERIFY(pdf.mid(xref).startsWith("xref\n0 6\n"));
    for (int i = 1; i < 6; ++i) {
        const qsizetype entry = xref + qsizetype(qstrlen("xref\n0 6\n")) + qsizetype(i) * 20;
        const qsizetype at = pdf.mid(entry, 10).toLongLong();
        QVERIFY(pdf.mid(at).startsWith(QByteArray::number(i) + " 0 obj\n"));
    }
    const qsizetype stream = pdf.indexOf("stream\n") + 7;
    const qsizetype length = pdf.mid(pdf.indexOf("/Length ") + 8).split(' ').first().toLongLong();
    QVERIFY(pdf.mid(stream + length).startsWith("\nendstream"));
}

void tst_invented_invoices::pdfEscapesParentheses()
{
    const InventedShop shop(60, 2);
    const auto orders = ordersOf(shop, kListed);
    for (const QJsonObject& order : orders) {
        const QJsonArray invoices = invoicesOf(shop, order);
        if (invoices.isEmpty())
            continue;
        const QUrl href(invoices[0]["_links"]["pdf"][0]["href"].toString());
        const QByteArray pdf =
            QByteArray::fromBase64(parsed(ask(shop, href.path()))["file"].toString().toLatin1());
        QVERIFY(pdf.contains("\\(ung\xFCltig\\)"));
        return;
    }
    QFAIL("no invoice");
}

QTEST_GUILESS_MAIN(tst_invented_invoices)
#include "tst_invented_invoices.moc"
