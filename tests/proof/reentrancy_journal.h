#pragma once

#include <QByteArray>
#include <QString>

namespace proof {

/// What was done on a road, in order, for whoever has to walk it again. Should the process die on
/// the way, or a road not come to its end, it is written to standard error by then.
class Journal
{
public:
    /// Forgets the road before. From now on the process may take some minutes of the processor's
    /// time till the next call; then it is ended.
    static void begin(quint32 seed);
    static void add(const QString& line);
    static QByteArray text();
    /// No road is under way, so nothing is written and no time runs.
    static void end();
};

} // namespace proof
