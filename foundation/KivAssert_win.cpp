// KivAssert default report on Windows: one line to the debugger (OutputDebugStringW).
#include <windows.h>

#include <cwchar>

#include "KivAssert.h"

void KivAssert::defaultReport(const wchar_t* expression, const wchar_t* file, unsigned int line) {
    wchar_t buffer[512];
    std::swprintf(buffer, sizeof buffer / sizeof buffer[0], L"KivAssert: %ls (%ls, line %u)\n", expression, file, line);
    OutputDebugStringW(buffer);
}
