#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QUrlQuery>

#include <functional>
#include <memory>

namespace demo_shop {

/// One request as the server saw it.
struct ShopRequest
{
    /// Path alone, percent-decoded: "/wp-json/wc/v3/orders".
    QString path;
    /// Query items in their order; read values with QUrl::FullyDecoded.
    QUrlQuery query;
    /// Path and query as they came over the wire, percent-encoded.
    QByteArray rawTarget;
    /// Value of the Authorization header, empty without one.
    QByteArray authorization;
    /// All request headers.
    QList<QPair<QByteArray, QByteArray>> headers;
    /// Counts the server's requests, from 1; see ShopServer::clearRequests.
    int number = 0;
    /// "GET", "POST" and so on.
    QByteArray method = "GET";
    /// Address of the server that was asked, without a slash at its end.
    QString baseUrl;

    /// Decoded value of a query item, empty if the item is missing.
    QString queryValue(const QString& key) const;
    /// Value of a request header, its name read without regard to case; empty if missing.
    QByteArray header(const QByteArray& name) const;
};

/// What a handler answers. Content-Type and Content-Length are added by the server.
struct ShopAnswer
{
    int status = 200;
    QByteArray contentType = "application/json; charset=UTF-8";
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers;
};

/// A fault that befalls one answer, in its content or on the wire.
struct Fault
{
    enum Kind {
        /// The answer goes out as it is.
        None,
        /// The HTTP status becomes `status`; the body stays, so only the status tells.
        Status,
        /// The connection is closed before anything is sent. A Qt client sends a request anew by
        /// itself when this befalls a connection that has served one before.
        DropBeforeHeaders,
        /// Half of the head is sent, then the connection is closed.
        DropInsideHeaders,
        /// The head and half of the body are sent, then the connection is closed.
        DropInsideBody,
        /// Half of the body, whole as to HTTP: the announced length fits.
        CutJson,
        /// A page for people (status 200, text/html) instead of the answer.
        Html,
        /// Status 200 with a body of 0 bytes.
        EmptyBody,
        /// The whole answer in `pieces` parts, `pauseMs` apart.
        Trickle,
        /// Nothing is sent, the connection stays open.
        Silence,
        /// The head and half of the body are sent, then nothing; the connection stays open.
        StallInsideBody,
        /// The announced length is half of the body's; all of it is sent, then the connection is
        /// closed.
        WrongLength,
        /// A notice of PHP in front of the JSON.
        LeadingNotice,
        /// A UTF-8 byte order mark in front of the JSON.
        ByteOrderMark,
        /// The whole answer without an announced length, in chunks: no fault by HTTP.
        Chunked,
    };

    Kind kind = None;
    int status = 500;
    int pieces = 20;
    int pauseMs = 10;
};

/// HTTP server on 127.0.0.1 that asks a handler for its answers and spoils those that a plan names.
/// It lives in the thread that made it, which must run an event loop while requests are open.
class ShopServer : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<ShopAnswer(const ShopRequest&)>;
    using FaultPlan = std::function<Fault(const ShopRequest&)>;

    /// \param handler  gives the answer to each request; an empty one answers 404 to everything
    explicit ShopServer(Handler handler, QObject* parent = nullptr);
    ~ShopServer() override;

    /// Starts to listen on 127.0.0.1.
    /// \param port  0 takes a free one
    /// \return      false if the port cannot be had; errorString() tells why
    bool listen(quint16 port = 0);
    /// Stops listening and drops all connections. listen() may be called again.
    void close();
    /// Why listen() failed.
    QString errorString() const;
    /// "http://127.0.0.1:PORT"; after close() still the last address. Empty before listen().
    QString baseUrl() const;

    /// Replaces the handler for the requests to come.
    void setHandler(Handler handler);
    /// Sets the plan that is asked before each answer; an empty one means no faults.
    void setFaultPlan(FaultPlan plan);

    /// Everything seen since the start or the last clearRequests(), in order.
    QList<ShopRequest> requests() const;
    /// Forgets the requests; the next one has the number 1 again.
    void clearRequests();
    /// With false requests() stays empty, for runs too long to be remembered. Default: true.
    void setRecording(bool on);
    /// Connections accepted since the start.
    int connectionCount() const;

signals:
    /// A request has arrived and is about to be answered.
    void requestSeen(int number);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace demo_shop
