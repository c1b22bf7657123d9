// Fuzz target: KivString::toDouble on any text: the bytes as 8-bit characters and, in pairs, as
// UTF-16 code units (any unit, unpaired surrogates included). The same text always gives the same
// number.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "FuzzSupport.h"

namespace {
void check(const KivString& text) {
    const double a = text.toDouble(), b = text.toDouble();
    if (std::memcmp(&a, &b, sizeof a) != 0) kivfuzz::broken("toDouble is not deterministic");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check(kivfuzz::latin1(data, size));
    std::u16string units(size / 2, u'\0');
    for (std::size_t i = 0; i + 1 < size; i += 2) units[i / 2] = static_cast<char16_t>(data[i] | (data[i + 1] << 8));
    check(KivString(units));
    return 0;
}
