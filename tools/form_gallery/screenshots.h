#pragma once

#include <QString>

namespace gallery {

class GalleryWindow;

/// \param number  from 1
/// \return        name of a picture, such as "04-schaltflaechen.png": ASCII, lower case
QString pictureName(int number, const QString& title);

/// Writes a picture of each page and of each sample window, one PNG file each. Files of the same
/// names are replaced.
/// \param folder  is made if it does not exist
/// \return        what went wrong, empty on success
QString writeScreenshots(GalleryWindow& window, const QString& folder);

} // namespace gallery
