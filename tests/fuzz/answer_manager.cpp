#include "tests/fuzz/answer_manager.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrlQuery>

namespace {

class AnswerReply : public QNetworkReply
{
public:
    AnswerReply(const QNetworkRequest& request, QByteArray body, QObject* parent)
        : QNetworkReply(parent)
        , m_body(std::move(body))
    {
        setRequest(request);
        setUrl(request.url());
        setAttribute(QNetworkRequest::HttpStatusCodeAttribute, 200);
        open(QIODevice::ReadOnly);
        // Once the caller waits for it.
        QMetaObject::invokeMethod(this, &AnswerReply::end, Qt::QueuedConnection);
    }

    void abort() override { }

    qint64 bytesAvailable() const override
    {
        return m_body.size() - m_position + QIODevice::bytesAvailable();
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 size = qMin(maxSize, m_body.size() - m_position);
        std::copy_n(m_body.constData() + m_position, size, data);
        m_position += size;
        return size == 0 ? -1 : size;
    }

private:
    void end()
    {
        setFinished(true);
        emit downloadProgress(m_body.size(), m_body.size());
        emit finished();
    }

    QByteArray m_body;
    qint64 m_position = 0;
};

} // namespace

AnswerManager::AnswerManager(const ShopAnswers& answers, QObject* parent)
    : QNetworkAccessManager(parent)
    , m_answers(answers)
{
}

QNetworkReply* AnswerManager::createRequest(Operation, const QNetworkRequest& request, QIODevice*)
{
    return new AnswerReply(request, bodyFor(request.url()), this);
}

QByteArray AnswerManager::bodyFor(const QUrl& url) const
{
    const QString path = url.path();
    if (path.endsWith(QLatin1String("/refunds")))
        return m_answers.refunds;
    if (path.endsWith(QLatin1String("/invoices")))
        return m_answers.invoices;
    if (path.contains(QLatin1String("/products/")))
        return m_answers.product;
    const bool isTaxes = path.endsWith(QLatin1String("/v3/taxes"));
    if (!isTaxes && !path.endsWith(QLatin1String("/v3/orders")))
        return m_answers.file;
    const QString page = QUrlQuery(url).queryItemValue(QStringLiteral("page"));
    if (page != QLatin1String("1"))
        return "[]";
    return isTaxes ? m_answers.taxes : m_answers.orders;
}
