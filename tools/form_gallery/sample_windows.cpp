#include "tools/form_gallery/sample_windows.h"

#include "tools/form_gallery/page_rows.h"

#include <QActionGroup>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>

namespace gallery {

using namespace mod_form_qt;

namespace {

// ---------------------------------------------------------------- dialog

QList<INFO> dialogRows(PageContext&)
{
    const QVariant initials =
        with(tr("Kürzel"), {{Option::minCharsKey, 2}, {Option::maxCharsKey, 4}});
    const QVariant table =
        with(tr("Tabelle"),
             {{Option::regexPatternKey, "*.csv"}, {Option::regexPatternWildcardKey, true}});

    QList<INFO> rows;
    // clang-format off
    rows << INFO(E_LABEL, A_LABEL_WORDWRAP | A_FLIP_LABEL_BOLD,
                 tr("OK prüft die Felder von oben nach unten und nennt das erste, das nicht "
                    "stimmt. Hier ist noch keines in Ordnung."))
         << open(E_LAYOUT_FORM)
         <<     INFO(E_LINEEDIT, A_MANDATORY, tr("Name"), "", "name")
         <<     INFO(E_LINEEDIT, A_NONE, initials, "A", "initials")
         <<     INFO(E_LINEEDIT, A_NONE, table, "export.txt", "table")
         <<     INFO(E_BROWSE_FOLDER, A_FILE_MUST_EXIST, tr("Ordner"), "/gibt/es/nicht", "folder")
         <<     INFO(E_COMBOBOX, A_MANDATORY, tr("Kontenrahmen"),
                     items({"SKR03", "SKR04", "SKR49"}), "chart")
         << end()
         << INFO(E_HLINE)
         << INFO::layoutOkHelpCancel();
    // clang-format on
    return rows;
}

int runDialog(QWidget* parent, const QString& title, const QList<INFO>& rows, PageContext& context,
              const Observer& observer)
{
    const auto help = [](const CallbackContext& ctx) {
        if (ctx.type == kAfterAction && ctx.row.eleType == E_HELP_BUTTON)
            QMessageBox::information(
                ctx.mainWidget, tr("Hilfe"),
                tr("Name und Kontenrahmen sind Pflicht, das Kürzel hat 2 bis 4 "
                   "Zeichen, die Tabelle endet auf .csv, den Ordner gibt es."));
        return 1;
    };
    return INFO::createAndExecDialog(parent, title, rows, MF_BOLD_LABELS | MF_PLACE_CENTER,
                                     F_DIALOG_TITLE_MINMAX_CLOSE, &context.map, nullptr,
                                     observed(ContextCallback(help), false, observer))
        .code;
}

// ---------------------------------------------------------------- main window

QAction* addTo(QMenu* menu, const QString& text, const QString& tip, const QString& id)
{
    QAction* action = menu->addAction(text);
    action->setStatusTip(tip);
    action->setProperty(INFO::menuIDKey.toLatin1().constData(), id);
    return action;
}

/// Entries of one group number exclude each other.
QMenu* zoomMenu(PageContext& context)
{
    auto* menu = new QMenu(tr("&Größe"), context.owner());
    for (const int percent : {50, 100, 200}) {
        QAction* action = addTo(menu, tr("%1 %").arg(percent), tr("Nur eine Größe gilt"),
                                QStringLiteral("zoom_%1").arg(percent));
        action->setCheckable(true);
        action->setChecked(percent == 100);
        action->setProperty(INFO::menuGroupNoKey.toLatin1().constData(), 1);
    }
    return menu;
}

QMenu* fileMenu(PageContext& context)
{
    auto* menu = new QMenu(tr("&Datei"), context.owner());
    addTo(menu, tr("&Neu"), tr("Beginnt von vorn"), "new")->setShortcut(QKeySequence::New);
    addTo(menu, tr("&Sichern"), tr("Sichert den Text"), "save")->setShortcut(QKeySequence::Save);
    return menu;
}

QList<INFO> mainWindowRows(PageContext& context)
{
    auto* wrap = new QAction(tr("&Umbrechen"), context.owner());
    wrap->setCheckable(true);
    wrap->setStatusTip(tr("Eine einzelne Aktion, die Zeile E_ACTION"));

    const QVariant size = with({}, {{Option::buildKey(Option::minWidthKey, E_PLAINTEXT), 420}});

    QList<INFO> rows;
    // clang-format off
    rows << INFO(E_MENUBAR)
         << INFO(E_MENU, A_NONE, {}, fileMenu(context))
         << INFO(E_ACTION, A_NONE, {}, wrap, "wrap")
         << INFO(E_MENU, A_NONE, {}, zoomMenu(context))
         << INFO(E_PLAINTEXT, A_HEIGHT_6, size, tr("Die Menüleiste, die Menüs, die Aktion und die "
                                                   "Statusleiste\n"
                 "sind Zeilen. Ein Tipp zu einem Menüpunkt erscheint unten."), "text")
         << open(E_LAYOUT_H)
         <<     INFO(E_CHECKBOX, A_NONE, tr("Darf geschlossen werden"), true, "may_close")
         <<     INFO(E_STRETCH, {}, {}, 1)
         <<     INFO(E_CLOSE_BUTTON)
         << end()
         << INFO(E_STATUSBAR);
    // clang-format on
    return rows;
}

int runMainWindow(QWidget* parent, const QString& title, const QList<INFO>& rows,
                  PageContext& context, const Observer& observer)
{
    const auto react = [](const CallbackContext& ctx) {
        const auto bars = INFO::statusBars(ctx.map);
        auto* label =
            bars.isEmpty() || !bars.first() ? nullptr : bars.first()->findChild<QLabel*>();
        if (label && ctx.type == kInit)
            label->setText(tr("Bereit"));
        else if (label && ctx.type == kAfterAction)
            label->setText(tr("Gewählt: %1").arg(ctx.row.key));
        const bool closes = ctx.type == kClose || ctx.type == kReject;
        return closes && !INFO::getBaseValue(ctx.map, "may_close").toBool() ? 0 : 1;
    };
    return INFO::createAndExecMainWindow(parent, true, title, rows, {}, F_DIALOG_TITLE_MINMAX_CLOSE,
                                         &context.map, nullptr,
                                         observed(ContextCallback(react), false, observer))
        .code;
}

// ---------------------------------------------------------------- a class of its own

/// What an application's dialog looks like: it overrides what it needs.
class NameDialog : public DialogBase
{
public:
    using DialogBase::DialogBase;

protected:
    void setupWindow(const CallbackContext&) override
    {
        if (QLineEdit* edit = lineEditByKey("name"))
            edit->setPlaceholderText(tr("mindestens drei Zeichen"));
    }

    int onAccept(const CallbackContext& ctx) override
    {
        const bool longEnough = INFO::getBaseValue(ctx.map, "name").toString().size() >= 3;
        if (!longEnough)
            INFO::setData(ctx.map, "answer", tr("onAccept lehnt ab: zu kurz"), false);
        return longEnough ? 1 : 0;
    }

    void onHelp(const CallbackContext& ctx) override
    {
        INFO::setData(ctx.map, "answer", tr("onHelp: drei Zeichen genügen"), false);
    }
};

QList<INFO> baseDialogRows(PageContext&)
{
    QList<INFO> rows;
    // clang-format off
    rows << open(E_LAYOUT_FORM)
         <<     INFO(E_LINEEDIT, A_NONE, tr("Name"), "", "name")
         <<     INFO(E_LINEEDIT, A_READONLY, tr("Antwort"), tr("noch keine"), "answer")
         << end()
         << INFO::createOKHelpLinkCancel(tr("Übernehmen"), tr("Hilfe"), tr("Webseite"),
                                         tr("Verwerfen"));
    // clang-format on
    return rows;
}

int runBaseDialog(QWidget* parent, const QString& title, const QList<INFO>& rows,
                  PageContext& context, const Observer& observer)
{
    NameDialog dialog(parent);
    const auto tell = [&observer](const CallbackContext& ctx) { observer(ctx, false, 1); };
    QObject::connect(&dialog, &DialogBase::signalCallback, &dialog, tell);
    QObject::connect(&dialog, &DialogBase::signalAccepted, &dialog, tell);
    QObject::connect(&dialog, &DialogBase::signalRejected, &dialog, tell);
    QObject::connect(&dialog, &DialogBase::signalClosed, &dialog, tell);
    QObject::connect(&dialog, &DialogBase::signalDestroyed, &dialog, tell);
    return dialog.applyLayoutAndStart(true, title, rows, {}, F_DIALOG_TITLE_MINMAX_CLOSE,
                                      &context.map);
}

} // namespace

QList<SampleWindow> sampleWindows()
{
    return {
        {"dialog", tr("Dialog mit Prüfung"),
         tr("<i>INFO::createAndExecDialog</i>: modal, mit OK, Hilfe und Abbrechen; OK prüft die "
            "Felder."),
         E_DIALOG, dialogRows, runDialog},
        {"main_window", tr("Hauptfenster"),
         tr("<i>INFO::createAndExecMainWindow</i>: Menüleiste, Statusleiste, ein Fenster, das sein "
            "Schließen ablehnen kann."),
         E_MAINWINDOW, mainWindowRows, runMainWindow},
        {"base_dialog", tr("Dialog als Klasse"),
         tr("<i>DialogBase</i>: eine Unterklasse überschreibt setupWindow, onAccept und onHelp."),
         E_WIDGET, baseDialogRows, runBaseDialog},
    };
}

int startWindow(const SampleWindow& window, QWidget* parent, const Observer& observer)
{
    QWidget owner;
    PageContext context(&owner);
    const QList<INFO> rows = observed(window.rows(context), observer);
    return window.run(parent, window.title, rows, context, observer);
}

} // namespace gallery
