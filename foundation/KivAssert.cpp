// KivAssert dispatch to the installed reporter. Portable.
#include "KivAssert.h"

namespace {
KivAssert::Reporter g_reporter = nullptr;  // nullptr: the platform default
}

void KivAssert::kivAssert(const wchar_t* expression, const wchar_t* file, unsigned int line) {
    const Reporter report = g_reporter != nullptr ? g_reporter : &KivAssert::defaultReport;
    report(expression != nullptr ? expression : L"", file != nullptr ? file : L"", line);
}

KivAssert::Reporter KivAssert::setReporter(Reporter reporter) {
    const Reporter previous = g_reporter;
    g_reporter = reporter;
    return previous;
}
