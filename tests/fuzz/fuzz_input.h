#pragma once

#include <QApplication>
#include <QByteArray>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>

/// The bytes of one attempt, without a copy.
inline QByteArray inputOf(const std::uint8_t* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
}

/// Makes the application that values and widgets need, without a screen, and silences the warnings
/// about what cannot be read: there are thousands a second. The command line of the application
/// holds \a argument alone; the fuzzer's own means nothing to it.
inline void startFuzzing(const QByteArray& argument = {})
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QByteArray program = "fuzz";
    static QByteArray first = argument;
    static char* arguments[] = {program.data(), first.data(), nullptr};
    static int count = first.isEmpty() ? 1 : 2;
    static const QApplication application(count, arguments);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
}

/// Does what was left for the event loop, so that nothing of one attempt is still there in the
/// next.
inline void endAttempt()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
