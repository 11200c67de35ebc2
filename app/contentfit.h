#pragma once

#include <QSize>

class QScrollArea;

/// Lets a scroll area grow up to the height of its content and not beyond, also when the content
/// changes its size later.
void limitToContent(QScrollArea* area);

/// \return  the size at which a scroll area shows all of its content without scrolling. Its own
///          size hint stands for a few lines, however large the content
QSize fullSize(const QScrollArea* area);
