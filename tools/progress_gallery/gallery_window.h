#pragma once

#include "tools/progress_gallery/routes.h"

#include <QList>
#include <QMainWindow>

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QTabWidget;
class QVBoxLayout;

namespace progress_gallery {

/// All looks, and a page to put one together and to run work with it. Its status bar shows
/// progress.
class GalleryWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget* parent = nullptr);
    ~GalleryWindow() override;
    Q_DISABLE_COPY_MOVE(GalleryWindow)

    /// The flags that are chosen.
    int flags() const;
    void setFlags(int flags);

    /// Runs work with the chosen flags and notes what became of it.
    void start(const Route& route);

    /// Titles of the pages.
    QStringList pageTitles() const;
    void showPage(int index);

    /// The lines about the runs so far.
    QStringList outcomes() const;
    int statusPercent() const;

private:
    QWidget* makeTryPage();
    QWidget* makeFlagsBox();
    QWidget* makeRoutesBox();
    void useStatusBar();
    void showSample();
    void showExample(bool statusBar);

    QTabWidget* m_pages;
    QList<std::pair<int, QCheckBox*>> m_flags;
    QVBoxLayout* m_sampleLayout = nullptr;
    QWidget* m_sample = nullptr;
    QPlainTextEdit* m_outcomes = nullptr;
    QLabel* m_statusLabel = nullptr;
    QProgressBar* m_statusProgress = nullptr;
};

} // namespace progress_gallery
