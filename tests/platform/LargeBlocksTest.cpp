#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

namespace {

constexpr std::size_t Mega = 1U << 20U;

}  // namespace

TEST(LargeBlocks, EveryByteOfALargeBlockIsThere) {
    std::vector<char> block(64 * Mega + 1, 'a');
    block.back() = 'z';
    block.resize(block.size() + 16 * Mega, 'b');
    EXPECT_EQ(block.front(), 'a');
    EXPECT_EQ(block.at(64 * Mega), 'z');
    EXPECT_EQ(block.back(), 'b');
}

// The operator new of the sanitizers ends the program if so much memory is requested.
#if !defined(QUILLMARK_SANITIZED)
TEST(LargeBlocks, WhatNoMachineHasIsRefused) {
    // Volatile, because the compiler rejects a size that it knows to be too large.
    volatile std::size_t tooMuch = PTRDIFF_MAX;
    EXPECT_THROW(::operator delete(::operator new(tooMuch)), std::bad_alloc);
    EXPECT_EQ(::operator new(tooMuch, std::nothrow), nullptr);
}

TEST(LargeBlocks, AllPagesOfALargeBlockAreThereBeforeItsFirstUse) {
    constexpr std::size_t Size = 40 * Mega;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::unique_ptr<char[]> block(new char[Size]);
    std::vector<unsigned char> present(Size / page);
    ASSERT_EQ(mincore(block.get(), Size, present.data()), 0);
    EXPECT_EQ(std::count_if(present.begin(), present.end(), [](unsigned char is) { return (is & 1U) == 0; }), 0);
}

TEST(LargeBlocks, LargeBlocksBeginAtAHugePage) {
    const auto block = std::make_unique<char[]>(32 * Mega);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.get()) % (2 * Mega), 0U);
}
#endif
