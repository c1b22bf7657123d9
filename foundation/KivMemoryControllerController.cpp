// KivMemoryControllerController. Portable.
#include "KivMemoryControllerController.h"

#include <cstdlib>

namespace {
int g_failuresPending = 0;
}

unsigned char* KivMemoryControllerController::allocateArray(long count, std::size_t elementSize) {
    if (count < 1 || elementSize == 0) return nullptr;
    if (static_cast<unsigned long>(count) > kMaxBlockBytes / elementSize) return nullptr;
    if (g_failuresPending > 0) {
        --g_failuresPending;
        return nullptr;
    }
    return static_cast<unsigned char*>(std::malloc(static_cast<std::size_t>(count) * elementSize));
}

void KivMemoryControllerController::deallocateArray(unsigned char*& block) {
    std::free(block);
    block = nullptr;
}

void KivMemoryControllerController::failNextAllocations(int count) {
    g_failuresPending = count < 0 ? 0 : count;
}
