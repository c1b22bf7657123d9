// Test support: the program's operator new, able to fail the n-th allocation from a given moment and
// to count allocations. Linked only into the program that tests what a failed standard-library
// allocation does to the frame's COM objects and GDI selections.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

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

// Runs `call` on an object `fresh` makes, once with no allocation failing (counting them), then once
// for each of those allocations with that one failing, each time on a new object; `check(object,
// result, n)` sees each outcome, n being the allocation that failed (0: none).
template <class Fresh, class Call, class Check>
void failEachAllocation(Fresh fresh, Call call, Check check) {
    auto counted = fresh();
    decltype(call(counted)) result{};
    const long made = allocationsOf([&] { result = call(counted); });
    check(counted, result, 0L);
    ASSERT_GE(made, 1) << "the call allocates nothing";
    for (long n = 1; n <= made; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n) + " of " + std::to_string(made) + " fails");
        auto object = fresh();
        {
            FailingAllocation failing(n);
            result = call(object);
        }
        check(object, result, n);
    }
}

}  // namespace failingnew
