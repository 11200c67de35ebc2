#include "tests/proof/fault_wire.h"

#include <QtEndian>

#include <array>

namespace proof {

namespace {

constexpr qint64 kHuge = qint64(200) * 1024 * 1024;
constexpr qsizetype kSlowBytes = 75;
constexpr char kJson[] = "application/json; charset=UTF-8";

constexpr char kPage[] = "<!DOCTYPE html>\n<html lang=\"de\"><head><title>Wartung</title></head>\n"
                         "<body><h1>Kurz nicht verf&uuml;gbar</h1></body></html>\n";
constexpr char kNotice[] = "<br />\n<b>Notice</b>:  Undefined index: woo in "
                           "<b>/var/www/html/beispiel.php</b> on line <b>42</b><br />\n";

QByteArray head(qint64 length, int status = 200, const QByteArray& more = {},
                const char* type = kJson)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " Reason\r\nContent-Type: " + type
        + "\r\nContent-Length: " + QByteArray::number(length) + "\r\n" + more + "\r\n";
}

quint32 checksum(const QByteArray& bytes)
{
    quint32 sum = ~quint32(0);
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1) != 0 ? (sum >> 1) ^ 0xEDB88320U : sum >> 1;
    }
    return ~sum;
}

QByteArray littleEndian(quint32 number)
{
    std::array<char, sizeof(number)> bytes {};
    qToLittleEndian(number, bytes.data());
    return {bytes.data(), qsizetype(bytes.size())};
}

/// \param content  what the checksum is made of
QByteArray gzip(const QByteArray& body, const QByteArray& content)
{
    // The toolkit's own form has a length and a head of two bytes before the same stream, and
    // another checksum of four bytes behind it.
    constexpr qsizetype before = 6;
    constexpr qsizetype behind = 4;
    const QByteArray packed = qCompress(body);
    return QByteArray::fromHex("1f8b0800000000000003")
        + packed.mid(before, packed.size() - before - behind) + littleEndian(checksum(content))
        + littleEndian(quint32(content.size()));
}

QByteArray anotherDigit(QByteArray body)
{
    for (qsizetype i = body.size() - 1; i >= 0; --i) {
        if (body.at(i) >= '0' && body.at(i) <= '9') {
            body[i] = body.at(i) == '9' ? '8' : char(body.at(i) + 1);
            return body;
        }
    }
    return "[{}]";
}

WireAnswer packedAnswer(const FaultRow& fault, const QByteArray& body)
{
    QByteArray packed = gzip(body, body);
    if (fault.kind == FaultKind::GzipChanged)
        packed = gzip(anotherDigit(body), body);
    else if (fault.kind == FaultKind::GzipCut)
        packed.truncate(packed.size() / 2);
    else
        packed.replace(packed.size() / 2, 3, "\xFF\xFF\xFF");
    return {.bytes = head(packed.size(), 200, "Content-Encoding: gzip\r\n") + packed};
}

WireAnswer resetAnswer(const FaultRow& fault, const QByteArray& body)
{
    const QByteArray top = head(body.size());
    if (fault.kind == FaultKind::ResetInsideHead)
        return {.bytes = top.left(top.size() / 2), .end = WireAnswer::Reset};
    if (fault.kind == FaultKind::ResetInsideBody)
        return {.bytes = top + body.left(body.size() / 2), .end = WireAnswer::Reset};
    return {.bytes = {}, .end = WireAnswer::Reset};
}

WireAnswer slowAnswer(const FaultRow& fault, const QByteArray& body)
{
    if (fault.kind == FaultKind::SlowHead)
        return {.bytes = head(body.size()) + body, .slowBytes = kSlowBytes};
    const QByteArray longer = body.leftJustified(kSlowBytes, ' ');
    const QByteArray top = head(longer.size());
    const bool ends = fault.kind == FaultKind::SlowBody;
    return {.bytes = top + (ends ? longer : longer.leftJustified(10000, ' ')),
            .slowFrom = top.size(),
            .slowBytes = ends ? kSlowBytes : 10000};
}

WireAnswer lengthAnswer(const FaultRow& fault, const QByteArray& body)
{
    const bool isShort = fault.kind == FaultKind::LengthTooShort;
    return {.bytes = head(isShort ? body.size() / 2 : body.size() + 100) + body,
            .end = fault.kind == FaultKind::LengthTooLong ? WireAnswer::Close : WireAnswer::Keep};
}

WireAnswer hugeAnswer(const FaultRow& fault, const QByteArray& body)
{
    const bool isPage = fault.kind == FaultKind::HugePage;
    const QByteArray start = isPage ? QByteArray(kPage) : body;
    return {.bytes = head(start.size() + kHuge) + start,
            .fillerSize = kHuge,
            .filler = isPage ? 'x' : ' '};
}

} // namespace

WireAnswer wholeAnswer(const QByteArray& body)
{
    return {.bytes = head(body.size()) + body};
}

WireAnswer spoiltAnswer(const FaultRow& fault, const QByteArray& body, const QByteArray& location)
{
    switch (fault.kind) {
    case FaultKind::None:
    case FaultKind::Refused:
        break;
    case FaultKind::ResetBeforeHead:
    case FaultKind::ResetInsideHead:
    case FaultKind::ResetInsideBody:
        return resetAnswer(fault, body);
    case FaultKind::CutJson:
        return wholeAnswer(body.left(body.size() / 2));
    case FaultKind::Html:
        return {.bytes = head(sizeof(kPage) - 1, 200, {}, "text/html; charset=UTF-8") + kPage};
    case FaultKind::Notice:
        return wholeAnswer(kNotice + body);
    case FaultKind::ByteOrderMark:
        return wholeAnswer("\xEF\xBB\xBF" + body);
    case FaultKind::Empty:
        return wholeAnswer({});
    case FaultKind::Status:
        // The body stays, so that only the status tells.
        return {.bytes = head(body.size(), fault.status) + body};
    case FaultKind::Challenge:
        return {.bytes =
                    head(body.size(), 401, "WWW-Authenticate: Basic realm=\"Shop\"\r\n") + body};
    case FaultKind::RedirectWww:
    case FaultKind::RedirectHttps:
    case FaultKind::RedirectOther:
    case FaultKind::RedirectHttp:
        return {.bytes = head(0, 302, "Location: " + location + "\r\n")};
    case FaultKind::Silence:
        return {};
    case FaultKind::SlowHead:
    case FaultKind::SlowBody:
    case FaultKind::SlowForEver:
        return slowAnswer(fault, body);
    case FaultKind::HugePage:
    case FaultKind::HugeBlanks:
        return hugeAnswer(fault, body);
    case FaultKind::LengthTooLong:
    case FaultKind::LengthTooLongKept:
    case FaultKind::LengthTooShort:
        return lengthAnswer(fault, body);
    case FaultKind::GzipBroken:
    case FaultKind::GzipCut:
    case FaultKind::GzipChanged:
        return packedAnswer(fault, body);
    case FaultKind::Http10:
        return {.bytes =
                    QByteArray("HTTP/1.0 200 OK\r\nContent-Type: ") + kJson + "\r\n\r\n" + body,
                .end = WireAnswer::Close};
    }
    return wholeAnswer(body);
}

} // namespace proof
