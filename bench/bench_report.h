#pragma once

#include <QList>

#include <functional>

namespace bench {

/// Milliseconds that \a work takes.
double milliseconds(const std::function<void()>& work);
/// Milliseconds of the processor that \a work takes in its own thread: for work that waits for
/// nothing, and not blurred by what else the machine does.
double cpuMilliseconds(const std::function<void()>& work);
double median(QList<double> values);
/// Writes a line of the result table.
void report(const char* what, double value, const char* unit);

/// Lines of the result table with what each figure may be at most.
class Limits
{
public:
    /// Writes a line.
    /// \param limit  a larger figure is a failure
    /// \param aim    what is hoped for
    void report(const char* what, double value, const char* unit, double limit, double aim);

    /// \return  of the program: 1 if a limit was missed
    int exitStatus() const { return m_missed ? 1 : 0; }

private:
    bool m_missed = false;
};

} // namespace bench
