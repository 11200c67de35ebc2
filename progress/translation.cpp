#include "progress/translation.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QTranslator>

#include <memory>

/// The linker drops the resources of a static library unless something names them, which can only
/// be done outside of namespaces.
static void loadTranslations()
{
    Q_INIT_RESOURCE(mod_progress_qt_translations);
}

namespace mod_progress_qt {

namespace {

/// \param language  as in `QLocale::uiLanguages`, with or without a country
bool isEnglish(const QString& language)
{
    return language == QLatin1String("C") || QLocale(language).language() == QLocale::English;
}

/// \return  null if there is no translation into that language
std::unique_ptr<QTranslator> translatorTo(const QString& language)
{
    const QString file = QStringLiteral(":/mod_progress_qt/translations/mod_progress_qt_%1.qm")
                             .arg(QLocale::languageToCode(QLocale(language).language()));
    auto translator = std::make_unique<QTranslator>();
    // Only then, as it would otherwise look for files with shorter names.
    if (!QFile::exists(file) || !translator->load(file))
        return nullptr;
    return translator;
}

} // namespace

bool installTranslation(const QLocale& locale)
{
    static QPointer<QTranslator> installed;
    delete installed.data();
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr)
        return false;

    loadTranslations();
    const QStringList languages = locale.uiLanguages();
    for (const QString& language : languages) {
        // Before any language that the user likes less.
        if (isEnglish(language))
            return true;
        std::unique_ptr<QTranslator> translator = translatorTo(language);
        if (translator == nullptr)
            continue;
        translator->setParent(application);
        installed = translator.release();
        return QCoreApplication::installTranslator(installed);
    }
    return false;
}

} // namespace mod_progress_qt
