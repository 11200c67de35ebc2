#include "app/mainwindow.h"

#include "accounting/order_taxes.h"
#include "accounting/shopdates.h"
#include "app/debuglog.h"
#include "app/refundrepair.h"
#include "app/shopurls.h"

#include <QDebug>
#include <QJsonObject>
#include <QSet>

namespace {

/// Fields that a refund's lines were once to lose. No row depends on it: which fields a line record
/// leaves out is decided where records are made.
const QSet<QString>& refundKeysToRemove()
{
    static const QSet<QString> line_items_refund_key_remove {
        QStringLiteral("image"),        QStringLiteral("meta_data"), QStringLiteral("parent_name"),
        QStringLiteral("sku"),          QStringLiteral("tax_class"), QStringLiteral("variation_id"),
        QStringLiteral("refund_total"),
    };
    return line_items_refund_key_remove;
}

} // namespace

void MainWindow::addRefunds(OrderWork& work)
{
    Q_UNUSED(refundKeysToRemove())
    QJsonDocument answer;
    executeRequest(refundsUrl(csBaseUrl, work.scan.id), &answer, iRequestRetries);
    const QJsonArray refunds = answer.array();
    int cursor = 0;
    for (const auto element : refunds) {
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
