#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QUrl>

/// What a client has of one finished request.
struct ClientReply
{
    QNetworkReply::NetworkError error = QNetworkReply::UnknownNetworkError;
    int status = 0;
    QByteArray body;
    QList<QNetworkReply::RawHeaderPair> headers;

    QByteArray header(const QByteArray& name) const
    {
        for (const auto& [key, value] : headers) {
            if (key.compare(name, Qt::CaseInsensitive) == 0)
                return value;
        }
        return {};
    }
};

/// Blocking requests with one network manager, as one run of a client makes them.
class HttpClient
{
public:
    /// \param timeoutMs  after so many milliseconds without a byte a request is given up
    explicit HttpClient(int timeoutMs = 20000) { m_manager.setTransferTimeout(timeoutMs); }

    ClientReply get(const QString& url, const QByteArray& authorization = {})
    {
        QNetworkRequest request {QUrl(url)};
        if (!authorization.isEmpty())
            request.setRawHeader("Authorization", authorization);
        return finish(m_manager.get(request));
    }

    ClientReply post(const QString& url, const QByteArray& body)
    {
        QNetworkRequest request {QUrl(url)};
        request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
        return finish(m_manager.post(request, body));
    }

    QNetworkAccessManager* manager() { return &m_manager; }

private:
    static ClientReply finish(QNetworkReply* reply)
    {
        QSignalSpy finished(reply, &QNetworkReply::finished);
        if (!reply->isFinished())
            finished.wait(60000);
        ClientReply result;
        if (reply->isFinished())
            result.error = reply->error();
        result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply->isOpen())
            result.body = reply->readAll();
        result.headers = reply->rawHeaderPairs();
        reply->deleteLater();
        return result;
    }

    QNetworkAccessManager m_manager;
};
