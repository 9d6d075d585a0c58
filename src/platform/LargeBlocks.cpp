// The program's operator new. Allocates blocks of 32 MiB and more (mostly the text of a large file) on huge pages, and
// has the system provide all their pages at once, in two threads: the first access to each page is most of the time it
// takes to open a large file, above all in a virtual machine, whose host may have to find the memory first. Smaller
// blocks come from malloc as usual. Builds with sanitizers use the operator new of the sanitizer.

#if !defined(QUILLMARK_SANITIZED)

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <system_error>
#include <thread>

namespace {

constexpr std::size_t HugePage = std::size_t{2} << 20;
constexpr std::size_t LargeBlock = std::size_t{32} << 20;

/// Has the system provide these pages now. Where it cannot, it provides them later, one by one.
void populate(char* from, std::size_t length) noexcept {
    madvise(from, length, MADV_POPULATE_WRITE);
}

void populateInTwoThreads(char* block, std::size_t length) noexcept {
    const std::size_t half = length / HugePage / 2 * HugePage;
    try {
        std::thread second(populate, block + half, length - half);
        populate(block, half);
        second.join();
    } catch (const std::system_error&) {
        // Without a second thread the pages are provided when they are used.
    }
}

void* largeMemory(std::size_t size) noexcept {
    if (size > SIZE_MAX - HugePage)
        return nullptr;
    const std::size_t whole = (size + HugePage - 1) / HugePage * HugePage;
    void* block = std::aligned_alloc(HugePage, whole);
    if (block != nullptr) {
        madvise(block, whole, MADV_HUGEPAGE);  // only advice: if it is refused, the pages are small
        populateInTwoThreads(static_cast<char*>(block), whole);
    }
    return block;
}

void* memory(std::size_t size) noexcept {
    return size < LargeBlock ? std::malloc(size == 0 ? 1 : size) : largeMemory(size);
}

}  // namespace

void* operator new(std::size_t size) {
    for (;;) {
        if (void* block = memory(size))
            return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr)
            throw std::bad_alloc();
        handler();
    }
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

#endif
