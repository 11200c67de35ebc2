#include "form/dialog/password_generator.h"

#include <QCoreApplication>
#include <QRandomGenerator>

namespace mod_form_qt {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("mod_form_qt::PasswordGenerator", text);
}

} // namespace

QList<PasswordClass> passwordClasses()
{
    // clang-format off
    return {
        {1, tr("Zahlen"), QStringLiteral("0123456789")},
        {2, tr("Spezielle Zeichen"), QStringLiteral("~!@#$%^&*-_+")},
        {4, tr("Kleinbuchstaben"), QStringLiteral("abcdefghijklmnopqrstuvwxyz")},
        {8, tr("Großbuchstaben"), QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ")},
    };
    // clang-format on
}

QString passwordAlphabet(int flags)
{
    QString alphabet;
    const QList<PasswordClass> classes = passwordClasses();
    for (const PasswordClass& characters : classes) {
        if ((flags & characters.bit) != 0)
            alphabet += characters.characters;
    }
    return alphabet;
}

QString drawPassword(int length, const QString& alphabet, const std::function<quint64()>& random)
{
    QString password;
    if (length <= 0 || alphabet.size() < 2)
        return password;
    password.reserve(length);
    // One less than there are: the generator has always left out the last one.
    const auto count = static_cast<quint32>(alphabet.size() - 1);
    for (int position = 0; position < length; ++position) {
        const quint64 drawn = random ? random() : QRandomGenerator64::global()->generate();
        password += alphabet.at(static_cast<quint32>(drawn) % count);
    }
    return password;
}

} // namespace mod_form_qt
