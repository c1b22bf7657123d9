// KivMemoryControllerController: raw array storage behind KivArray. Portable.
#pragma once

#include <cstddef>

class KivMemoryControllerController {
public:
    // Largest block handed out, in bytes; larger requests fail as an out-of-memory would.
    static constexpr std::size_t kMaxBlockBytes = 0x7FFFFFFF;

    // Uninitialised storage for `count` elements of `elementSize` bytes; nullptr when count < 1,
    // elementSize is 0, the block would exceed kMaxBlockBytes, or the system has no memory.
    static unsigned char* allocateArray(long count, std::size_t elementSize);

    // Frees a block of allocateArray and sets the caller's pointer to nullptr; nullptr is accepted.
    static void deallocateArray(unsigned char*& block);

    // Test hook: the next `count` calls of allocateArray fail (return nullptr).
    static void failNextAllocations(int count);
    // Test hook: only the `nth` call of allocateArray from now on fails (1: the next one), once; 0
    // cancels it. With allocationCalls, a test can fail each allocation of a task in turn.
    static void failAllocationNumber(long nth);
    // Test hook: the calls of allocateArray so far that asked for a block (the ones that can fail).
    static long allocationCalls();
};
