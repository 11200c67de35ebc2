#pragma once

#include <QLoggingCategory>

/// True if debug lines of the default category are written at all. Ask before building a costly
/// one.
inline bool isDebugLogged()
{
    return QLoggingCategory::defaultCategory()->isDebugEnabled();
}
