#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace progress_gallery {

/// One way to run work and to end it.
struct Route
{
    enum class Ending { None, Button, Escape };

    QString title;
    bool modal = true;
    bool statusBar = false;
    bool windowStaysEnabled = false; ///< bit 512
    Ending abortBy = Ending::None; ///< what the pictures show; a user decides for himself
};

QList<Route> routes();

/// Runs some seconds of work.
/// \param flags  of the look; those of the route come from the route
/// \return       what became of it, for the user
QString run(const Route& route, QWidget* parent, int flags);

} // namespace progress_gallery
