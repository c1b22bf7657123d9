// The program's operator new and delete over malloc and free, with an injected failure.
#include "FailingNew.h"

#include <cstdlib>
#include <new>

namespace {
long g_allocations = 0;
long g_failAt = 0;  // the allocation number that fails; 0: none

void* allocate(std::size_t size) {
    ++g_allocations;
    if (g_failAt != 0 && g_allocations == g_failAt) {
        g_failAt = 0;
        return nullptr;
    }
    return std::malloc(size == 0 ? 1 : size);
}
}  // namespace

void* operator new(std::size_t size) {
    void* p = allocate(size);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace failingnew {

long allocationsOf(const std::function<void()>& call) {
    const long before = g_allocations;
    call();
    return g_allocations - before;
}

FailingAllocation::FailingAllocation(long nth) { g_failAt = g_allocations + nth; }
FailingAllocation::~FailingAllocation() { g_failAt = 0; }

}  // namespace failingnew
