#include "tools/progress_gallery/gallery_window.h"

#include "progress/mod_progress_qt.h"

#include "tools/progress_gallery/looks.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollArea>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace progress_gallery {

using namespace mod_progress_qt;

namespace {

using Bar = CustomProgressBar;

/// Pixels around the longest title.
constexpr int buttonPadding = 16;
constexpr int statusMargin = 6;

QWidget* scrollable(QWidget* page)
{
    auto* area = new QScrollArea;
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    return area;
}

} // namespace

GalleryWindow::GalleryWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_pages(new QTabWidget)
{
    m_pages->addTab(makeTryPage(), tr("Ausprobieren"));
    const QList<Sheet> all = sheets();
    for (const Sheet& sheet : all)
        m_pages->addTab(scrollable(makeSheet(sheet)), sheet.title);
    setCentralWidget(m_pages);
    useStatusBar();
    setFlags(Bar::nDefaultFlags | Bar::kFirstLabel);
    setWindowTitle(tr("Galerie der Fortschrittsanzeigen"));
    resize(1340, 750);
}

GalleryWindow::~GalleryWindow()
{
    StatusUpdate::active = false;
}

QWidget* GalleryWindow::makeTryPage()
{
    auto* page = new QWidget;
    auto* layout = new QHBoxLayout(page);
    layout->addWidget(makeFlagsBox());
    layout->addWidget(makeRoutesBox());
    auto* right = new QVBoxLayout;
    auto* sampleBox = new QGroupBox(tr("So sieht es aus"));
    m_sampleLayout = new QVBoxLayout(sampleBox);
    right->addWidget(sampleBox);
    auto* outcomesBox = new QGroupBox(tr("Was daraus wurde"));
    auto* outcomesLayout = new QVBoxLayout(outcomesBox);
    m_outcomes = new QPlainTextEdit;
    m_outcomes->setReadOnly(true);
    outcomesLayout->addWidget(m_outcomes);
    right->addWidget(outcomesBox, 1);
    layout->addLayout(right, 1);
    return page;
}

QWidget* GalleryWindow::makeFlagsBox()
{
    auto* box = new QGroupBox(tr("Merkmale"));
    auto* layout = new QVBoxLayout(box);
    const auto add = [&](int bit, const QString& title) {
        auto* check = new QCheckBox(QStringLiteral("%1 (%2)").arg(title).arg(bit));
        connect(check, &QCheckBox::toggled, this, &GalleryWindow::showSample);
        m_flags.append({bit, check});
        layout->addWidget(check);
    };
    add(Bar::kFirstLabel, tr("Erster Text"));
    add(Bar::kFirstCentred, tr("Erster Text zentriert"));
    add(Bar::kSecondLabel, tr("Zweiter Text"));
    add(Bar::kSecondCentred, tr("Zweiter Text zentriert"));
    add(Bar::kThirdLabel, tr("Dritter Text"));
    add(Bar::kThirdCentred, tr("Dritter Text zentriert"));
    add(Bar::kWrapLabels, tr("Texte umbrechen"));
    add(Bar::kSquares, tr("Quadrate"));
    add(Bar::kCanAbort, tr("Abbruch"));
    layout->addStretch();
    return box;
}

QWidget* GalleryWindow::makeRoutesBox()
{
    auto* box = new QGroupBox(tr("Starten"));
    auto* layout = new QVBoxLayout(box);
    const auto add = [&](const QString& title, const std::function<void()>& action) {
        auto* button = new QPushButton(title);
        button->setMinimumWidth(button->sizeHint().width() + buttonPadding);
        connect(button, &QPushButton::clicked, this, action);
        layout->addWidget(button);
    };
    const QList<Route> all = routes();
    QList<Route> shown;
    for (const Route& route : all) {
        // Those of one way differ only in how the pictures end them.
        const auto sameWay = [&route](const Route& other) {
            return other.modal == route.modal && other.statusBar == route.statusBar
                && other.windowStaysEnabled == route.windowStaysEnabled;
        };
        if (std::none_of(shown.cbegin(), shown.cend(), sameWay)) {
            add(route.title, [this, route] { start(route); });
            shown << route;
        }
    }
    layout->addSpacing(layout->spacing());
    add(tr("Beispiel mit Dialogen"), [this] { showExample(false); });
    add(tr("Beispiel in der Statusleiste"), [this] { showExample(true); });
    layout->addStretch();
    return box;
}

void GalleryWindow::useStatusBar()
{
    m_statusLabel = new QLabel(tr("Bereit"));
    m_statusLabel->setContentsMargins(statusMargin, 0, 0, 0);
    m_statusProgress = new QProgressBar;
    m_statusProgress->setFixedWidth(StatusUpdate::barWidth);
    m_statusProgress->hide();
    statusBar()->addWidget(m_statusLabel);
    statusBar()->addPermanentWidget(m_statusProgress);
    StatusUpdate::label = m_statusLabel;
    StatusUpdate::progress = m_statusProgress;
    StatusUpdate::active = true;
}

int GalleryWindow::flags() const
{
    int flags = 0;
    for (const auto& [bit, check] : m_flags)
        flags |= check->isChecked() ? bit : 0;
    return flags;
}

void GalleryWindow::setFlags(int flags)
{
    for (const auto& [bit, check] : std::as_const(m_flags))
        check->setChecked(flags & bit);
    showSample();
}

void GalleryWindow::showSample()
{
    delete m_sample;
    m_sample = makeSample(flags(), Bar::nDefaultButtons);
    // As wide as in its dialog.
    m_sampleLayout->addWidget(m_sample, 0, Qt::AlignHCenter);
}

void GalleryWindow::start(const Route& route)
{
    // Where the window stays enabled, it would be started once more.
    if (ProgressDialog::hasOpenDialogs(this, false, false)) {
        m_outcomes->appendPlainText(tr("%1: Es läuft schon etwas.").arg(route.title));
        return;
    }
    const QPointer<GalleryWindow> guard(this);
    const QString outcome = run(route, this, flags());
    if (guard)
        m_outcomes->appendPlainText(QStringLiteral("%1: %2").arg(route.title, outcome));
}

void GalleryWindow::showExample(bool statusBar)
{
    if (!ProgressDialog::hasOpenDialogs(this, false, false))
        ProgressDialog::Example(this, statusBar, false, 0);
}

QStringList GalleryWindow::pageTitles() const
{
    QStringList titles;
    for (int index = 0; index < m_pages->count(); ++index)
        titles << m_pages->tabText(index);
    return titles;
}

void GalleryWindow::showPage(int index)
{
    m_pages->setCurrentIndex(index);
}

QStringList GalleryWindow::outcomes() const
{
    return m_outcomes->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

int GalleryWindow::statusPercent() const
{
    return m_statusProgress->isHidden() ? -1 : m_statusProgress->value();
}

} // namespace progress_gallery
