#include "tests/proof/fault_table.h"

namespace proof {

namespace {

// The time that the program waits for the next byte of an answer.
constexpr int kTimeout = 60;

FaultRow plain(const char* name, FaultKind kind)
{
    return {.name = name, .kind = kind};
}

FaultRow harmless(const char* name, FaultKind kind)
{
    return {.name = name, .kind = kind, .isHarmless = true};
}

FaultRow status(const char* name, int code)
{
    return {.name = name, .kind = FaultKind::Status, .status = code};
}

FaultRow slow(const char* name, FaultKind kind)
{
    return {.name = name, .kind = kind, .secondsARequest = kTimeout};
}

FaultRow closed(const char* name, FaultKind kind, int seconds)
{
    return {.name = name, .kind = kind, .closedAfterSeconds = seconds};
}

} // namespace

const QList<FaultRow>& faultRows()
{
    static const QList<FaultRow> rows {
        // The slowest first, so that the others pass meanwhile.
        slow("60 s of silence", FaultKind::Silence),
        slow("one byte a second from the head on", FaultKind::SlowHead),
        slow("length too long, connection kept", FaultKind::LengthTooLongKept),
        {.name = "one byte a second in the body, 75 s",
         .kind = FaultKind::SlowBody,
         .isHarmless = true,
         .secondsARequest = kTimeout + 15},
        closed("one byte a second without end, closed by the user after 65 s",
               FaultKind::SlowForEver, kTimeout + 5),
        closed("silence, closed by the user", FaultKind::Silence, 1),
        plain("connection refused", FaultKind::Refused),
        plain("reset before the head", FaultKind::ResetBeforeHead),
        plain("reset inside the head", FaultKind::ResetInsideHead),
        plain("reset inside the body", FaultKind::ResetInsideBody),
        plain("cut JSON", FaultKind::CutJson),
        plain("HTML with status 200", FaultKind::Html),
        plain("PHP notice before the JSON", FaultKind::Notice),
        harmless("byte order mark", FaultKind::ByteOrderMark),
        plain("empty body with status 200", FaultKind::Empty),
        status("401", 401),
        plain("401 with a challenge", FaultKind::Challenge),
        status("403", 403),
        status("404", 404),
        status("429", 429),
        status("500", 500),
        status("503", 503),
        harmless("redirect to www", FaultKind::RedirectWww),
        plain("redirect to https, where no TLS is spoken", FaultKind::RedirectHttps),
        plain("redirect to another host", FaultKind::RedirectOther),
        harmless("redirect to http, same host", FaultKind::RedirectHttp),
        plain("length too long, connection closed", FaultKind::LengthTooLong),
        plain("length too short", FaultKind::LengthTooShort),
        plain("broken gzip", FaultKind::GzipBroken),
        plain("gzip cut short", FaultKind::GzipCut),
        plain("gzip with another digit and a wrong checksum", FaultKind::GzipChanged),
        harmless("HTTP/1.0", FaultKind::Http10),
        {.name = "200 MB that are no JSON", .kind = FaultKind::HugePage, .isHuge = true},
        {.name = "200 MB of blanks behind the JSON",
         .kind = FaultKind::HugeBlanks,
         .isHarmless = true,
         .isHuge = true},
    };
    return rows;
}

const QList<FaultPhase>& faultPhases()
{
    static const QList<FaultPhase> phases {
        {"first request", "/taxes?per_page=100&page=1&", "", 1},
        {"tax rates", "/taxes?per_page=100&page=2&", "/taxes?per_page=100&page=1&", 1},
        {"orders, page 1", "refunded&page=1&", "/taxes?per_page=100&page=2&", 1},
        {"product", "/products/11", "/orders/2/invoices", 1},
        {"invoice list", "/orders/3/invoices", "/products/11", 1},
        {"orders, page 2", "refunded&page=2&", "/orders/100/invoices", 2},
        {"refunds", "/orders/101/refunds", "/orders/101/invoices", 2},
        {"invoice file", "/file/103", "/orders/103/invoices", 2},
    };
    return phases;
}

} // namespace proof
