#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <ctime>

namespace bench {

/// Nanoseconds of the clock that all processes share.
inline long long nowNs()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

/// Ends the program once a window has been painted, and tells on standard output how long that
/// took: the nanoseconds since the moment that the variable LEDORA_BENCH_START holds.
class FirstPaint : public QObject
{
public:
    explicit FirstPaint(QWidget* window)
        : m_window(window)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (!m_painted && event->type() == QEvent::Paint && widget
            && widget->window() == m_window) {
            m_painted = true;
            // Behind all widgets of the first frame, which are painted in one go.
            QTimer::singleShot(0, this, [] {
                std::printf("%lld\n",
                            nowNs() - qEnvironmentVariable("LEDORA_BENCH_START").toLongLong());
                std::fflush(stdout);
                std::_Exit(0);
            });
        }
        return QObject::eventFilter(object, event);
    }

private:
    QWidget* m_window;
    bool m_painted = false;
};

} // namespace bench
