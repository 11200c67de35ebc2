#pragma once

#include <QByteArray>
#include <QStringView>

namespace demo_shop {

/// An amount of money as the shop writes it: "12.50", "-0.35".
QByteArray amountText(qint64 cents);

/// Writes JSON in the order of the calls and with the shop's escapes ("\/", "\u00fc"), which
/// QJsonDocument does not keep. A null key writes an element of an array.
class JsonWriter
{
public:
    void object(const char* key = nullptr);
    void array(const char* key = nullptr);
    /// Ends the innermost object or array.
    void end();

    void text(const char* key, QStringView value);
    void text(const char* key, const char* ascii);
    /// An amount in cents, as text with two decimals.
    void amount(const char* key, qint64 cents);
    void number(const char* key, qint64 value);
    void real(const char* key, double value);
    void flag(const char* key, bool value);
    void null(const char* key);
    void emptyArray(const char* key);
    /// Finished JSON as the value.
    void raw(const char* key, const QByteArray& json);

    const QByteArray& bytes() const { return m_out; }

private:
    void open(const char* key);
    void quoted(QStringView value);

    QByteArray m_out;
    QByteArray m_ends;
    bool m_first = true;
};

} // namespace demo_shop
