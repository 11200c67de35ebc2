#include "accounting/konten_saved.h"

#include <QStringList>

namespace payment_import {

QVariantList kontenToSavedList(const KontenMap& konten)
{
    QVariantList saved;
    saved.reserve(static_cast<qsizetype>(konten.size()));
    for (const auto& [role, triple] : konten) {
        const auto& [skr03, skr04, skr49] = triple;
        saved.append(QStringList {QString::number(role), QString::number(skr03),
                                  QString::number(skr04), QString::number(skr49)});
    }
    return saved;
}

void restoreKonten(const QVariant& saved, KontenMap& konten)
{
    const QVariantList elements = saved.toList();
    for (const QVariant& element : elements) {
        const QStringList texts = element.toStringList();
        if (texts.size() != 4)
            continue;
        // A text that is no int reads as 0, which is no role either.
        const int role = texts[0].toInt();
        if (role < ErloesInlandNormal || role > AmazonGebuehr)
            continue;
        for (int index = 0; index <= 2; ++index)
            upDateKontoByIndex(konten, KontenTypen(role), index, texts[index + 1].toInt());
    }
}

} // namespace payment_import
