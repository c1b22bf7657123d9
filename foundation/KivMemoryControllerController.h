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
};
