#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>

/// The bodies that a shop answers with, without a shop: no byte leaves the process.
struct ShopAnswers
{
    QByteArray taxes = R"([{"id":1,"rate":"19.0000"},{"id":2,"rate":"7.0000"}])";
    QByteArray orders = "[]";
    QByteArray refunds = "[]";
    QByteArray product = R"({"id":14,"virtual":false,"downloadable":true})";
    QByteArray invoices = "[]";
    QByteArray file = R"({"file":"JVBERi0xLjQK"})";
};

/// Stands in for the network: answers each request at once with status 200 and the body of its
/// kind, whatever the host. From the second page on, lists are empty.
class AnswerManager : public QNetworkAccessManager
{
    Q_OBJECT

public:
    AnswerManager(const ShopAnswers& answers, QObject* parent);

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* outgoing) override;

private:
    QByteArray bodyFor(const QUrl& url) const;

    const ShopAnswers& m_answers;
};
