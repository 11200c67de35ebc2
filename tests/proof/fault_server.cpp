#include "tests/proof/fault_server.h"

#include <algorithm>
#include <chrono>
#include <sys/socket.h>
#include <utility>

namespace proof {

namespace {

constexpr char kHeadEnd[] = "\r\n\r\n";
constexpr qint64 kFillerStep = qint64(1024) * 1024;

QByteArray headerOf(const QByteArray& head, const QByteArray& name)
{
    const QList<QByteArray> lines = head.split('\n');
    for (const QByteArray& line : lines) {
        if (line.toLower().startsWith(name + ':'))
            return line.mid(name.size() + 1).trimmed();
    }
    return {};
}

WireRequest requestOf(const QByteArray& head)
{
    WireRequest request;
    request.target = head.split(' ').value(1);
    // To a proxy the whole address is named.
    const QByteArray scheme = "http://";
    if (request.target.startsWith(scheme))
        request.target.remove(0, request.target.indexOf('/', scheme.size()));
    request.host = headerOf(head, "host");
    request.authorization = headerOf(head, "authorization");
    QList<QByteArray> lines = head.split('\n');
    // One alone: a second has no business there.
    const auto own = std::ranges::find_if(
        lines, [](const QByteArray& line) { return line.toLower().startsWith("authorization:"); });
    if (own != lines.end())
        lines.erase(own);
    request.rest = lines.join('\n');
    return request;
}

} // namespace

FaultServer::FaultServer(Handler handler)
    : m_handler(std::move(handler))
{
    connect(&m_tcp, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = m_tcp.nextPendingConnection()) {
            ++m_connections;
            new FaultConnection(this, socket);
        }
    });
}

bool FaultServer::listen(const QHostAddress& address, quint16 port)
{
    m_address = address;
    if (!m_tcp.listen(address, port))
        return false;
    m_port = m_tcp.serverPort();
    return true;
}

void FaultServer::goAway()
{
    m_isAway = true;
    m_tcp.close();
}

bool FaultServer::comeBack()
{
    m_isAway = false;
    return m_tcp.listen(m_address, m_port);
}

FaultConnection::FaultConnection(FaultServer* server, QTcpSocket* socket)
    : QObject(server)
    , m_server(server)
    , m_socket(socket)
{
    m_socket->setParent(this);
    m_second.setInterval(std::chrono::seconds {1});
    connect(&m_second, &QTimer::timeout, this, &FaultConnection::sendSlowly);
    connect(m_socket, &QTcpSocket::readyRead, this, &FaultConnection::read);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &FaultConnection::fill);
    connect(m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
}

void FaultConnection::read()
{
    if (m_server->m_isAway) {
        finish(WireAnswer::Reset);
        return;
    }
    m_received += m_socket->readAll();
    const QByteArray method = "GET ";
    if (!m_received.startsWith(method.left(m_received.size()))) {
        // A greeting of TLS, for one.
        m_server->m_garbage += std::exchange(m_received, {});
        m_socket->disconnectFromHost();
        return;
    }
    const qsizetype end = m_received.indexOf(kHeadEnd);
    if (end < 0)
        return;
    const WireRequest request = requestOf(m_received.left(end));
    m_received.remove(0, end + qsizetype(sizeof(kHeadEnd)) - 1);
    m_server->m_requests.append(request);
    send(m_server->m_handler(request));
    if (m_server->m_isAway)
        finish(WireAnswer::Close);
}

void FaultConnection::send(const WireAnswer& answer)
{
    m_answer = answer;
    if (answer.slowBytes > 0) {
        m_socket->write(answer.bytes.left(answer.slowFrom));
        m_answer.bytes.remove(0, answer.slowFrom);
        m_second.start();
        return;
    }
    m_socket->write(answer.bytes);
    if (answer.fillerSize > 0)
        fill();
    else
        finish(answer.end);
}

void FaultConnection::sendSlowly()
{
    --m_answer.slowBytes;
    const bool isLast = m_answer.slowBytes <= 0;
    const qsizetype count = isLast ? m_answer.bytes.size() : 1;
    m_socket->write(m_answer.bytes.left(count));
    m_answer.bytes.remove(0, count);
    if (isLast)
        m_second.stop();
}

void FaultConnection::fill()
{
    while (m_answer.fillerSize > 0 && m_socket->bytesToWrite() < kFillerStep) {
        const qint64 count = std::min(m_answer.fillerSize, kFillerStep);
        m_answer.fillerSize -= count;
        m_socket->write(QByteArray(qsizetype(count), m_answer.filler));
    }
}

void FaultConnection::finish(WireAnswer::End end)
{
    if (end == WireAnswer::Keep)
        return;
    m_socket->flush();
    if (end == WireAnswer::Close) {
        m_socket->disconnectFromHost();
        return;
    }
    // With this a close discards what is open and tells the other side so.
    const linger atOnce {.l_onoff = 1, .l_linger = 0};
    ::setsockopt(int(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
    m_socket->abort();
}

} // namespace proof
