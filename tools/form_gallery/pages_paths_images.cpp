#include "tools/form_gallery/page_rows.h"

#include <QDir>
#include <QLinearGradient>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QSlider>

namespace gallery {

using namespace mod_form_qt;

namespace {

/// A landscape, painted here: the gallery needs no files.
QImage landscape(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor("#5b9bd5"));
    sky.setColorAt(1, QColor("#dcebf7"));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#ffd54f"));
    const int sun = size.height() / 4;
    painter.drawEllipse(size.width() - 2 * sun, sun / 2, sun, sun);
    painter.setBrush(QColor("#3f7d4e"));
    painter.drawPolygon(
        QPolygon({QPoint(0, size.height()), QPoint(size.width() / 3, size.height() / 3),
                  QPoint(size.width(), size.height())}));
    return image;
}

QSlider* slider(PageContext& context)
{
    auto* widget = new QSlider(Qt::Horizontal, context.owner());
    widget->setValue(30);
    return widget;
}

QProgressBar* progress(PageContext& context)
{
    auto* widget = new QProgressBar(context.owner());
    widget->setValue(60);
    return widget;
}

} // namespace

QList<INFO> paths(PageContext&)
{
    const QString folder = QDir::tempPath();
    const QVariant filtered = with(tr("Öffnen, mit Filter"),
                                   {{Option::fileFilterKey, tr("Tabellen (*.csv *.ods)")},
                                    {Option::currentDirKey, QDir::rootPath()}});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Feld und Schaltfläche"))
         <<     sample({E_SHOW_FOLDER, A_NONE, tr("Ordner zeigen"), folder, "show"})
         <<     sample({E_BROWSE_FOLDER, A_NONE, tr("Ordner wählen"), folder, "folder"})
         <<     sample({E_BROWSE_FILE_OPEN, A_NONE, filtered, "", "open"})
         <<     sample({E_BROWSE_FILE_SAVE, A_NONE, tr("Datei speichern"), folder + "/export.csv",
                        "save"})
         <<     sample({E_BROWSE_FOLDER, A_NONE, tr("Eigener Text;Suchen..."), "", "own_text"})
         <<     sample({E_BROWSE_FOLDER, A_READONLY, tr("Nur über den Dialog"), folder, "readonly"})
         <<     sample({E_BROWSE_FILE_OPEN, A_FILE_MUST_EXIST, tr("Muss es geben"),
                        tr("/gibt/es/nicht"), "must_exist"})
         << end()
         << group(tr("Die Schaltfläche allein"))
         <<     sample({E_BROWSE_FOLDER_BUTTON, A_NONE, tr("Ordner..."), folder, "folder_button"})
         <<     sample({E_BROWSE_FILE_OPEN_BUTTON, A_NONE, tr("Datei öffnen..."), "",
                        "open_button"})
         <<     sample({E_BROWSE_FILE_SAVE_BUTTON, A_NONE, {}, "", "save_button"})
         <<     note(tr("Die letzte hat keinen Titel und zeigt den Text ihres Zeilentyps. Der "
                        "gewählte Pfad steht nur in der Datentabelle."))
         << end();
    // clang-format on
    return rows;
}

QList<INFO> images(PageContext& context)
{
    const QVariant picture = landscape(QSize(150, 90));
    const QVariant tall =
        with(tr("Füllt den Platz"), {{Option::buildKey(Option::minHeightKey, E_IMAGE), 90}});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Bilder; dieses hier ist 150 x 90 Bildpunkte groß"))
         <<     sample({E_IMAGE, A_NONE, tall, picture, "image"})
         <<     sample({E_IMAGE, A_ADJUST_WIDTH_TO_CONTENTS | A_ALIGN_LEFT, tr("Breite des Bilds"),
                        picture, "image_width"})
         <<     sample({E_IMAGE, A_ADJUST_HEIGHT_TO_CONTENTS, tr("Höhe des Bilds"), picture,
                        "image_height"})
         <<     sample({E_IMAGE, A_ADJUST_WIDTH_TO_CONTENTS | A_ADJUST_HEIGHT_TO_CONTENTS
                            | A_ALIGN_LEFT,
                        tr("Genau so groß"), picture, "image_both"})
         << end()
         << group(tr("Widgets, die der Aufrufer mitbringt"))
         <<     sample({E_WIDGET, A_NONE, tr("Schieber"), slider(context), "slider"})
         <<     sample({E_WIDGET, A_NONE, tr("Fortschritt"), progress(context), "progress"})
         <<     sample({E_WIDGET, A_NONE, tr("Eingabe, verdrahtet"), new QLineEdit(context.owner()),
                        "own_edit"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
