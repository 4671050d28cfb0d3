// An ordinary test of a feed: mutations of a corpus's seeds.
#pragma once

#include "fuzz/Mutations.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string_view>

inline void mutate(const char *corpus, void (*feed)(std::string_view))
{
    constexpr int kRounds = 20000;
    const auto seeds = fuzz::seedsIn(std::filesystem::path(VELTRA_FUZZ_CORPUS) / corpus);
    ASSERT_FALSE(seeds.empty());
    EXPECT_NO_THROW(fuzz::feedMutations(seeds, kRounds, feed));
}
