#include "progress/translation.h"

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
    const QCommandLineOption language(
        "language", "Show the framework's own texts in that language, \"de\" for German.",
        "LANGUAGE");
    parser.addOption(language);
    parser.process(app);
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "progress_gallery: Unexpected argument '%s'.\n",
                     qPrintable(parser.positionalArguments().first()));
        return 1;
    }

    const QLocale locale(parser.value(language));
    // What is no language at all gives that of C, which is English.
    if (parser.isSet(language)
        && (locale == QLocale::c() || !mod_progress_qt::installTranslation(locale))) {
        std::fprintf(stderr, "progress_gallery: There is no translation into '%s'.\n",
                     qPrintable(parser.value(language)));
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
