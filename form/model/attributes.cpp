#include "form/model/attributes.h"

#include <cstdint>

namespace mod_form_qt {

namespace {

using Words = std::array<unsigned long long, 4>;

Words wordsOf(const std::bitset<256>& bits)
{
    return std::bit_cast<Words>(bits);
}

/// \return  the number of the lowest set bit, -1 if there is none
int bitNumber(const std::bitset<256>& bits)
{
    const Words words = wordsOf(bits);
    for (std::size_t word = 0; word < words.size(); ++word) {
        if (words[word] != 0)
            return int(word) * 64 + std::countr_zero(words[word]);
    }
    return -1;
}

} // namespace

bool isBitSet(const std::bitset<256>& bits, const std::bitset<256>& wanted)
{
    return (bits & wanted).any();
}

int lastBitSet(const std::bitset<256>& bits, const std::bitset<256>& first,
               const std::bitset<256>& last)
{
    const int lowest = bitNumber(first);
    if (lowest < 0)
        return -1;
    for (int bit = bitNumber(last); bit >= lowest; --bit) {
        if (bits[std::size_t(bit)])
            return bit - lowest;
    }
    return -1;
}

std::bitset<256> CreateLabelFlagMask()
{
    return A_FLIP_LABEL_BOLD | A_LABEL_WORDWRAP | A_HIDE | A_NO_TITLE_SPLIT | A_LABEL_ALIGN_LEFT
        | A_LABEL_ALIGN_RIGHT | A_LABEL_ALIGN_HCENTER | A_LABEL_ALIGN_JUSTIFY | A_LABEL_ALIGN_TOP
        | A_LABEL_ALIGN_BOTTOM | A_LABEL_ALIGN_VCENTER | A_LABEL_ALIGN_BASELINE
        | A_LABEL_ALIGN_CENTER | A_LABEL_ALIGN_TOP_LEFT;
}

std::bitset<256> ExtractLabelFlags(const std::bitset<256>& attr)
{
    static const std::bitset<256> mask = CreateLabelFlagMask();
    return attr & mask;
}

// QBitArray counts its bits from the lowest of each byte, whatever the machine's byte order.

QBitArray toBitArray(const std::bitset<256>& bits)
{
    const Words words = wordsOf(bits);
    std::array<char, 32> bytes {};
    for (std::size_t byte = 0; byte < bytes.size(); ++byte)
        bytes[byte] = char(std::uint8_t(words[byte / 8] >> (byte % 8 * 8)));
    return QBitArray::fromBits(bytes.data(), 256);
}

std::bitset<256> fromBitArray(const QBitArray& bits)
{
    if (bits.size() != 256)
        return {};
    const char* bytes = bits.bits();
    Words words {};
    for (std::size_t byte = 0; byte < 32; ++byte)
        words[byte / 8] |= static_cast<unsigned long long>(std::uint8_t(bytes[byte]))
            << (byte % 8 * 8);
    return std::bit_cast<std::bitset<256>>(words);
}

} // namespace mod_form_qt
