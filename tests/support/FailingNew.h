// Test support: the program's operator new, able to fail the n-th allocation from a given moment and
// to count allocations. Linked only into the program that tests what a failed standard-library
// allocation does to the frame's COM objects and GDI selections.
#pragma once

#include <functional>

namespace failingnew {

// The allocations `call` makes.
long allocationsOf(const std::function<void()>& call);

// While it lives, the `nth` allocation from its construction on (1: the next one) throws
// std::bad_alloc (or, for new(std::nothrow), answers null), once.
class FailingAllocation {
public:
    explicit FailingAllocation(long nth);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

}  // namespace failingnew
