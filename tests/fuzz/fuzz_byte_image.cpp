// The image of a map as bytes: whatever is written must be read again, with no entry lost. The
// bytes may differ, since the toolkit writes a value that it has read from odd bytes, an image say,
// in its own way.
#include "form/mod_form_qt.h"
#include "tests/fuzz/fuzz_input.h"

using namespace mod_form_qt;

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
    QMap<QString, QVariant> again;
    // A value may be of a type that can be read and not be written.
    if (!INFO::variantMapToByteArray(map, first, nullptr)
        || !INFO::byteArrayToVariantMap(first, again))
        return 0;
    QByteArray second;
    QMap<QString, QVariant> third;
    if (!INFO::variantMapToByteArray(again, second, nullptr)
        || !INFO::byteArrayToVariantMap(second, third) || third.keys() != again.keys())
        qFatal("An image does not come back as it was written.");
    return 0;
}
