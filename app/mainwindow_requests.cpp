#include "app/mainwindow.h"

#include "app/networkerror.h"
#include "app/shopurls.h"

#include <QEventLoop>
#include <QJsonParseError>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QThread>

namespace {

const unsigned long iPauseStepMs = 500;

/// Parses \a body into \a doc. \return the problem, if there is one
std::optional<QString> parseJson(const QByteArray& body, QJsonDocument& doc)
{
    QJsonParseError error;
    doc = QJsonDocument::fromJson(body, &error);
    if (error.error == QJsonParseError::NoError)
        return std::nullopt;
    return MainWindow::tr("JSON-Parse-Fehler: %1 (Position %2)")
        .arg(error.errorString(), QString::number(error.offset));
}

/// The toolkit repeats the authorisation at the target of a redirect, so where a redirect may lead
/// is decided here.
void guardRedirects(QNetworkReply* reply)
{
    QObject::connect(
        reply, &QNetworkReply::redirected, reply,
        [reply, origin = reply->url(), current = reply->url()](const QUrl& target) mutable {
            if (!isRedirectAllowed(origin, current, target)) {
                reply->abort();
                return;
            }
            current = target;
            emit reply->redirectAllowed();
        });
}

} // namespace

QByteArray MainWindow::executeRequest(QUrl const& url, QJsonDocument* doc, int retries)
{
    unsigned long pause = iPauseStepMs;
    for (int attempt = 1;; ++attempt) {
        // A closed window waits for nothing any more.
        Reply reply =
            bGivenUp ? Reply {{}, QStringLiteral("Operation canceled")} : waitForReply(url);
        if (!reply.error && doc)
            reply.error = parseJson(reply.body, *doc);
        if (!reply.error)
            return reply.body;
        if (attempt >= retries || bGivenUp)
            throw NetworkError(tr("Netzwerkfehler nach %1 Versuchen: %2 (URL: %3)")
                                   .arg(QString::number(retries), *reply.error, url.toString()));

        showStatus(tr("Netzwerkfehler (%1), Wiederholung %2/%3...")
                       .arg(*reply.error, QString::number(attempt), QString::number(retries)));
        // The pause handles no event, so the line would not be seen before its end.
        if (statusLabel)
            statusLabel->repaint();
        QThread::msleep(pause);
        pause += iPauseStepMs;
    }
}

MainWindow::Reply MainWindow::waitForReply(const QUrl& url)
{
    flushLog();
    QNetworkReply* reply = sendRequest(url);
    if (!reply)
        return {{}, QStringLiteral("Operation canceled")};

    QEventLoop loop;
    connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();

    if (!reply->isFinished()) {
        // The program is being ended: the loop was left and no other would wait. An unfinished
        // reply reports no error, and its empty body would be tried again.
        reply->disconnect(this);
        reply->abort();
        const QString error = reply->errorString();
        reply->deleteLater();
        throw NetworkError(tr("Netzwerkfehler nach %1 Versuchen: %2 (URL: %3)")
                               .arg(QString::number(1), error, url.toString()));
    }
    Reply answer {reply->readAll(), std::nullopt};
    if (reply->error() != QNetworkReply::NoError)
        answer.error = reply->errorString();
    reply->deleteLater();
    return answer;
}

QNetworkReply* MainWindow::sendRequest(const QUrl& url)
{
    if (!networkManager)
        return nullptr;
    QNetworkRequest request(url);
    QSslConfiguration ssl = QSslConfiguration::defaultConfiguration();
    ssl.setProtocol(QSsl::SecureProtocols);
    request.setSslConfiguration(ssl);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::UserVerifiedRedirectPolicy);
    // Anew for each attempt: the fields can be edited while a run waits.
    request.setRawHeader("Authorization",
                         basicAuthorization(apiKey.toString(), apiSecret.toString()));

    QNetworkReply* reply = networkManager->get(request);
    guardRedirects(reply);
    connect(reply, &QNetworkReply::downloadProgress, this, &MainWindow::onDownloadProgress);
    return reply;
}

RunFigures MainWindow::runFigures() const
{
    return {iBytesReceived, runClock.isValid() ? runClock.elapsed() : 0, iExportCount, iPdfCount};
}

void MainWindow::onDownloadProgress(qint64 bytesReceived, qint64 bytesTotal)
{
    // A running figure is added on purpose: the counter line shows this sum.
    iBytesReceived += bytesReceived;
    if (!progressLabel)
        return;
    const RunFigures figures = runFigures();
    const QString line = bytesReceived != bytesTotal ? readingLine(locale(), figures)
                                                     : totalsLine(locale(), figures);
    progressLabel->setText(line);
    progressLabel->setAccessibleDescription(line); // the name hides the text from a screen reader
}
