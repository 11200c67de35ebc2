#include "tools/demo_shop/shop_server.h"

#include "tools/demo_shop/fault_socket.h"
#include "tools/demo_shop/spoilt_answer.h"

#include <QHttpServer>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QMetaEnum>
#include <QUrl>

#include <utility>

namespace demo_shop {

using StatusCode = QHttpServerResponder::StatusCode;

namespace {

constexpr char kNotFound[] =
    R"({"code":"rest_no_route","message":"No route was found matching the )"
    R"(URL and request method.","data":{"status":404}})";

ShopAnswer answerOfNoHandler()
{
    ShopAnswer answer;
    answer.status = 404;
    answer.body = kNotFound;
    return answer;
}

// The library looks the reason phrase up and has none for a number it does not name.
StatusCode statusCode(int status)
{
    if (QMetaEnum::fromType<StatusCode>().valueToKey(status))
        return StatusCode(status);
    qWarning("demo_shop: status %d has no name, 500 is sent", status);
    return StatusCode::InternalServerError;
}

QList<QPair<QByteArray, QByteArray>> headersOf(const QHttpServerRequest& request)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QList<QPair<QByteArray, QByteArray>> list;
    for (const auto& [name, value] : request.headers().toListOfPairs())
        list.append({name, value});
    return list;
#else
    return request.headers();
#endif
}

void writeAnswer(QHttpServerResponder& responder, const ShopAnswer& answer)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QHttpHeaders headers;
    headers.append(QHttpHeaders::WellKnownHeader::ContentType, answer.contentType);
    for (const auto& [name, value] : answer.headers)
        headers.append(name, value);
    responder.write(answer.body, headers, statusCode(answer.status));
#else
    responder.writeStatusLine(statusCode(answer.status));
    responder.writeHeader("Content-Type", answer.contentType);
    for (const auto& [name, value] : answer.headers)
        responder.writeHeader(name, value);
    responder.writeHeader("Content-Length", QByteArray::number(answer.body.size()));
    responder.writeBody(answer.body);
#endif
}

} // namespace

QString ShopRequest::queryValue(const QString& key) const
{
    return query.queryItemValue(key, QUrl::FullyDecoded);
}

QByteArray ShopRequest::header(const QByteArray& name) const
{
    for (const auto& [key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

class ShopServer::Private
{
public:
    Private(ShopServer* owner, Handler firstHandler)
        : q(owner)
        , handler(std::move(firstHandler))
    {
    }

    void answer(const QHttpServerRequest& request, QHttpServerResponder& responder);
    ShopRequest take(const QHttpServerRequest& request);
    FaultSocket* socketOf(const QHttpServerRequest& request, QHttpServerResponder& responder) const;

    ShopServer* q;
    Handler handler;
    FaultPlan plan;
    std::unique_ptr<QHttpServer> http;
    FaultTcpServer* tcp = nullptr;
    QString address;
    QString error;
    QList<ShopRequest> seen;
    bool recording = true;
    int lastNumber = 0;
    int earlierConnections = 0;
};

ShopRequest ShopServer::Private::take(const QHttpServerRequest& request)
{
    ShopRequest taken;
    const QUrl url = request.url();
    taken.path = url.path(QUrl::FullyDecoded);
    taken.query = QUrlQuery(url);
    taken.rawTarget = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority);
    taken.headers = headersOf(request);
    taken.authorization = taken.header("Authorization");
    taken.number = ++lastNumber;
    const char* method =
        QMetaEnum::fromType<QHttpServerRequest::Method>().valueToKey(int(request.method()));
    taken.method = QByteArray(method).toUpper();
    taken.baseUrl = address;
    if (recording)
        seen << taken;
    return taken;
}

FaultSocket* ShopServer::Private::socketOf([[maybe_unused]] const QHttpServerRequest& request,
                                           [[maybe_unused]] QHttpServerResponder& responder) const
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    const auto sockets = tcp->findChildren<FaultSocket*>();
    for (FaultSocket* socket : sockets) {
        if (socket->peerPort() == request.remotePort())
            return socket;
    }
    return nullptr;
#else
    return qobject_cast<FaultSocket*>(responder.socket());
#endif
}

void ShopServer::Private::answer(const QHttpServerRequest& request, QHttpServerResponder& responder)
{
    const ShopRequest taken = take(request);
    emit q->requestSeen(taken.number);

    const Fault fault = plan ? plan(taken) : Fault {};
    const ShopAnswer answer = spoilt(handler ? handler(taken) : answerOfNoHandler(), fault);

    FaultSocket* socket = isOnTheWire(fault.kind) ? socketOf(request, responder) : nullptr;
    if (socket)
        socket->hold();
    writeAnswer(responder, answer);
    if (socket)
        socket->release(fault);
}

ShopServer::ShopServer(Handler handler, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, std::move(handler)))
{
}

ShopServer::~ShopServer() = default;

bool ShopServer::listen(quint16 port)
{
    close();
    auto tcp = std::make_unique<FaultTcpServer>();
    if (!tcp->listen(QHostAddress::LocalHost, port)) {
        d->error = tcp->errorString();
        return false;
    }
    d->address = QStringLiteral("http://127.0.0.1:%1").arg(tcp->serverPort());

    d->http = std::make_unique<QHttpServer>();
    // No routes: the handler knows the paths, so every request is one without a route.
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    d->http->setMissingHandler(
        d->http.get(), [this](const QHttpServerRequest& request, QHttpServerResponder& responder) {
            d->answer(request, responder);
        });
#else
    d->http->setMissingHandler(
        [this](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
            d->answer(request, responder);
        });
#endif
    d->tcp = tcp.release();
    d->http->bind(d->tcp);
    return true;
}

void ShopServer::close()
{
    if (d->tcp)
        d->earlierConnections += d->tcp->connectionCount();
    d->tcp = nullptr;
    d->http.reset();
}

QString ShopServer::errorString() const
{
    return d->error;
}

QString ShopServer::baseUrl() const
{
    return d->address;
}

void ShopServer::setHandler(Handler handler)
{
    d->handler = std::move(handler);
}

void ShopServer::setFaultPlan(FaultPlan plan)
{
    d->plan = std::move(plan);
}

QList<ShopRequest> ShopServer::requests() const
{
    return d->seen;
}

void ShopServer::clearRequests()
{
    d->seen.clear();
    d->lastNumber = 0;
}

void ShopServer::setRecording(bool on)
{
    d->recording = on;
}

int ShopServer::connectionCount() const
{
    return d->earlierConnections + (d->tcp ? d->tcp->connectionCount() : 0);
}

} // namespace demo_shop
