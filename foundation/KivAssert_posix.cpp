// KivAssert default report on POSIX: one line on standard error.
#include <cstdio>

#include "KivAssert.h"
#include "KivString.h"

void KivAssert::defaultReport(const wchar_t* expression, const wchar_t* file, unsigned int line) {
    std::fprintf(stderr, "KivAssert: %s (%s, line %u)\n", KivString(expression).toUtf8().c_str(),
                 KivString(file).toUtf8().c_str(), line);
}
