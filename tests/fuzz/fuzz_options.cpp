// The saved options on their way through the main form, into the line for the host and back to the
// file.
#include "accounting/konten_saved.h"
#include "app/mainform.h"
#include "app/optionstring.h"
#include "tests/fuzz/fuzz_input.h"

#include <QFile>
#include <QTemporaryDir>
#include <QWidget>

using namespace mod_form_qt;

namespace {

/// Writes the options as the program does when it closes, and reads them as its next start would.
/// A name of its own for each file, since a file that was read is remembered under its name.
QMap<QString, QVariant> savedAndLoaded(const QMap<QString, QVariant>& options, const QString& path)
{
    const QMap<QString, QVariant> bare = withoutSecrets(options);
    INFO::saveMapToIniFile(&bare, path, QStringLiteral("options"), false, nullptr, QString());
    const QString copy = path + QStringLiteral(".copy");
    QFile::rename(path, copy);
    QMap<QString, QVariant> loaded;
    INFO::loadMapFromIniFile(&loaded, copy, QStringLiteral("options"), false, QString());
    QFile::remove(copy);
    return loaded;
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
    const QString path = folder.filePath(QString::number(++number));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(inputOf(data, size)) != qint64(size))
        qFatal("The file can't be written.");
    file.close();

    QMap<QString, QVariant> options;
    INFO::loadMapFromIniFile(&options, path, QStringLiteral("options"), false, QString());
    file.remove();
    if (options.isEmpty())
        return 0; // the form would be as without a file, and it takes a while to build

    payment_import::KontenMap konten;
    payment_import::restoreKonten(options.value(QStringLiteral("buchungs_konten")), konten);
    if (konten.size() > payment_import::AmazonGebuehr)
        qFatal("There are more accounts than roles.");

    MainFormValues values;
    QWidget window;
    const INFO::MainFlags flags =
        MF_FIXED_SIZE | MF_SCROLLAREA | MF_PLACE_CENTER | MF_USE_MAP_VALUES;
    const MainFormSource source {
        values, konten, 3, false, QStringLiteral("a"), QStringLiteral("b")};
    const INFO::Result form = INFO::getLayout(&window, true, QString(), mainFormRows(source, {}),
                                              flags, F_DIALOG_TITLE_MINMAX_CLOSE, &options);
    if (!form.layout)
        qFatal("The form was not built.");
    window.setLayout(form.layout);

    const QString text = optionsToHostText(options, konten);
    if (!text.startsWith(QLatin1String("export_version|1")))
        qFatal("The line for the host has lost its beginning.");
    const QMap<QString, QVariant> loaded = savedAndLoaded(options, path);
    for (auto entry = loaded.cbegin(); entry != loaded.cend(); ++entry) {
        if (INFO::isTempKeyName(entry.key()) || !options.contains(entry.key()))
            qFatal("An entry was saved that is none of the options.");
    }
    disarmForm(&window);
    endAttempt();
    return 0;
}
