// KivArray: the foundation's growable array template. Portable, header-only.
//
// Storage comes from KivMemoryControllerController; failed checks report through
// KivAssert::kivAssert with the file "ORVRoots\Exp\KivArray" and the line numbers of the original
// header (the constants below), then the code goes on. Where the original would touch memory it
// does not own (an index outside the storage, a sort over invalid indices, a failed allocation),
// this array reports the same check and then takes a defined, harmless path instead (see each
// operation): the module must never crash on bad input.
#pragma once

#include <cstdlib>
#include <cstring>
#include <new>

#include "../../KivAssert.h"
#include "../../KivMemoryControllerController.h"

namespace kivarray_detail {
constexpr const wchar_t* kFile = L"ORVRoots\\Exp\\KivArray";
// The line each failed check reports, as hosts' logs know them.
enum Line : unsigned int {
    kLineAllocate = 103, kLineAccess = 536, kLineSetLogical = 606, kLineSetPhysical = 657,
    kLineInsertAt = 781, kLineRemoveAt = 853, kLineSort = 1058,
};
}  // namespace kivarray_detail

template <class T>
class KivArray {
public:
    using Compare = int (*)(const void*, const void*);

    KivArray() = default;
    KivArray(const KivArray&) = delete;
    KivArray& operator=(const KivArray&) = delete;
    KivArray(KivArray&& other) noexcept { swap(other); }
    KivArray& operator=(KivArray&& other) noexcept {
        if (this != &other) {
            release();
            swap(other);
        }
        return *this;
    }
    ~KivArray() { release(); }

    int getLogicalLength() const { return m_logicalLength; }
    int getPhysicalLength() const { return m_physicalLength; }
    int getGrowLength() const { return m_growLength; }

    bool isValid(int index) const { return index >= 0 && index < m_logicalLength && m_pElements != nullptr; }

    // Element access; an invalid index reports "isValid( index )" (536) and is still used where it
    // lies inside the storage. Outside the storage a scratch element in its fresh state is returned.
    T& operator[](int index) {
        if (!isValid(index)) {
            KivAssert::kivAssert(L"isValid( index )", kivarray_detail::kFile, kivarray_detail::kLineAccess);
            if (index < 0 || index >= m_physicalLength || m_pElements == nullptr) return scratch();
        }
        return m_pElements[index];
    }
    const T& operator[](int index) const { return const_cast<KivArray&>(*this)[index]; }

    void setLogicalLength(int len) {
        if (!(len >= 0)) {
            KivAssert::kivAssert(L"len>=0", kivarray_detail::kFile, kivarray_detail::kLineSetLogical);
            return;
        }
        if (len > m_physicalLength) {
            // Round up to the next multiple of the growth increment (1..8 -> 8, 9 -> 16).
            const long long grown = static_cast<long long>(len - 1) + m_growLength - ((len - 1) % m_growLength);
            if (grown > 0x7FFFFFFFLL) {
                KivAssert::kivAssert(L"pElements != NULL && numElements > 0", kivarray_detail::kFile,
                                     kivarray_detail::kLineAllocate);
                return;
            }
            setPhysicalLength(static_cast<int>(grown));
            if (len > m_physicalLength) return;  // the allocation failed: the array is unchanged
        }
        m_logicalLength = len;
    }

    void setPhysicalLength(int newPhysicalLen) {
        if (!(newPhysicalLen >= 0)) {
            KivAssert::kivAssert(L"newPhysicalLen >= 0", kivarray_detail::kFile, kivarray_detail::kLineSetPhysical);
            return;
        }
        // 1. A shrink to more than three quarters keeps the storage.
        if (newPhysicalLen <= m_physicalLength &&
            static_cast<double>(newPhysicalLen) > 0.75 * static_cast<double>(m_physicalLength))
            return;
        // 2. Nothing to release.
        if (m_pElements == nullptr && newPhysicalLen == 0) return;
        // 3. Release everything.
        if (newPhysicalLen == 0) {
            release();
            return;
        }
        // 4. Reallocate, copying the elements in use.
        T* fresh = allocateElements(newPhysicalLen);
        if (fresh == nullptr) return;  // reported by allocateElements; the old storage stays
        const int keep = m_logicalLength < newPhysicalLen ? m_logicalLength : newPhysicalLen;
        for (int i = 0; i < keep; ++i) fresh[i] = m_pElements[i];
        destroyElements(m_pElements, m_physicalLength);
        m_pElements = fresh;
        m_physicalLength = newPhysicalLen;
        if (m_logicalLength > newPhysicalLen) m_logicalLength = newPhysicalLen;
    }

    void setAtGrow(int index, const T& value) {
        if (isValid(index)) {
            m_pElements[index] = value;
            return;
        }
        const T copy = value;  // value may live inside this array
        setLogicalLength(index + 1);
        (*this)[index] = copy;  // a negative index is reported by the checks and lands in scratch
    }

    int append(const T& value) {
        const T copy = value;
        const int index = m_logicalLength;
        setLogicalLength(index + 1);
        (*this)[index] = copy;
        return m_logicalLength - 1;
    }

    void insertAt(int index, const T& value) {
        if (!(index <= m_logicalLength)) {
            KivAssert::kivAssert(L"index <= m_logicalLength", kivarray_detail::kFile, kivarray_detail::kLineInsertAt);
            return;  // inserting beyond the end would leave a hole of stale elements
        }
        if (index < 0) {
            KivAssert::kivAssert(L"isValid( index )", kivarray_detail::kFile, kivarray_detail::kLineAccess);
            return;
        }
        const T copy = value;
        const int oldLength = m_logicalLength;
        setLogicalLength(oldLength + 1);
        if (m_logicalLength != oldLength + 1) return;  // could not grow
        for (int i = oldLength; i > index; --i) m_pElements[i] = m_pElements[i - 1];
        m_pElements[index] = copy;
    }

    void removeAt(int index) {
        if (!isValid(index)) {
            KivAssert::kivAssert(L"isValid(index)", kivarray_detail::kFile, kivarray_detail::kLineRemoveAt);
            return;  // nothing to remove
        }
        for (int i = index; i + 1 < m_logicalLength; ++i) m_pElements[i] = m_pElements[i + 1];
        setLogicalLength(m_logicalLength - 1);
    }

    // Sorts elements i1..i2 with qsort and the caller's comparison of two elements (pointers to T).
    // qsort moves bytes, which is not allowed for types that own memory, so qsort sorts pointers to
    // the elements and the elements are then put in that order by assignment.
    void sort(int i1, int i2, Compare compare) {
        if (!(isValid(i1) && isValid(i2))) {
            KivAssert::kivAssert(L"isValid( i1 ) && isValid( i2 )", kivarray_detail::kFile, kivarray_detail::kLineSort);
            return;
        }
        if (i2 <= i1 || compare == nullptr) return;
        const int count = i2 - i1 + 1;
        T** order = static_cast<T**>(std::malloc(sizeof(T*) * static_cast<std::size_t>(count)));
        if (order == nullptr) return;
        for (int i = 0; i < count; ++i) order[i] = &m_pElements[i1 + i];
        Compare previous = activeCompare();
        activeCompare() = compare;
        std::qsort(order, static_cast<std::size_t>(count), sizeof(T*), &comparePointers);
        activeCompare() = previous;
        T* sorted = allocateElements(count);
        if (sorted != nullptr) {
            for (int i = 0; i < count; ++i) sorted[i] = *order[i];
            for (int i = 0; i < count; ++i) m_pElements[i1 + i] = sorted[i];
            destroyElements(sorted, count);
        }
        std::free(order);
    }

private:
    static T& scratch() {
        static T element;
        element = T();
        return element;
    }

    static Compare& activeCompare() {
        static Compare compare = nullptr;
        return compare;
    }

    static int comparePointers(const void* a, const void* b) {
        return activeCompare()(*static_cast<T* const*>(a), *static_cast<T* const*>(b));
    }

    // Allocates `count` zero-filled, constructed elements; a count below 1 yields nullptr.
    static T* allocateElements(int count) {
        if (count < 1) return nullptr;
        unsigned char* block = KivMemoryControllerController::allocateArray(count, sizeof(T));
        if (!(block != nullptr && count > 0)) {
            KivAssert::kivAssert(L"pElements != NULL && numElements > 0", kivarray_detail::kFile,
                                 kivarray_detail::kLineAllocate);
            return nullptr;
        }
        std::memset(block, 0, static_cast<std::size_t>(count) * sizeof(T));
        T* elements = reinterpret_cast<T*>(block);
        for (int i = 0; i < count; ++i) new (&elements[i]) T();
        return elements;
    }

    static void destroyElements(T*& elements, int count) {
        if (elements == nullptr) return;
        for (int i = 0; i < count; ++i) elements[i].~T();
        unsigned char* block = reinterpret_cast<unsigned char*>(elements);
        KivMemoryControllerController::deallocateArray(block);
        elements = nullptr;
    }

    void release() {
        destroyElements(m_pElements, m_physicalLength);
        m_logicalLength = 0;
        m_physicalLength = 0;
    }

    void swap(KivArray& other) noexcept {
        const int l = m_logicalLength, p = m_physicalLength, g = m_growLength;
        T* e = m_pElements;
        m_logicalLength = other.m_logicalLength;
        m_physicalLength = other.m_physicalLength;
        m_growLength = other.m_growLength;
        m_pElements = other.m_pElements;
        other.m_logicalLength = l;
        other.m_physicalLength = p;
        other.m_growLength = g;
        other.m_pElements = e;
    }

    int m_logicalLength = 0;
    int m_physicalLength = 0;
    int m_growLength = 8;
    T* m_pElements = nullptr;
};
