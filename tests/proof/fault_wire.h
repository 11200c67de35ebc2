#pragma once

#include "tests/proof/fault_table.h"

namespace proof {

/// What is sent in place of an answer, and how.
struct WireAnswer
{
    enum End {
        Keep, ///< the connection serves the next request
        Close,
        Reset
    };

    QByteArray bytes;
    End end = Keep;
    /// So many bytes from `slowFrom` on go out one a second.
    qsizetype slowFrom = 0;
    qsizetype slowBytes = 0;
    /// So many bytes of `filler` follow.
    qint64 fillerSize = 0;
    char filler = ' ';
};

/// An answer as a server without faults sends it.
WireAnswer wholeAnswer(const QByteArray& body);

/// An answer with a fault.
/// \param location  where a redirect leads
WireAnswer spoiltAnswer(const FaultRow& fault, const QByteArray& body, const QByteArray& location);

} // namespace proof
