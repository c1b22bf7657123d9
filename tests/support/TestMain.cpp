// The main of every test program (native and Windows).
#include <gtest/gtest.h>
#if defined(_WIN32)
#include <windows.h>
#endif

int main(int argc, char** argv) {
#if defined(_WIN32)
    // A crash must end the program, never leave a dialog open.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
#endif
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
