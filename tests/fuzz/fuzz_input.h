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
/// about what cannot be read: there are thousands a second.
inline void startFuzzing(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(*argc, *argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
}
