#pragma once

#include <QList>
#include <QString>

namespace proof {

/// A window that the window manager shows.
struct ScreenWindow
{
    unsigned long id = 0;
    qint64 pid = 0;
    QString title;
};

/// All windows on the screen, as the window manager lists them. Asked of the X server alone, so
/// that a program which is asleep or busy is seen as well.
QList<ScreenWindow> screenWindows();

} // namespace proof
