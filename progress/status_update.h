#pragma once

#include "progress/export.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>

namespace mod_progress_qt {

/// Progress in the main window's status bar. An application that wants it gives a label, a progress
/// bar, or both, and sets `active`; on the GUI thread, before any work starts.
class MOD_PROGRESS_QT_EXPORT StatusUpdate
{
public:
    /// Whether the status bar is to be used.
    static inline bool active = false;
    /// Shows the text; may be null.
    static inline QPointer<QLabel> label;
    /// Shows the percentage, from 0 to 100; may be null.
    static inline QPointer<QProgressBar> progress;
    /// Width, in pixels, for whoever makes the progress bar.
    static inline int barWidth = 120;

    /// GUI thread only.
    /// \param flags  of the display, see `CustomProgressBar::Flag`
    /// \return       true if a display with these flags is shown in the status bar
    static bool isInForce(int flags);

    /// Shows a text and a percentage once the GUI thread gets to it; does nothing while there is no
    /// status bar in use. From any thread.
    /// \param percent  below 0 hides the bar
    static void showMessage(const QString& text, int percent);
};

} // namespace mod_progress_qt
