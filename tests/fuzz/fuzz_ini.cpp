// An INI file with saved options, in each of its forms.
#include "form/mod_form_qt.h"
#include "form/persist/ini_texts.h"
#include "tests/fuzz/fuzz_input.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

using namespace mod_form_qt;

namespace {

/// What is looked at before the toolkit reads a file has to be what it reads then. Not of files
/// with values that are no texts, since those can hold others.
void checkTexts(const QByteArray& bytes, const QString& path)
{
    const QLatin1Char sign('@');
    QSet<QString> texts;
    const bool plain = visitIniTexts(bytes, [&](const QString& text) {
        const bool escaped = text.startsWith(QLatin1String("@@"));
        texts.insert(escaped ? text.mid(1) : text);
        return escaped || !text.startsWith(sign);
    });
    if (!plain)
        return;
    const QSettings settings(path, QSettings::IniFormat);
    const QStringList keys = settings.allKeys();
    for (const QString& key : keys) {
        const QStringList read = settings.value(key).toStringList();
        for (const QString& text : read) {
            if (!texts.contains(text))
                qFatal("A text of the file was not looked at.");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/ledora-fuzz-XXXXXX"));
    static quint64 number = 0;
    // A new name each time: a file that was read is remembered under its name for a while.
    const QString path = folder.filePath(QString::number(++number));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(inputOf(data, size)) != qint64(size))
        qFatal("The file can't be written.");
    file.close();

    const QString group = QStringLiteral("options");
    for (const bool separateKeys : {false, true}) {
        QMap<QString, QVariant> map;
        if (INFO::loadMapFromIniFile(&map, path, group, separateKeys, QString()))
            checkTexts(inputOf(data, size), path);
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
            if (INFO::isTempKeyName(entry.key()))
                qFatal("A temporary entry was taken from a file.");
        }
    }
    QList<QString> names;
    QString last;
    INFO::loadIniOptionNames(path, group, false, names, last, true);
    if (!last.isEmpty() && !names.contains(last))
        qFatal("A name that the file does not hold was not dropped.");
    file.remove();
    return 0;
}
