#include "form/widgets/path_chars.h"

#include <QRegularExpression>
#include <QString>

namespace mod_form_qt {

namespace {

QRegularExpression anyOf(const QString& set)
{
    return QRegularExpression(QLatin1Char('[') + QRegularExpression::escape(set)
                              + QLatin1Char(']'));
}

} // namespace

int removeInvalidPathChars(QString& text, bool isFileName)
{
    static const QRegularExpression notInPath = anyOf(QStringLiteral(R"(*?"<>|)"));
    static const QRegularExpression notInFileName = anyOf(QStringLiteral(R"(\/:*?"<>|)"));

    if (!isFileName)
        text.replace(QStringLiteral("\\"), QStringLiteral("/"), Qt::CaseSensitive);
    const qsizetype before = text.size();
    text.remove(isFileName ? notInFileName : notInPath);
    return int(before - text.size());
}

} // namespace mod_form_qt
