// KivMemoryControllerController. Portable.
#include "KivMemoryControllerController.h"

#include <cstdlib>

namespace {
// Test hooks: single-threaded, as the module's user-interface thread is.
int g_failuresPending = 0;
long g_failAtCall = 0;  // 0: none
long g_calls = 0;
}  // namespace

unsigned char* KivMemoryControllerController::allocateArray(long count, std::size_t elementSize) {
    if (count < 1 || elementSize == 0) return nullptr;
    if (static_cast<unsigned long>(count) > kMaxBlockBytes / elementSize) return nullptr;
    ++g_calls;
    if (g_failAtCall > 0 && --g_failAtCall == 0) return nullptr;
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

void KivMemoryControllerController::failAllocationNumber(long nth) { g_failAtCall = nth < 0 ? 0 : nth; }

long KivMemoryControllerController::allocationCalls() { return g_calls; }
