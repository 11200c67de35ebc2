#include "form/model/info.h"
#include "form/persist/image_reader.h"
#include "form/persist/ini_map.h"

#include <new>

namespace mod_form_qt {

namespace {

constexpr qint32 magic = 1379353973; // 0x52374575
constexpr qint8 formatVersion = 1;

bool readEntries(ImageReader& reader, QMap<QString, QVariant>& map)
{
    quint32 left = 0;
    reader.stream() >> left;
    for (; left > 0 && !reader.failed(); --left) {
        QString key;
        reader.stream() >> key;
        const QVariant value = reader.value();
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
    QMap<QString, QVariant> entries = persistedEntries(map, keys);
    erase_if(entries, [](const auto& entry) { return !fitsImage(entry.value()); });
    out.clear();
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    stream.setVersion(imageStreamVersion);
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
