#pragma once

#include <QString>

#include <stdexcept>

/// A request to the shop that failed for good. The text is UTF-8.
class NetworkError : public std::runtime_error
{
public:
    explicit NetworkError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};
