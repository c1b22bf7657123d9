// KivMemoryControllerController.
#include <gtest/gtest.h>

#include <cstring>

#include "KivMemoryControllerController.h"

TEST(KivMemoryControllerController, DeallocateNullDoesNothing) {
    unsigned char* block = nullptr;
    KivMemoryControllerController::deallocateArray(block);
    EXPECT_EQ(block, nullptr);
}

TEST(KivMemoryControllerController, AllocatesUsableStorageForTheModulesElementSizes) {
    for (std::size_t size : {8u, 16u, 48u, 64u}) {
        unsigned char* block = KivMemoryControllerController::allocateArray(8, size);
        ASSERT_NE(block, nullptr);
        std::memset(block, 0xAB, 8 * size);
        KivMemoryControllerController::deallocateArray(block);
        EXPECT_EQ(block, nullptr);
    }
}

TEST(KivMemoryControllerController, RefusesEmptyAndOversizedRequests) {
    EXPECT_EQ(KivMemoryControllerController::allocateArray(0, 8), nullptr);
    EXPECT_EQ(KivMemoryControllerController::allocateArray(-1, 8), nullptr);
    EXPECT_EQ(KivMemoryControllerController::allocateArray(1, 0), nullptr);
    EXPECT_EQ(KivMemoryControllerController::allocateArray(0x7FFFFFFFL, 64), nullptr);
}

TEST(KivMemoryControllerController, InjectedFailuresFailTheNextAllocationsOnly) {
    KivMemoryControllerController::failNextAllocations(1);
    EXPECT_EQ(KivMemoryControllerController::allocateArray(1, 8), nullptr);
    unsigned char* block = KivMemoryControllerController::allocateArray(1, 8);
    EXPECT_NE(block, nullptr);
    KivMemoryControllerController::deallocateArray(block);
}
