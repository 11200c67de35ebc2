#pragma once

#include <QDialog>
#include <QWidget>

#include <algorithm>

/// True while a dialog or message box with that title stands before \a window.
///
/// What opens one can come a second time meanwhile: assistive technology presses buttons behind a
/// dialog, and the end of the desktop session closes the window behind it.
inline bool isDialogOpen(const QWidget* window, const QString& title)
{
    const auto dialogs = window->findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(dialogs.begin(), dialogs.end(), [&title](const QDialog* dialog) {
        return dialog->isVisible() && dialog->windowTitle() == title;
    });
}
