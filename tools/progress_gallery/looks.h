#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace progress_gallery {

/// One combination of flags that looks like no other.
struct Look
{
    int flags = 0;
    QString caption; ///< its bits, such as "2 + 16"
};

/// Looks that are shown together.
struct Sheet
{
    QString title;
    QList<Look> looks;
};

/// All looks there are.
QList<Sheet> sheets();

/// The flags of a look that is the same as that of \a flags: without bits that change nothing.
int lookOf(int flags);

/// A display with these flags, half of its work done. It belongs to the caller.
QWidget* makeSample(int flags, int squares);

/// All looks of a sheet with their captions. It belongs to the caller.
QWidget* makeSheet(const Sheet& sheet);

} // namespace progress_gallery
