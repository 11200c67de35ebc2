#pragma once

#include "tools/demo_shop/shop_server.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// A shop of random orders, told twice: as the answers it gives, and as the cells that have to come
/// out of them. Neither is made with any code of the program.
namespace property {

/// Column -> cell. Columns of lines stand here without "line_items_".
using Cells = QMap<QString, QString>;

/// A line of an order or a refund. Amounts are in cents.
struct Line
{
    int id = 0;
    int productId = -1; ///< -1 if it names none
    qint64 net = 0;
    qint64 tax = 0;
    Cells cells; ///< all of its columns
};

struct Refund
{
    int id = 0;
    std::optional<qint64> amount; ///< cents; some refunds have none
    bool flagged = false; ///< its shipping cannot be split cleanly
    QString date; ///< local
    QList<Line> lines;
};

struct Order
{
    int id = 0;
    std::optional<qint64> fee; ///< of the payment service, cents
    bool flagged = false;
    Cells cells; ///< columns that all rows share
    QList<Line> lines;
    QList<Refund> refunds; ///< in the order of the answer

    /// Some refund without an amount may change the order's own lines.
    bool hasRefundWithoutAmount() const;
};

/// Tells whether a wall clock may stand in a date, so that nights can be left out.
using ClockFilter = std::function<bool(const QDateTime& wallClock)>;

class Shop
{
public:
    /// Equal seeds and counts give equal shops.
    /// \param useClock  asked for each date; without it all dates serve
    Shop(quint32 seed, int count, const ClockFilter& useClock = {});

    const QList<Order>& orders() const { return m_orders; }

    /// Answers any request of a run.
    demo_shop::ShopAnswer operator()(const demo_shop::ShopRequest& request) const;

    static bool isVirtual(int productId) { return productId % 3 == 0; }

    static bool isDownload(int productId) { return productId % 5 == 0; }

private:
    QList<Order> m_orders;
    QList<QByteArray> m_bodies;
    QHash<int, QByteArray> m_refunds;
};

/// The shop's rate for an id, as its list of rates has it; null if it lists none.
QString listedRate(int rateId);

/// "12.5": an amount of cents as a number's shortest text.
QString shortestText(qint64 cents);

/// The seed to be used: LEDORA_SEED, or a random one.
quint32 seed();

} // namespace property
