// The image of a map as bytes: whatever is written must be read again, with no entry lost. The
// bytes may differ, since the toolkit writes a value that it has read from odd bytes, an image say,
// in its own way.
#include "form/mod_form_qt.h"
#include "tests/fuzz/fuzz_input.h"

#include <QtEndian>

#include <algorithm>

using namespace mod_form_qt;

namespace {

/// The number of entries that an image says it holds.
quint32 entriesIn(const QByteArray& image)
{
    constexpr qsizetype before = 5; // its mark and version
    if (image.size() < before + qsizetype(sizeof(quint32)))
        qFatal("An image without a head was written.");
    return qFromBigEndian<quint32>(image.constData() + before);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    startFuzzing();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QMap<QString, QVariant> map;
    if (!INFO::byteArrayToVariantMap(inputOf(data, size), map)) {
        if (!map.isEmpty())
            qFatal("A damaged image has left entries behind.");
        return 0;
    }
    QByteArray first;
    // A value may be of a type that can be read and not be written.
    if (!INFO::variantMapToByteArray(map, first, nullptr))
        return 0;
    QMap<QString, QVariant> again;
    // An image of nothing is read as nothing; where it holds anything, all of that has to come.
    if (INFO::byteArrayToVariantMap(first, again) != (entriesIn(first) > 0)
        || again.size() != qsizetype(entriesIn(first)))
        qFatal("An image that was just written can't be read.");
    if (again.isEmpty())
        return 0;
    if (!std::ranges::all_of(again.keys(), [&](const QString& key) { return map.contains(key); }))
        qFatal("An entry was read that nobody has written.");
    QByteArray second;
    QMap<QString, QVariant> third;
    if (!INFO::variantMapToByteArray(again, second, nullptr)
        || !INFO::byteArrayToVariantMap(second, third) || third.keys() != again.keys())
        qFatal("An image does not come back as it was written.");
    return 0;
}
