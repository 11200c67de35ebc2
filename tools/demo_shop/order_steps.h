#pragma once

#include "tools/demo_shop/counter_random.h"
#include "tools/demo_shop/order_model.h"

namespace demo_shop {

/// The steps in which an order is made. Its refunds are not among them.
class OrderMaker
{
public:
    OrderMaker(const OrderPlan& plan, qint64 index);

    /// Gives the order away; to be called once.
    Order make();

private:
    void takeCountry();
    void takeLines();
    void takeRoleLines();
    void addLine(int productId, int quantity);
    void addRandomLines(const std::vector<int>& choice, int count, int maxQuantity);
    void takeCoupon();
    void takeShipping();
    void takeGermanShipping();
    void addShipping(const QString& title, const char* method, const char* instance, qint64 gross);
    void addUntaxedShipping(const QString& title, const char* instance, qint64 net, bool isTaxable);
    void takeFees();
    void addFee(const QString& name, qint64 gross);
    void takePayment();
    void payBy(const char* method, const QString& title);
    void payByPayPal(const char* method, const QString& title);
    void takeDates();
    void takePeople();
    void sumUp();

    bool isNothingSent() const;
    QString token(int length, const char* letters);

    CounterRandom m_random;
    Order m_order;
    QByteArray m_country = "DE";
    qint64 m_nextItem;
};

} // namespace demo_shop
