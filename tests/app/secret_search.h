#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <QStringList>

#include <algorithm>

/// Undoes the escapes of an INI file, so that what lies in it as an image of a value shows as the
/// bytes it is made of.
inline QByteArray unescapedIni(const QByteArray& file)
{
    QByteArray bytes;
    for (qsizetype i = 0; i < file.size(); ++i) {
        if (file[i] != '\\' || i + 1 == file.size()) {
            bytes += file[i];
            continue;
        }
        const char kind = file[++i];
        if (kind == 'x') {
            QByteArray digits;
            while (i + 1 < file.size() && isxdigit(static_cast<unsigned char>(file[i + 1])))
                digits += file[++i];
            bytes += static_cast<char>(digits.toUInt(nullptr, 16));
        } else {
            static const QByteArray codes = "abfnrtv0";
            static const QByteArray meant("\a\b\f\n\r\t\v\0", 8);
            const qsizetype known = codes.indexOf(kind);
            bytes += known >= 0 ? meant[known] : kind;
        }
    }
    return bytes;
}

/// Names the ways in which \a secret can be read out of \a bytes; empty if there is none.
inline QStringList waysToRead(const QString& secret, const QByteArray& bytes)
{
    QStringList ways;
    const auto look = [&ways, &bytes](const char* name, const QByteArray& form) {
        if (bytes.contains(form))
            ways.append(QString::fromLatin1(name));
    };
    const QByteArray utf8 = secret.toUtf8();
    const QByteArray utf16 = QStringEncoder(QStringConverter::Utf16LE).encode(secret);
    const QByteArray utf16be = QStringEncoder(QStringConverter::Utf16BE).encode(secret);
    look("UTF-8", utf8);
    look("Latin-1", secret.toLatin1());
    look("UTF-16, little end first", utf16);
    look("UTF-16, big end first", utf16be);
    QByteArray backwards = utf8;
    std::reverse(backwards.begin(), backwards.end());
    look("backwards", backwards);
    look("percent", utf8.toPercentEncoding());
    const QByteArray lower = bytes.toLower();
    for (const QByteArray& raw : {utf8, utf16, utf16be}) {
        if (lower.contains(raw.toHex()))
            ways.append(QStringLiteral("hexadecimal"));
        // Base64 works in groups of three bytes, and the secret may begin anywhere in a group. The
        // characters at both ends also hold bits of their neighbours.
        for (int offset = 0; offset < 3; ++offset) {
            const QByteArray code = (QByteArray(offset, '-') + raw).toBase64();
            const QByteArray middle = code.mid(4, code.size() - 8);
            look("Base64", middle);
            look("Base64", QByteArray(middle).replace('+', '-').replace('/', '_'));
        }
    }
    return ways;
}
