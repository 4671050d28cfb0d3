// Mutations for ordinary tests: always the same ones, in a second or so.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

// The contents of the files of a folder, in the order of their names.
inline std::vector<std::string> seedsIn(const std::filesystem::path &folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> seeds;
    for (const auto &file : files) {
        std::ifstream stream(file, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(stream),
                           std::istreambuf_iterator<char>());
    }
    return seeds;
}

inline std::string mutated(std::string text, std::mt19937 &random)
{
    constexpr unsigned kKinds = 5;
    const auto place = [&] {
        return text.empty() ? 0 : random() % text.size();
    };
    for (auto changes = 1 + random() % 8; changes > 0; --changes) {
        const std::size_t at = place();
        switch (random() % kKinds) {
        case 0: // another byte
            text.replace(at, std::min<std::size_t>(1, text.size()), 1, static_cast<char>(random()));
            break;
        case 1: // one that parsers look out for
            text.insert(at, 1, "\n\t :=,-0x\0"[random() % 11]);
            break;
        case 2: // a piece is missing
            text.erase(at, random() % 16);
            break;
        case 3: // a piece is there twice
            text.insert(at, text.substr(place(), random() % 64));
            break;
        default: // the end is missing
            text.resize(text.size() - (random() % 8 == 0 ? random() % (text.size() + 1) : 0));
        }
    }
    return text;
}

// Calls the feed with each seed, and with `rounds` mutations of them.
template<typename Feed>
void feedMutations(const std::vector<std::string> &seeds, int rounds, Feed feed)
{
    std::mt19937 random(1);
    for (const std::string &seed : seeds) {
        feed(seed);
    }
    for (int round = 0; round < rounds; ++round) {
        feed(mutated(seeds.at(random() % seeds.size()), random));
    }
}

} // namespace fuzz
