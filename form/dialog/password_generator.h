#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace mod_form_qt {

/// Characters that a generated password may be made of.
struct PasswordClass
{
    int bit; ///< in the flags of the generator
    QString label; ///< in the user's language
    QString characters;
};

/// \return  all classes in the order in which they make up an alphabet
QList<PasswordClass> passwordClasses();

/// \param flags  the bits of the classes that are wanted; unknown ones have no effect
/// \return       the characters of these classes one after the other
QString passwordAlphabet(int flags);

/// Draws characters at random. The last one of the alphabet is never drawn.
/// \param length    of the result, in characters
/// \param alphabet  what is drawn from
/// \param random    the source, of which the low 32 bits count; unset takes the system's
/// \return          empty for a length of 0 or below and for an alphabet of fewer than two
///                  characters, which has none that could be drawn
QString drawPassword(int length, const QString& alphabet,
                     const std::function<quint64()>& random = {});

} // namespace mod_form_qt
