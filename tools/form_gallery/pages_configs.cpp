#include "tools/form_gallery/ini_view.h"
#include "tools/form_gallery/page_rows.h"

using namespace mod_form_qt;

namespace gallery {

namespace {

const QString groupName = QStringLiteral("gallery");

/// Lays down a configuration, as an earlier use would have.
void store(const QString& file, const QString& name, const QString& shop, bool germanized)
{
    const QMap<QString, QVariant> map {{QStringLiteral("config_shop"), shop},
                                       {QStringLiteral("config_germanized"), germanized}};
    INFO::saveMapToIniFile(&map, file, groupName, false, nullptr, name);
}

} // namespace

QList<INFO> configurations(PageContext& context)
{
    const QString file = context.file(QStringLiteral("gallery.ini"));
    store(file, QStringLiteral("standard"), QStringLiteral("https://shop.example"), false);
    store(file, QStringLiteral("zweitershop"), QStringLiteral("https://zwei.example"), true);
    INFO::setDefaultIniMultiOptionName(file, QStringLiteral("standard"));
    const QVariant selector = with(tr("Wechseln speichert ohne Frage"),
                                   {{Option::iniFileNameKey, file},
                                    {Option::iniGroupNameKey, groupName},
                                    {Option::iniSumMapNameKey, "standard"},
                                    {Option::iniUseMultiConfKey, true}});

    QList<INFO> rows;
    // clang-format off
    rows << group(tr("Was eine Einstellung umfasst"))
         <<     sample({E_LINEEDIT, A_NONE, tr("Shop"), "https://shop.example", "config_shop"})
         <<     sample({E_CHECKBOX, A_NONE, tr("Germanized"), false, "config_germanized"})
         << end()
         << INFO(E_MULTICONFIG, A_NONE, selector, {}, "configs")
         << group(tr("Die INI-Datei"))
         <<     INFO(E_WIDGET, A_STRETCH_FACTOR_1, QVariant(),
                     new IniView(file, context.owner()), "ini_view")
         << end();
    // clang-format on
    return rows;
}

} // namespace gallery
