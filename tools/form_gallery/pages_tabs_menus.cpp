#include "tools/form_gallery/page_rows.h"
#include "tools/form_gallery/sample_windows.h"

#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolButton>

namespace gallery {

using namespace mod_form_qt;

namespace {

QTabWidget* ownTabs(PageContext& context)
{
    auto* tabs = new QTabWidget(context.owner());
    tabs->setTabPosition(QTabWidget::South);
    return tabs;
}

QWidget* ownPage(PageContext& context)
{
    auto* page = new QLabel(tr("Diese Seite ist ein Widget des Aufrufers."), context.owner());
    page->setAlignment(Qt::AlignCenter);
    return page;
}

QToolButton* toolButton(PageContext& context)
{
    auto* button = new QToolButton(context.owner());
    button->setText(tr("Ansicht"));
    button->setPopupMode(QToolButton::InstantPopup);
    return button;
}

/// A menu of two checkable entries and one that is none; the engine finds their values by the id.
QMenu* viewMenu(PageContext& context)
{
    auto* menu = new QMenu(tr("Ansicht"), context.owner());
    for (const QString& name : {tr("Lineal"), tr("Raster")}) {
        QAction* action = menu->addAction(name);
        action->setCheckable(true);
        action->setProperty(INFO::menuIDKey.toLatin1().constData(), "show_" + name.toLower());
    }
    menu->addSeparator();
    menu->addAction(tr("Zurücksetzen"))
        ->setProperty(INFO::menuIDKey.toLatin1().constData(), "reset");
    return menu;
}

/// A button that starts a window and shows how it ended.
INFO starter(PageContext& context, const SampleWindow& window)
{
    const auto start = [&context, window](const CallbackContext& ctx) {
        if (ctx.type == kAfterAction && context.start)
            INFO::setData(ctx.map, "result", QString::number(context.start(window)), true);
        return 1;
    };
    return {E_BUTTON, A_NONE, window.title + "...", {}, window.name, start};
}

} // namespace

QList<INFO> tabs(PageContext& context)
{
    QList<INFO> rows;
    // clang-format off
    rows << group(tr("E_TABWIDGET mit dem Wert 1: die zweite Seite ist vorn"))
         <<     INFO(E_TABWIDGET, A_NONE, {}, 1, "page")
         <<     INFO(E_TAB, A_NONE, tr("Erste"), {}, "tab_first")
         <<         sample({E_LINEEDIT, A_NONE, tr("Auf Seite 1"), "", "on_first"})
         <<     INFO(E_TAB, A_NONE, tr("Zweite"), {}, "tab_second")
         <<         sample({E_LINEEDIT, A_NONE, tr("Auf Seite 2"), tr("bis zum nächsten E_TAB"),
                            "on_second"})
         <<         sample({E_CHECKBOX, A_NONE, tr("Noch eine Zeile"), true, "on_second_too"})
         <<     INFO(E_TAB, A_NONE, tr("Fremde"), ownPage(context), "tab_own")
         <<     INFO(E_TAB_END)
         << end()
         << group(tr("E_TABWIDGET mit einem QTabWidget des Aufrufers: Reiter unten"))
         <<     INFO(E_TABWIDGET, A_NONE, {}, ownTabs(context), "own_tabs")
         <<     INFO(E_TAB, A_NONE, tr("Hier"))
         <<         INFO(E_LABEL, A_NONE, tr("Beim Blättern kommen kAfterDataChanged, kKillActive "
                                             "und kSetActive."))
         <<     INFO(E_TAB, A_NONE, tr("Dort"))
         <<         INFO(E_LABEL, A_NONE, tr("Auch fremde Tabs nehmen Seiten aus Zeilen auf."))
         <<     INFO(E_TAB_END)
         << end();
    // clang-format on
    return rows;
}

QList<INFO> menusAndWindows(PageContext& context)
{
    auto* alone = new QAction(tr("Einzelne Aktion"), context.owner());
    alone->setCheckable(true);
    auto* onButton = new QMenu(context.owner());

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("E_MENU hängt ein QMenu an das Widget davor"))
         <<     sample({E_WIDGET, A_ALIGN_LEFT, tr("An einem QToolButton"), toolButton(context),
                        "tool"})
         <<     INFO(E_MENU, A_NONE, {}, viewMenu(context), "")
         <<     sample({E_BUTTON, A_NONE, tr("An einer Schaltfläche"), {}, "menu_button"})
         <<     INFO(E_MENU, A_NONE, {}, onButton)
         <<     INFO(E_ACTION, A_NONE, {}, alone, "single_action")
         <<     note(tr("Eine ankreuzbare Aktion legt ihren Zustand unter ihrer <i>menuid</i> "
                        "oder dem Schlüssel ihrer Zeile ab. Menüleiste und Statusleiste zeigt das "
                        "Hauptfenster."))
         << end()
         << group(tr("Fenster aus Zeilen"));
    for (const SampleWindow& window : sampleWindows())
        rows << starter(context, window) << note(window.explanation);
    rows << sample({E_LINEEDIT, A_READONLY, tr("Letztes Ergebnis"), "", "result"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
