#pragma once

#include <QString>

namespace progress_gallery {

class GalleryWindow;

/// Writes a picture of each page and one of each route in the middle of its run, as PNG files.
/// Files of the same names are replaced.
/// \param folder  is made if it does not exist
/// \return        what went wrong, empty on success
QString writeScreenshots(GalleryWindow& window, const QString& folder);

} // namespace progress_gallery
