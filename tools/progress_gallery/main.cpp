#include "tools/progress_gallery/gallery_window.h"
#include "tools/progress_gallery/screenshots.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("progress_gallery");

    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Shows every look of the progress framework and every way to run work.");
    parser.addHelpOption();
    const QCommandLineOption screenshots(
        "screenshots", "Write a picture of each page and run to DIR and end.", "DIR");
    parser.addOption(screenshots);
    parser.process(app);
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "progress_gallery: Unexpected argument '%s'.\n",
                     qPrintable(parser.positionalArguments().first()));
        return 1;
    }

    progress_gallery::GalleryWindow window;
    window.show();
    if (!parser.isSet(screenshots))
        return QApplication::exec();

    const QString error = progress_gallery::writeScreenshots(window, parser.value(screenshots));
    if (error.isEmpty())
        return 0;
    std::fprintf(stderr, "progress_gallery: %s\n", qPrintable(error));
    return 1;
}
