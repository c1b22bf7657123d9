// GoogleTest printers for the foundation's types, so a failed comparison shows text, not bytes.
#pragma once

#include <ostream>

#include "KivString.h"

inline void PrintTo(const KivString& text, std::ostream* out) {
    const std::string utf8 = text.toUtf8();
    if (utf8.size() > 200) *out << "\"" << utf8.substr(0, 200) << "\"... (" << text.length() << " units)";
    else *out << "\"" << utf8 << "\"";
}
