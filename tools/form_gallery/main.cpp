#include "tools/form_gallery/gallery_window.h"
#include "tools/form_gallery/screenshots.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("gallery");

    QCommandLineParser parser;
    parser.setApplicationDescription("Shows every row type and attribute of the form engine.");
    parser.addHelpOption();
    const QCommandLineOption screenshots("screenshots",
                                         "Write a picture of each page to DIR and end.", "DIR");
    parser.addOption(screenshots);
    parser.process(app);
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "gallery: Unexpected argument '%s'.\n",
                     qPrintable(parser.positionalArguments().first()));
        return 1;
    }

    // The engine tells there what it finds in menus; QT_LOGGING_RULES brings it back.
    QLoggingCategory::setFilterRules("default.debug=false");
    gallery::GalleryWindow window;
    window.show();
    if (!parser.isSet(screenshots))
        return QApplication::exec();

    const QString error = gallery::writeScreenshots(window, parser.value(screenshots));
    if (error.isEmpty())
        return 0;
    std::fprintf(stderr, "gallery: %s\n", qPrintable(error));
    return 1;
}
