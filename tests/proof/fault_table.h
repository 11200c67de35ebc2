#pragma once

#include <QByteArray>
#include <QList>

namespace proof {

enum class FaultKind {
    None,
    Refused, ///< nobody listens
    ResetBeforeHead,
    ResetInsideHead,
    ResetInsideBody,
    CutJson,
    Html,
    Notice,
    ByteOrderMark,
    Empty,
    Status,
    Challenge, ///< 401 that asks for a name and a password
    RedirectWww,
    RedirectHttps,
    RedirectOther,
    RedirectHttp,
    Silence,
    SlowHead, ///< one byte a second from the first byte of the head on
    SlowBody, ///< one byte a second in the body for longer than the timeout, then the rest at once
    SlowForEver, ///< one byte a second in the body, without an end
    HugePage, ///< 200 MB that are no JSON
    HugeBlanks, ///< the answer, then 200 MB of blanks
    LengthTooLong, ///< announced longer than it is, then closed
    LengthTooLongKept, ///< the same, but the connection stays open
    LengthTooShort, ///< announced shorter than it is; the connection stays open
    GzipBroken,
    GzipCut,
    GzipChanged, ///< another digit in the JSON, and thus a checksum that does not fit
    Http10,
};

/// One row of the table of faults.
struct FaultRow
{
    const char* name;
    FaultKind kind;
    int status = 200;
    /// By HTTP no fault at all, or one that the program is to see through: the run comes to its
    /// end.
    bool isHarmless = false;
    /// How long one request can last with it; 0 for a moment.
    int secondsARequest = 0;
    /// 200 MB, which can't be had many times at once.
    bool isHuge = false;
    /// The user closes the window so many seconds after it befell; -1 for never.
    int closedAfterSeconds = -1;
};

/// One column: a request of the run, found by what is asked for.
struct FaultPhase
{
    const char* name;
    /// Part of the target that belongs to this request alone.
    const char* part;
    /// The same for the request before it, empty for the first.
    const char* before;
    /// The page of orders that the run is at with it.
    int page;
};

const QList<FaultRow>& faultRows();
const QList<FaultPhase>& faultPhases();

} // namespace proof
