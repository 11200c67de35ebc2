#include "tools/form_gallery/page_rows.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QSlider>
#include <QStyle>

namespace gallery {

using namespace mod_form_qt;

namespace {

/// The lines of a menu, as they are shown beside it.
const QStringList& lines()
{
    static const QStringList text {
        tr("{{id}{bigger}}{{keysequence}{Ctrl++}}&Größer\\n"),
        tr("{{id}{smaller}}{{keysequence}{Ctrl+-}}&Kleiner\\n"),
        tr("[s]"),
        tr("&Raster"),
        tr("{{id}{grid}}&Zeigen[x;1]\\n"),
        tr("{{id}{fine}}&Fein[x;1;1]\\n"),
        tr("{{id}{coarse}}&Grob[x;0;1]\\n"),
        QStringLiteral("\\n"),
        tr("{{id}{tip}}{{font}{DejaVu Serif,12}}{{enabled}{0}}In Serifen, gesperrt\\n"),
    };
    return text;
}

/// A title would take the options out of the line.
QString asShown(const QString& line)
{
    return line.toHtmlEscaped().replace(u'{', QLatin1String("&#123;"));
}

/// A menu that is built of lines; the root belongs to the page.
QMenu* treeMenu(PageContext& context)
{
    TREE_MENU menu(tr("&Ansicht"));
    for (QString line : lines())
        menu << line.replace(QLatin1String("\\n"), QLatin1String("\n"));
    menu.menu()->setParent(context.owner(), menu.menu()->windowFlags());
    return menu;
}

QIcon icon(QStyle::StandardPixmap pixmap)
{
    return QApplication::style()->standardIcon(pixmap);
}

/// A menu whose entries are made one by one.
QMenu* entryMenu(PageContext& context)
{
    auto* menu = new QMenu(tr("&Bearbeiten"), context.owner());
    const Roles trash = {{Qt::DecorationRole, icon(QStyle::SP_TrashIcon)},
                         {Qt::StatusTipRole, tr("Wirft weg")}};
    QAction* remove = addAction(menu, nullptr, tr("&Löschen"), "remove", -1, -1, trash, true, true,
                                QKeySequence::Delete);
    addAction(menu, remove, tr("&Kopieren"), "copy", -1, -1,
              {{Qt::DecorationRole, icon(QStyle::SP_FileIcon)}});
    addSeparator(menu, nullptr);
    QMenu* more = addMenu(menu, nullptr, tr("&Schalter"), "switches");
    addAction(more, nullptr, tr("Eins"), "one", 1);
    addAction(more, nullptr, tr("Zwei"), "two", 0);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setValue(40);
    addMenuWidget(menu, nullptr, slider, "slider");
    return menu;
}

/// What a menu looks like when it is open, on a page that shows it closed.
INFO picture(const QString& title, QMenu* menu)
{
    return {E_IMAGE, A_ADJUST_WIDTH_TO_CONTENTS | A_ADJUST_HEIGHT_TO_CONTENTS, title,
            QVariant(menu->grab().toImage())};
}

/// Finds an entry of the page by its identifier.
QAction* entry(const QMap<QString, QVariant>* map, const char* id)
{
    std::vector<PlacedMenuEntry> entries;
    INFO::collectMenuData(map, &entries);
    return findMenuDataByID<QAction>(entries, id);
}

int offer(const CallbackContext& ctx)
{
    QAction* remove = ctx.type == kAfterDataChanged ? entry(ctx.map, "remove") : nullptr;
    if (remove)
        remove->setEnabled(ctx.value.toBool());
    return 1;
}

} // namespace

QList<INFO> builtMenus(PageContext& context)
{
    QMenu* tree = treeMenu(context);
    QMenu* entries = entryMenu(context);
    QString shown;
    for (const QString& line : lines())
        shown += QStringLiteral("<br><code>&lt;&lt; \"%1\"</code>").arg(asShown(line));

    QList<INFO> rows;
    // clang-format off
    rows << INFO(E_MENUBAR, A_NONE, {}, {}, "menu_bar")
         << INFO(E_MENU, A_NONE, {}, tree)
         << INFO(E_MENU, A_NONE, {}, entries)
         << group(tr("TREE_MENU baut ein Menü aus Zeilen"))
         <<     open(E_LAYOUT_H)
         <<         note(tr("Eine Zeile öffnet ein Untermenü; endet sie mit \\n, ist sie ein "
                            "Eintrag, und das Menü bleibt. \\n allein führt zurück:") + shown)
         <<         picture({}, tree)
         <<     end()
         <<     note(tr("Unter <i>Raster</i>: Zeigen ist ein Schalter, Fein und Grob schließen "
                        "einander aus. Ihr Zustand steht unter der <i>id</i> in der Datentabelle."))
         << end()
         << group(tr("addAction, addMenu und Verwandte machen einen Eintrag nach dem anderen"))
         <<     open(E_LAYOUT_H)
         <<         note(tr("Mit Kennung, Schalter, Gruppe, Rollen und Tastenkürzel; "
                            "<i>addMenuWidget</i> nimmt ein Widget auf, hier einen Schieber."))
         <<         picture({}, entries)
         <<     end()
         <<     sample({E_CHECKBOX, A_NONE, tr("Löschen anbieten"), true, "may_remove",
                        ContextCallback(offer)})
         <<     note(tr("<i>findMenuDataByID</i> findet den Eintrag unter den Menüs des Formulars."))
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
