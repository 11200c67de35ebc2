#pragma once

#include <QStringList>

/// What a pass puts back when it fails, so that the page can be repeated as if it had not been
/// tried.
struct PageState
{
    QStringList csvHeaders;
    bool bFinished = false;
    bool bHeaderWritten = false;
    int iExportCount = 0;
    int iPage = 1;
};

/// Passes that a page gets before the run fails.
inline constexpr int iPassesPerPage = 3;

/// \param failedPasses  failed passes on the current page, this one included
/// \return              true if the page is tried again
constexpr bool isPageRepeated(int failedPasses)
{
    return failedPasses < iPassesPerPage;
}
