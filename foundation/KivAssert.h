// KivAssert: reports a failed internal check and returns. Portable interface; the
// default report goes to the debugger on Windows (KivAssert_win.cpp) and to stderr elsewhere
// (KivAssert_posix.cpp). Tests install their own reporter to capture reports.
#pragma once

class KivAssert {
public:
    using Reporter = void (*)(const wchar_t* expression, const wchar_t* file, unsigned int line);

    // Reports the check through the current reporter, then returns: the caller goes on.
    static void kivAssert(const wchar_t* expression, const wchar_t* file, unsigned int line);

    // Replaces the reporter (nullptr restores the platform default); returns the previous one.
    static Reporter setReporter(Reporter reporter);

    // The platform's default reporter.
    static void defaultReport(const wchar_t* expression, const wchar_t* file, unsigned int line);
};
