#include "tools/form_gallery/screenshots.h"

#include "tools/form_gallery/gallery_window.h"
#include "tools/form_gallery/sample_windows.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QPixmap>

namespace gallery {

using namespace mod_form_qt;

namespace {

QPixmap pictureOf(QWidget& widget)
{
    // A layout gets its final size in several steps.
    for (int pass = 0; pass < 3; ++pass)
        QCoreApplication::processEvents();
    return widget.grab();
}

/// Takes a picture of the window that is running, and closes it.
void takeAndClose(QWidget* running, QPixmap& picture)
{
    picture = pictureOf(*running);
    if (auto* dialog = qobject_cast<QDialog*>(running))
        dialog->reject();
    else
        running->close();
}

QPixmap pictureOf(const SampleWindow& sample, QWidget& parent)
{
    QPixmap picture;
    QTimer waiting;
    QObject::connect(&waiting, &QTimer::timeout, &parent, [&waiting, &picture] {
        if (QWidget* running = QApplication::activeModalWidget()) {
            waiting.stop();
            takeAndClose(running, picture);
        }
    });
    waiting.start(0);
    startWindow(sample, &parent, [](const CallbackContext&, bool, int) {});
    return picture;
}

} // namespace

QString pictureName(int number, const QString& title)
{
    static const QList<std::pair<QString, QString>> umlauts {
        {QStringLiteral("ä"), QStringLiteral("ae")},
        {QStringLiteral("ö"), QStringLiteral("oe")},
        {QStringLiteral("ü"), QStringLiteral("ue")},
        {QStringLiteral("ß"), QStringLiteral("ss")}};
    QString text = title.toLower();
    for (const auto& [umlaut, ascii] : umlauts)
        text.replace(umlaut, ascii);
    QString name = QString::number(number).rightJustified(2, u'0');
    bool gap = true;
    for (const QChar character : std::as_const(text)) {
        const bool kept = character.unicode() < 128 && character.isLetterOrNumber();
        if (kept && gap)
            name += u'-';
        if (kept)
            name += character;
        gap = !kept;
    }
    return name + QStringLiteral(".png");
}

QString writeScreenshots(GalleryWindow& window, const QString& folder)
{
    if (!QDir().mkpath(folder))
        return tr("Der Ordner '%1' kann nicht angelegt werden.").arg(folder);
    const QDir target(folder);
    int number = 0;
    const auto save = [&](const QPixmap& picture, const QString& title) {
        const QString path = target.filePath(pictureName(++number, title));
        return picture.save(path, "PNG")
            ? QString()
            : tr("Die Datei '%1' kann nicht geschrieben werden.").arg(path);
    };

    QString error;
    const QList<Page> all = pages();
    for (int index = 0; index < all.size() && error.isEmpty(); ++index) {
        window.showPage(index);
        error = save(pictureOf(window), all.at(index).title);
    }
    const QList<SampleWindow> samples = sampleWindows();
    for (const SampleWindow& sample : samples) {
        if (error.isEmpty())
            error = save(pictureOf(sample, window), sample.title);
    }
    return error;
}

} // namespace gallery
