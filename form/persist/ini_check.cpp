#include "form/persist/ini_check.h"

#include "form/persist/image_reader.h"
#include "form/persist/ini_texts.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QMetaType>
#include <QPoint>
#include <QVariant>

namespace mod_form_qt {

namespace {

/// The number by which today's toolkit knows a type that has another one in streams of older
/// versions; what is out of their range counts as today's.
int currentTypeId(quint32 id, int version)
{
    constexpr quint32 guiTypes = 64; // as of the fifth version
    constexpr quint32 guiTypesEnd = 88;
    constexpr quint32 userType = 1024;
    if (version < QDataStream::Qt_5_0) {
        if (id == 127)
            id = userType;
        else if (id >= 128 && id != QMetaType::User)
            id -= 97;
        else if (id > 75 && id <= 86)
            --id;
    }
    if (id == userType)
        return QMetaType::User;
    if (id >= guiTypes && id < guiTypesEnd)
        return int(id - guiTypes + QMetaType::FirstGuiType);
    return int(id);
}

/// Goes through one value and those inside it as the toolkit's reader does, without going deeper
/// than allowed and without making room for what is only claimed to be there.
class ValueCheck
{
public:
    ValueCheck(const QByteArray& bytes, int version)
    {
        m_buffer.setData(bytes);
        m_buffer.open(QIODevice::ReadOnly);
        m_stream.setDevice(&m_buffer);
        m_stream.setVersion(version);
    }

    /// \param depth  number of values that it stands in
    /// \return       false if the toolkit must not read it; what is damaged otherwise can be read
    bool check(int depth = 0)
    {
        if (depth > maxIniDepth)
            return false;
        const qint64 begin = m_buffer.pos();
        switch (takeType()) {
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash:
            return checkEach([&] { return take<QString>() && check(depth + 1); });
        case QMetaType::QVariantList:
            return checkList([&] { return check(depth + 1); });
        case QMetaType::QStringList:
            return checkList([&] { return take<QString>(); });
        case QMetaType::QByteArrayList:
            return checkList([&] { return take<QByteArray>(); });
        case QMetaType::QPolygon:
            return checkList([&] { return take<QPoint>(); });
        case QMetaType::QVariant:
            return check(depth + 1);
        case QMetaType::QVariantPair:
            return check(depth + 1) && check(depth + 1);
        case QMetaType::QTextFormat:
            return take<qint32>() && checkEach([&] { return take<qint32>() && check(depth + 1); });
        case QMetaType::QPolygonF:
            return passPoints();
        case QMetaType::QRegion:
            return isRegionOfRectangles(taken<QByteArray>());
        default:
            m_buffer.seek(begin);
            QVariant read;
            m_stream >> read;
            return true;
        }
    }

private:
    int takeType()
    {
        const auto id = taken<quint32>();
        if (m_stream.version() >= QDataStream::Qt_4_2)
            take<quint8>(); // whether it is null
        const int type = currentTypeId(id, m_stream.version());
        if (type != QMetaType::User)
            return type;
        const auto name = taken<QByteArray>();
        // The name of a type that has a number too gets there all the same.
        return QMetaType::fromName(name.constData()).id();
    }

    template <typename T>
    T taken()
    {
        T value {};
        m_stream >> value;
        return value;
    }

    /// For what needs no look: that it can be damaged is left to the toolkit.
    template <typename T>
    bool take()
    {
        taken<T>();
        return true;
    }

    template <typename CheckElement>
    bool checkEach(CheckElement checkElement, quint32 maxMissing = -1)
    {
        // As there: a container is read whatever went wrong before it, and ends where it goes
        // wrong.
        const QDataStream::Status before = m_stream.status();
        m_stream.resetStatus();
        auto left = taken<quint32>();
        if (left > maxMissing && left > m_buffer.bytesAvailable())
            return false;
        for (; left > 0 && m_stream.status() == QDataStream::Ok; --left) {
            if (!checkElement())
                return false;
        }
        if (before != QDataStream::Ok) {
            m_stream.resetStatus();
            m_stream.setStatus(before);
        }
        return true;
    }

    /// A list gets room for all its elements at once; what is too much for the memory can't even be
    /// refused everywhere.
    template <typename CheckElement>
    bool checkList(CheckElement checkElement)
    {
        constexpr quint32 maxMissing = 1'000'000;
        return checkEach(checkElement, maxMissing);
    }

    bool passPoints()
    {
        constexpr qint64 pointBytes = 16;
        const auto points = taken<quint32>();
        // Whatever went wrong before it: nobody looks at that while the points are made.
        if (points > m_buffer.bytesAvailable() / pointBytes)
            return false;
        m_buffer.skip(points * pointBytes);
        return true;
    }

    QBuffer m_buffer;
    QDataStream m_stream;
};

bool isReadable(const QString& text)
{
    // Both hold a value of any type; they differ in the version of the stream.
    const QLatin1String variant("@Variant(");
    const QLatin1String dateTime("@DateTime(");
    if (text.startsWith(variant))
        return ValueCheck(text.toLatin1().mid(variant.size()), QDataStream::Qt_4_0).check();
    if (text.startsWith(dateTime))
        return ValueCheck(text.toLatin1().mid(dateTime.size()), QDataStream::Qt_5_6).check();
    return true;
}

} // namespace

bool isIniReadable(QByteArrayView file)
{
    return visitIniTexts(file, isReadable);
}

bool canOpenIni(const QString& fileName)
{
    if (fileName.isEmpty())
        return false;
    QFile file(fileName);
    // Missing or closed: the toolkit says so without reading it. A device may have no end.
    if (!file.open(QIODevice::ReadOnly) || file.isSequential())
        return true;
    try {
        return isIniReadable(file.readAll());
    } catch (...) {
        // A value that claims to be larger than the memory, or that its own operators refuse. The
        // toolkit would come to the same end.
        return false;
    }
}

} // namespace mod_form_qt
