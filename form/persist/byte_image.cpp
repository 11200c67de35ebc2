#include "form/model/info.h"
#include "form/persist/ini_map.h"

#include <QBuffer>
#include <QDataStream>
#include <QtEndian>

#include <new>

namespace mod_form_qt {

namespace {

constexpr qint32 magic = 1379353973; // 0x52374575
constexpr qint8 formatVersion = 1;
constexpr int streamVersion = 19;

/// How deep values may be nested. What a user makes has a few levels; damaged bytes may claim
/// thousands, which no stack holds.
constexpr int maxDepth = 64;

/// Reads values from bytes that nobody vouches for. Containers are read here and not by the stream:
/// it makes room for as many elements as the bytes claim to hold, and goes as deep as they say.
class ImageReader
{
public:
    explicit ImageReader(QBuffer& buffer)
        : m_buffer(buffer)
        , m_stream(&buffer)
    {
        m_stream.setVersion(streamVersion);
    }

    QDataStream& stream() { return m_stream; }

    bool failed() const { return m_stream.status() != QDataStream::Ok; }

    /// \return  a number of elements of at least that many bytes each; 0, and the reading fails, if
    ///          so many bytes are not there
    quint32 count(qint64 bytesEach)
    {
        quint32 number = 0;
        m_stream >> number;
        if (failed() || number <= m_buffer.bytesAvailable() / bytesEach)
            return number;
        fail();
        return 0;
    }

    QVariant value(int depth);

private:
    // As they are written by streams of that version.
    enum Type : quint32 {
        Map = 8,
        List = 9,
        Texts = 11,
        Hash = 28,
        Polygon = 71,
        KeySequence = 75,
        PolygonF = 86,
        Named = 1024,
    };

    static constexpr qint64 textBytes = 4;
    static constexpr qint64 valueBytes = 5;

    void fail() { m_stream.setStatus(QDataStream::ReadCorruptData); }

    quint32 peek(qint64 offset) const
    {
        const QByteArray ahead = m_buffer.peek(offset + 4);
        return ahead.size() < offset + 4 ? 0 : qFromBigEndian<quint32>(ahead.constData() + offset);
    }

    void skipHeader()
    {
        quint32 type = 0;
        quint8 null = 0;
        m_stream >> type >> null;
    }

    template <typename Container>
    QVariant entries(int depth);
    QVariant elements(int depth);
    QVariant texts();
    QVariant leaf();
    bool claimsTooMuch(quint32 type) const;

    QBuffer& m_buffer;
    QDataStream m_stream;
};

template <typename Container>
QVariant ImageReader::entries(int depth)
{
    skipHeader();
    Container container;
    for (quint32 left = count(textBytes + valueBytes); left > 0 && !failed(); --left) {
        QString key;
        m_stream >> key;
        container.insert(key, value(depth + 1));
    }
    return container;
}

QVariant ImageReader::elements(int depth)
{
    skipHeader();
    QVariantList list;
    for (quint32 left = count(valueBytes); left > 0 && !failed(); --left)
        list.append(value(depth + 1));
    return list;
}

QVariant ImageReader::texts()
{
    skipHeader();
    QStringList list;
    for (quint32 left = count(textBytes); left > 0 && !failed(); --left) {
        QString text;
        m_stream >> text;
        list.append(text);
    }
    return list;
}

/// \return  true for a type that starts with a number of elements which cannot all be there
bool ImageReader::claimsTooMuch(quint32 type) const
{
    qint64 bytesEach = 0;
    switch (type) {
    case Polygon:
        bytesEach = 8;
        break;
    case PolygonF:
        bytesEach = 16;
        break;
    case KeySequence:
        bytesEach = 4;
        break;
    default:
        return false;
    }
    return peek(valueBytes) > (m_buffer.bytesAvailable() - valueBytes) / bytesEach;
}

QVariant ImageReader::leaf()
{
    const quint32 type = peek(0);
    QVariant value;
    if (!claimsTooMuch(type))
        m_stream >> value;
    // A type that nobody knows is passed over by the stream, with what belongs to it still there.
    if (type != 0 && !value.isValid())
        fail();
    return value;
}

QVariant ImageReader::value(int depth)
{
    if (depth > maxDepth) {
        fail();
        return {};
    }
    switch (peek(0)) {
    case Map:
        return entries<QVariantMap>(depth);
    case Hash:
        return entries<QVariantHash>(depth);
    case List:
        return elements(depth);
    case Texts:
        return texts();
    default:
        return leaf();
    }
}

bool readEntries(ImageReader& reader, QMap<QString, QVariant>& map)
{
    quint32 left = 0;
    reader.stream() >> left;
    for (; left > 0 && !reader.failed(); --left) {
        QString key;
        reader.stream() >> key;
        const QVariant value = reader.value(0);
        if (!reader.failed() && !INFO::isTempKeyName(key))
            map.insert(key, value);
    }
    return !reader.failed();
}

} // namespace

bool INFO::variantMapToByteArray(const QMap<QString, QVariant>& map, QByteArray& out,
                                 const QSet<QString>* keys)
{
    // The map may hold the array itself.
    const QMap<QString, QVariant> entries = persistedEntries(map, keys);
    out.clear();
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    stream.setVersion(streamVersion);
    stream << magic << formatVersion << quint32(entries.size());
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry)
        stream << entry.key() << entry.value();
    return stream.status() == QDataStream::Ok;
}

bool INFO::byteArrayToVariantMap(const QByteArray& in, QMap<QString, QVariant>& map)
{
    QBuffer buffer;
    buffer.setData(in);
    buffer.open(QIODevice::ReadOnly);
    ImageReader reader(buffer);
    qint32 foundMagic = 0;
    qint8 foundVersion = 0;
    reader.stream() >> foundMagic >> foundVersion;
    if (foundMagic != magic || foundVersion != formatVersion)
        return false;
    map.clear();
    try {
        if (!readEntries(reader, map))
            map.clear();
    } catch (const std::bad_alloc&) { // a value that claims to be larger than the memory
        map.clear();
    }
    return !map.isEmpty();
}

} // namespace mod_form_qt
