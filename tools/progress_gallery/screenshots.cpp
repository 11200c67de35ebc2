#include "tools/progress_gallery/screenshots.h"

#include "progress/mod_progress_qt.h"

#include "tools/progress_gallery/gallery_window.h"
#include "tools/progress_gallery/looks.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

#include <memory>

namespace progress_gallery {

using namespace mod_progress_qt;

namespace {

constexpr int lookAgainMs = 10;

QPixmap pictureOf(QWidget& widget)
{
    // Without an event loop a dialog that is over stays, and what it shows in the status bar.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // A layout gets its final size in several steps.
    for (int pass = 0; pass < 3; ++pass)
        QCoreApplication::processEvents();
    return widget.grab();
}

ProgressDialog* openDialog()
{
    const QList<QPointer<ProgressDialog>> open = ProgressDialog::all();
    return open.isEmpty() ? nullptr : open.first().data();
}

bool isOnScreen(const QWidget& dialog)
{
    return dialog.isVisible() && !dialog.testAttribute(Qt::WA_DontShowOnScreen);
}

/// Half of the squares, or half of the bar.
bool isHalfDone(const GalleryWindow& window, const ProgressDialog& dialog)
{
    if (!isOnScreen(dialog))
        return window.statusPercent() >= 50;
    int filled = 0;
    const auto buttons = dialog.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
        filled += button->styleSheet() == CustomProgressBar::defaultSheet1 ? 1 : 0;
    return filled >= CustomProgressBar::nDefaultButtons / 2;
}

/// The window, and the dialog in front of it.
QPixmap pictureOfRun(GalleryWindow& window, ProgressDialog& dialog)
{
    QPixmap picture = window.grab();
    if (!isOnScreen(dialog))
        return picture;
    const QPixmap front = dialog.grab();
    // Lower than on a desktop, where it would hide what became of the runs before.
    const QPoint corner((window.width() - dialog.width()) / 2,
                        (window.height() - dialog.height()) * 3 / 4);
    QPainter painter(&picture);
    painter.drawPixmap(corner, front);
    painter.drawRect(QRect(corner, dialog.size()).adjusted(-1, -1, 0, 0));
    return picture;
}

void pressEscape(QWidget* receiver)
{
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &key);
}

void end(const Route& route, ProgressDialog& dialog)
{
    if (route.abortBy == Route::Ending::None)
        return;
    const auto buttons = dialog.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (route.abortBy == Route::Ending::Button && button->isDefault()) {
            button->click();
            return;
        }
    }
    pressEscape(&dialog);
}

QPixmap pictureOf(const Route& route, GalleryWindow& window)
{
    QPixmap picture;
    QTimer looking;
    QObject::connect(&looking, &QTimer::timeout, &window, [&] {
        ProgressDialog* const dialog = openDialog();
        if (dialog == nullptr || !isHalfDone(window, *dialog))
            return;
        looking.stop();
        picture = pictureOfRun(window, *dialog);
        end(route, *dialog);
    });
    looking.start(lookAgainMs);
    window.start(route);
    return picture;
}

QString fileName(int number, const QString& title)
{
    QString name = title.toLower();
    for (QChar& character : name) {
        if (!character.isLetterOrNumber())
            character = QLatin1Char('-');
    }
    while (name.contains(QLatin1String("--")))
        name.replace(QLatin1String("--"), QLatin1String("-"));
    return QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(name);
}

} // namespace

QString writeScreenshots(GalleryWindow& window, const QString& folder)
{
    if (!QDir().mkpath(folder))
        return GalleryWindow::tr("Der Ordner '%1' kann nicht angelegt werden.").arg(folder);
    const QDir target(folder);
    int number = 0;
    QString error;
    const auto save = [&](const QPixmap& picture, const QString& title) {
        const QString path = target.filePath(fileName(++number, title));
        if (error.isEmpty() && !picture.save(path, "PNG"))
            error = GalleryWindow::tr("Die Datei '%1' kann nicht geschrieben werden.").arg(path);
    };

    window.showPage(0);
    save(pictureOf(window), window.pageTitles().constFirst());
    const QList<Sheet> all = sheets();
    for (const Sheet& sheet : all) {
        const std::unique_ptr<QWidget> page(makeSheet(sheet));
        page->adjustSize();
        if (error.isEmpty())
            save(pictureOf(*page), sheet.title);
    }
    const QList<Route> ways = routes();
    for (const Route& route : ways) {
        if (error.isEmpty())
            save(pictureOf(route, window), route.title);
    }
    if (error.isEmpty())
        save(pictureOf(window), GalleryWindow::tr("Danach"));
    return error;
}

} // namespace progress_gallery
