#include "app/mainwindow.h"

#include "accounting/order_taxes.h"
#include "accounting/shopdates.h"
#include "app/debuglog.h"
#include "app/refundrepair.h"
#include "app/shopurls.h"

#include <QDebug>
#include <QJsonObject>

void MainWindow::addRefunds(OrderWork& work)
{
    QJsonDocument answer;
    executeRequest(refundsUrl(csBaseUrl, work.scan.id), &answer, iRequestRetries);
    const QJsonArray refunds = answer.array();
    int cursor = 0;
    for (const QJsonValue& element : refunds) {
        const QJsonObject refund = element.toObject();
        OrderTaxMap rates;
        ShippingMap shipping;
        RefundLines place;
        place.before = work.lineList.size();
        GetLocalTaxRates(refund, rates);
        GetShippingTax(refund, rates, shipping, place.errors);
        place.added = GetLineItems(refund, rates, shipping, true, place.errors, work.lineList);
        place.date = ConvertUTCDateToLocalDate(refund, QStringLiteral("date_created"));
        if (isDebugLogged())
            qDebug() << "has_refunds:" << work.scan.hasRefunds << "refund_cnt:" << refunds.size()
                     << "line_items.size:" << work.lineList.size()
                     << "refund_lines:" << place.added;
        repairRefund(refund, place, work.lineList, cursor);
    }
}
