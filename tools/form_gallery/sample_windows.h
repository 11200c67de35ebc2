#pragma once

#include "tools/form_gallery/gallery_pages.h"
#include "tools/form_gallery/observer.h"

namespace gallery {

/// A window that a page starts.
struct SampleWindow
{
    QString name; ///< key of the button that starts it
    QString title;
    QString explanation; ///< rich text
    int mainType = 0; ///< type of its main row
    QList<mod_form_qt::INFO> (*rows)(PageContext& context) = nullptr;
    /// Runs it until it closes. \return  the result of the window
    int (*run)(QWidget* parent, const QString& title, const QList<mod_form_qt::INFO>& rows,
               PageContext& context, const Observer& observer) = nullptr;
};

QList<SampleWindow> sampleWindows();

/// Runs a window until it closes.
/// \param observer  gets all its callbacks
/// \return          the result of the window
int startWindow(const SampleWindow& window, QWidget* parent, const Observer& observer);

} // namespace gallery
