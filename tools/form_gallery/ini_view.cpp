#include "tools/form_gallery/ini_view.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryFile>
#include <QTimer>

namespace gallery {

namespace {

void addEntries(const QVariantMap& map, QStringList& lines)
{
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        lines << QStringLiteral("    %1: %2").arg(entry.key(), entry.value().toString());
}

void addGroup(QSettings& settings, const QString& group, QStringList& lines)
{
    lines << QStringLiteral("[%1]").arg(group);
    settings.beginGroup(group);
    const QStringList keys = settings.childKeys();
    for (const QString& key : keys) {
        const QVariant value = settings.value(key);
        const bool map = value.typeId() == QMetaType::QVariantMap;
        lines << (map ? key + QLatin1Char('=')
                      : QStringLiteral("%1=%2").arg(key, value.toString()));
        if (map)
            addEntries(value.toMap(), lines);
    }
    settings.endGroup();
}

} // namespace

IniView::IniView(const QString& file, QWidget* parent)
    : QPlainTextEdit(parent)
    , m_file(file)
{
    setReadOnly(true);
    setMinimumHeight(8 * fontMetrics().lineSpacing());
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &IniView::look);
    timer->start(250);
    look();
}

void IniView::look()
{
    // A copy, since under its own name the file would be answered from memory.
    QFile file(m_file);
    QTemporaryFile copy;
    if (!file.open(QIODevice::ReadOnly) || !copy.open())
        return;
    copy.write(file.readAll());
    copy.flush();
    QSettings settings(copy.fileName(), QSettings::IniFormat);
    QStringList lines;
    const QStringList groups = settings.childGroups();
    for (const QString& group : groups)
        addGroup(settings, group, lines);
    const QString text = lines.join(QLatin1Char('\n'));
    if (text != toPlainText())
        setPlainText(text);
}

} // namespace gallery
