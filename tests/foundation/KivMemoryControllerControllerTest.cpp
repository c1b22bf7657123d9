// KivMemoryControllerController.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

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

TEST(KivMemoryControllerController, AnInjectedFailureByNumberFailsThatCallOnlyAndCallsAreCounted) {
    const long before = KivMemoryControllerController::allocationCalls();
    KivMemoryControllerController::failAllocationNumber(3);
    std::vector<bool> failed;
    for (int i = 0; i < 5; ++i) {
        unsigned char* block = KivMemoryControllerController::allocateArray(2, 8);
        failed.push_back(block == nullptr);
        KivMemoryControllerController::deallocateArray(block);
    }
    EXPECT_EQ(failed, (std::vector<bool>{false, false, true, false, false}));
    EXPECT_EQ(KivMemoryControllerController::allocationCalls() - before, 5);
    // Requests refused before any allocation are not counted and do not use up the injected failure.
    KivMemoryControllerController::failAllocationNumber(1);
    EXPECT_EQ(KivMemoryControllerController::allocateArray(0, 8), nullptr);
    EXPECT_EQ(KivMemoryControllerController::allocationCalls() - before, 5);
    EXPECT_EQ(KivMemoryControllerController::allocateArray(1, 8), nullptr);
    KivMemoryControllerController::failAllocationNumber(0);
    unsigned char* block = KivMemoryControllerController::allocateArray(1, 8);
    EXPECT_NE(block, nullptr);
    KivMemoryControllerController::deallocateArray(block);
}
