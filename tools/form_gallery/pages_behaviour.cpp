#include "tools/form_gallery/page_rows.h"

#include <algorithm>

namespace gallery {

using namespace mod_form_qt;

namespace {

bool holdsDigit(const QVariant& text)
{
    const QString characters = text.toString();
    return std::any_of(characters.cbegin(), characters.cend(),
                       [](QChar character) { return character.isDigit(); });
}

int refuseDigits(const CallbackContext& ctx)
{
    return ctx.type == kBeforeDataChanged && holdsDigit(ctx.value) ? 0 : 1;
}

int acceptLetters(const CallbackContext& ctx)
{
    return ctx.type == kValidate && holdsDigit(ctx.value) ? 0 : 1;
}

int makeUpper(const CallbackContext& ctx)
{
    if (ctx.type == kBeforeDataChanged && ctx.result)
        *ctx.result = ctx.value.toString().toUpper();
    return 1;
}

int askPermission(const CallbackContext& ctx)
{
    return ctx.type == kBeforeAction && !INFO::getBaseValue(ctx.map, "permitted").toBool() ? 0 : 1;
}

int countSeconds(const CallbackContext& ctx)
{
    if (ctx.type == kTimer)
        INFO::setData(ctx.map, ctx.row.key, QString::number(ctx.value.toInt() + 1), false);
    return 1;
}

/// The older form of a callback: the members of the context as arguments.
int showLength(const QPointer<QWidget>&, const QPointer<QWidget>&, const QVariant& value,
               CallbackType type, const INFO&, QMap<QString, QVariant>* map, QVariant*,
               const QVariant*)
{
    if (type == kAfterDataChanged)
        INFO::setData(map, "length", QString::number(value.toString().size()), false);
    return 1;
}

INFO setter(const QString& title, const QString& key, bool emitChange)
{
    const auto set = [emitChange](const CallbackContext& ctx) {
        static int number = 0;
        if (ctx.type == kAfterAction) {
            const QString text = tr("gesetzt, Nr. %1").arg(++number);
            INFO::setData(ctx.map, {{"target", text}, {"skipped", text}}, emitChange);
        }
        return 1;
    };
    return {E_BUTTON, A_NONE, title, {}, key, ContextCallback(set)};
}

int showHidden(const CallbackContext& ctx)
{
    if (ctx.type == kAfterDataChanged) {
        const WIDGET_INFO hidden = WIDGET_INFO::widgets(ctx.map, "hidden");
        for (const QPointer<QWidget>& widget : hidden.widgets())
            widget->setVisible(ctx.value.toBool());
    }
    return 1;
}

} // namespace

QList<INFO> events(PageContext&)
{
    const QVariant seconds =
        with(tr("Sekunden"), {{Option::timerKey, QVariantList {1000, "seconds"}}});
    const auto before = A_USE_BEFORE_EVENT;

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Vor der Änderung: ablehnen oder ändern"))
         <<     sample({E_LINEEDIT, before, tr("Lehnt Ziffern ab"), "abc", "no_digits",
                        ContextCallback(refuseDigits)})
         <<     sample({E_LINEEDIT, before, tr("Schreibt groß"), "ABC", "upper",
                        ContextCallback(makeUpper)})
         <<     sample({E_LINEEDIT, A_CALLBACK_VALIDATOR, tr("Prüft jede Taste"), "abc",
                        "validated", ContextCallback(acceptLetters)})
         << end()
         << group(tr("Vor der Aktion: um Erlaubnis fragen"))
         <<     sample({E_CHECKBOX, A_NONE, tr("Aktion erlaubt"), false, "permitted"})
         <<     sample({E_BUTTON, before, tr("Aktion"), {}, "action",
                        ContextCallback(askPermission)})
         << end()
         << group(tr("Nach der Änderung"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Text"), "abc", "text", LegacyCallback(showLength)})
         <<     sample({E_LINEEDIT, A_READONLY, tr("Seine Länge"), "3", "length"})
         << end()
         << group(tr("Ohne Zutun"))
         <<     sample({E_LINEEDIT, A_INIT_EMIT, tr("Meldet sich am Anfang"), tr("bereit"), "init"})
         <<     sample({E_DATE, A_INIT_EMIT_VALID | A_INVALID_CHECKBOX, tr("Nur mit Datum"),
                        QDate(2024, 2, 29), "init_valid"})
         <<     sample({E_LINEEDIT, A_READONLY, seconds, "0", "seconds",
                        ContextCallback(countSeconds)})
         << end();
    // clang-format on
    return rows;
}

QList<INFO> bindings(PageContext& context)
{
    context.map.insert("from_map", tr("stand schon in der Datentabelle"));
    context.map.insert("not_from_map", tr("stand schon in der Datentabelle"));
    QVariant* const shared = context.variable(tr("aus einer Variablen"));
    T_LISTDATA* const list = context.list(items({"SKR03", "SKR04", "SKR49"}, {1}));

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Woher der erste Wert kommt"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Aus der Zeile"), tr("aus der Zeile"), "from_row"})
         <<     sample({E_LINEEDIT, A_USE_MAP_VALUE, tr("Aus der Tabelle"), tr("aus der Zeile"),
                        "from_map"})
         <<     sample({E_LINEEDIT, A_USE_MAP_VALUE | A_DONT_USE_MAP_VALUE,
                        tr("Doch aus der Zeile"), tr("aus der Zeile"), "not_from_map"})
         <<     INFO(E_DATA, A_NONE, {}, tr("E_DATA: ein Eintrag ohne Widget"), "data_only")
         << end()
         << group(tr("Variablen des Aufrufers; die Tabelle zeigt \u2192"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Mit Schlüssel"), shared, "bound"})
         <<     sample({E_LINEEDIT, A_NONE, tr("Ohne Schlüssel"),
                        context.variable(tr("automatisch benannt"))})
         <<     sample({E_COMBOBOX, A_NONE, tr("Listendaten"), list, "bound_list"})
         <<     sample({E_NUMBER, A_IMMEDIATE_DATA_UPDATE,
                        with(tr("Zahl"), {{Option::spinBoxKey, true}}), context.variable(7),
                        "bound_number"})
         << end()
         << group(tr("INFO::setData: Werte von außen"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Ziel"), "", "target"})
         <<     sample({E_LINEEDIT, A_SKIP_SETDATA, tr("Wird übergangen"), "", "skipped"})
         <<     open(E_LAYOUT_H)
         <<         setter(tr("Setzen und melden"), "set_loud", true)
         <<         setter(tr("Still setzen"), "set_quietly", false)
         <<     end()
         << end();
    // clang-format on
    return rows;
}

QList<INFO> groupsAndWheel(PageContext&)
{
    const auto spin = [](const QString& title) {
        return with(title, {{Option::spinBoxKey, true}});
    };
    const T_LISTDATA three = items({tr("eins"), tr("zwei"), tr("drei")}, {0});

    QList<INFO> rows;
    // clang-format off
    rows << INFO(E_LAYOUT_V, A_CAN_HIDE_ITEMS, tr("A_CAN_HIDE_ITEMS, offen"), true, "group_open")
         <<     sample({E_LINEEDIT, A_NONE, tr("Zu sehen"), "", "inside_open"})
         << end()
         << INFO(E_LAYOUT_V, A_CAN_HIDE_ITEMS,
                 tr("A_CAN_HIDE_ITEMS, zu: ein Klick zeigt, was darin ist"), false, "group_closed")
         <<     sample({E_LINEEDIT, A_NONE, tr("Anfangs verborgen"), "", "inside_closed"})
         << end()
         << group(tr("A_HIDE"))
         <<     sample({E_CHECKBOX, A_NONE, tr("Verborgene Zeile zeigen"), false, "show_hidden",
                        ContextCallback(showHidden)})
         <<     INFO(E_LINEEDIT, A_HIDE, tr("Verborgen"), "", "hidden")
         << end()
         << group(tr("Mausrad ohne Fokus; diese Seite ist mit MF_WHEEL_GUARD gebaut"))
         <<     sample({E_NUMBER, A_IMMEDIATE_DATA_UPDATE, spin(tr("Dreht nicht")), 5, "guarded"})
         <<     sample({E_NUMBER, A_IMMEDIATE_DATA_UPDATE | A_ALLOW_WHEEL, spin(tr("Dreht immer")),
                        5, "wheel"})
         <<     sample({E_COMBOBOX, A_NONE, tr("Dreht nicht"), three, "guarded_combo"})
         <<     sample({E_COMBOBOX, A_ALLOW_WHEEL, tr("Dreht immer"), three, "wheel_combo"})
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
