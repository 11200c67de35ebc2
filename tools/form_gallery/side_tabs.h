#pragma once

#include <QTabWidget>

namespace gallery {

/// Tabs on the left with upright titles: room for many pages.
class SideTabs : public QTabWidget
{
public:
    explicit SideTabs(QWidget* parent = nullptr);
};

} // namespace gallery
