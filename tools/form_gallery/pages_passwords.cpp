#include "tools/form_gallery/page_rows.h"

namespace gallery {

using namespace mod_form_qt;

namespace {

bool isOn(const CallbackContext& ctx, const char* key)
{
    return INFO::getBaseValue(ctx.map, key).toBool();
}

void show(const CallbackContext& ctx, int code, const QString& pwd)
{
    QString text = tr("abgebrochen");
    if (code != 0)
        text = pwd.isEmpty() ? tr("leer: das Passwort wird gelöscht") : pwd;
    INFO::setData(ctx.map, "answer", text, true);
}

int ask(const CallbackContext& ctx)
{
    if (ctx.type != kAfterAction)
        return 1;
    QString pwd;
    const QString expected = INFO::getBaseValue(ctx.map, "expected").toString();
    const int code = checkPWD(ctx.mainWidget, {}, {}, pwd, isOn(ctx, "show_options"), expected,
                              QLineEdit::Password);
    show(ctx, code, pwd);
    return 1;
}

int set(const CallbackContext& ctx)
{
    if (ctx.type != kAfterAction)
        return 1;
    QString pwd;
    const int minChars = INFO::getBaseValue(ctx.map, "min_chars").toInt();
    const int code = createPWD(ctx.mainWidget, {}, {}, pwd, isOn(ctx, "show_options"), minChars,
                               isOn(ctx, "allow_empty"), QLineEdit::Password);
    show(ctx, code, pwd);
    return 1;
}

} // namespace

QList<INFO> passwords(PageContext&)
{
    const QVariant length =
        with(tr("Mindestlänge"),
             {{Option::spinBoxKey, true}, {Option::minKey, 0}, {Option::maxKey, 99}});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Beide Dialoge"))
         <<     sample({E_CHECKBOX, A_NONE, tr("Mit Optionen"), true, "show_options"})
         <<     note(tr("Das Passwort lässt sich dann zeigen und beim Festlegen auch erzeugen. Was "
                        "am Generator eingestellt ist, gilt bis zum Ende des Programms."))
         << end()
         << group(tr("checkPWD fragt nach einem Passwort"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Erwartet"), tr("geheim"), "expected"})
         <<     note(tr("Ist nichts erwartet, gilt jede Eingabe."))
         <<     sample({E_BUTTON, A_NONE, tr("Abfragen..."), {}, "check_pwd", ContextCallback(ask)})
         << end()
         << group(tr("createPWD lässt ein Passwort festlegen"))
         <<     sample({E_NUMBER, A_IMMEDIATE_DATA_UPDATE, length, 6, "min_chars"})
         <<     sample({E_CHECKBOX, A_NONE, tr("Darf leer sein"), false, "allow_empty"})
         <<     sample({E_BUTTON, A_NONE, tr("Festlegen..."), {}, "new_pwd", ContextCallback(set)})
         << end()
         << group(tr("Was herauskam"))
         <<     sample({E_LINEEDIT, A_READONLY, tr("Ergebnis"), "", "answer"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
