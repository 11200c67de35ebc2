#include "tools/demo_shop/fault_socket.h"

#include <algorithm>

namespace demo_shop {

namespace {

constexpr char kHeadEnd[] = "\r\n\r\n";

// Status line and headers are kept in their order; only the named header goes.
QList<QByteArray> linesWithoutLength(const QByteArray& head)
{
    QList<QByteArray> lines;
    const QList<QByteArray> all = head.trimmed().split('\n');
    for (const QByteArray& raw : all) {
        const QByteArray line = raw.trimmed();
        if (!line.toLower().startsWith("content-length:"))
            lines << line;
    }
    return lines;
}

} // namespace

QByteArray withContentLength(const QByteArray& head, qsizetype length)
{
    QList<QByteArray> lines = linesWithoutLength(head);
    lines << "Content-Length: " + QByteArray::number(length);
    return lines.join("\r\n") + kHeadEnd;
}

QByteArray chunked(const QByteArray& head, const QByteArray& body)
{
    constexpr qsizetype chunkSize = 4096;
    QList<QByteArray> lines = linesWithoutLength(head);
    lines << "Transfer-Encoding: chunked";
    QByteArray bytes = lines.join("\r\n") + kHeadEnd;
    for (qsizetype at = 0; at < body.size(); at += chunkSize) {
        const QByteArray chunk = body.mid(at, chunkSize);
        bytes += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    }
    return bytes + "0\r\n\r\n";
}

FaultSocket::FaultSocket(QObject* parent)
    : QTcpSocket(parent)
    , m_trickle(this)
{
    connect(&m_trickle, &QTimer::timeout, this, &FaultSocket::sendPiece);
}

void FaultSocket::hold()
{
    m_holding = true;
    m_held.clear();
}

qint64 FaultSocket::writeData(const char* data, qint64 size)
{
    if (!m_holding)
        return QTcpSocket::writeData(data, size);
    m_held.append(data, qsizetype(size));
    return size;
}

void FaultSocket::release(const Fault& fault)
{
    m_holding = false;
    const QByteArray answer = std::exchange(m_held, {});
    const qsizetype headSize = answer.indexOf(kHeadEnd) + qsizetype(sizeof(kHeadEnd)) - 1;
    const QByteArray head = answer.left(headSize);
    const QByteArray body = answer.mid(headSize);

    switch (fault.kind) {
    case Fault::DropBeforeHeaders:
        // Queued: the HTTP server is still in the middle of this request.
        QMetaObject::invokeMethod(this, &FaultSocket::abort, Qt::QueuedConnection);
        break;
    case Fault::DropInsideHeaders:
        sendAndClose(head.left(head.size() / 2));
        break;
    case Fault::DropInsideBody:
        sendAndClose(head + body.left(body.size() / 2));
        break;
    case Fault::WrongLength:
        sendAndClose(withContentLength(head, body.size() / 2) + body);
        break;
    case Fault::StallInsideBody:
        write(head + body.left(body.size() / 2));
        break;
    case Fault::Chunked:
        write(chunked(head, body));
        break;
    case Fault::Trickle:
        m_held = answer;
        m_pieceSize = std::max<qsizetype>(1, answer.size() / std::max(1, fault.pieces));
        m_trickle.start(fault.pauseMs);
        break;
    case Fault::Silence:
        break;
    default:
        write(answer);
        break;
    }
}

void FaultSocket::sendAndClose(const QByteArray& bytes)
{
    write(bytes);
    QMetaObject::invokeMethod(this, &FaultSocket::disconnectFromHost, Qt::QueuedConnection);
}

void FaultSocket::sendPiece()
{
    if (state() == ConnectedState)
        write(m_held.left(m_pieceSize));
    m_held.remove(0, m_pieceSize);
    if (m_held.isEmpty() || state() != ConnectedState)
        m_trickle.stop();
}

void FaultTcpServer::incomingConnection(qintptr descriptor)
{
    auto* socket = new FaultSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    ++m_connections;
    addPendingConnection(socket);
}

} // namespace demo_shop
