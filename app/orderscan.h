#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVariant>

#include <utility>

/// What the walk over an order's fields yields: the cells that all its rows share, and the marks by
/// which the run decides and reports.
struct OrderScan
{
    int id = 0;
    QString email;
    QString lastName;
    QString paymentTitle;
    QString paymentMethod;
    /// Trimmed; the cell of the same name holds the text as sent.
    QString status;
    /// Trimmed, as status.
    QString transactionId;
    /// Local time of the order, ISO; empty if unknown.
    QString dateCreated;
    /// Paid through PayPal, by method or title.
    bool paypal = false;
    bool hasRefunds = false;
    /// Fee of the payment in the order's currency, a double; invalid if none was found.
    QVariant paypalFee;
    /// Text and quoted column name of each cell, in the order of the columns.
    QList<std::pair<QString, QString>> fields;
};

/// Walks \a order in ascending key order. Missing fields read as 0 or empty text; nothing throws.
OrderScan scanOrder(const QJsonObject& order);

/// True if the order counts as paid through PayPal, its fee included.
bool isPaypalOrder(const OrderScan& scan);
