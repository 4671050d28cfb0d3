// The kernel's files of a machine: this one's below "/", a captured one's below another folder.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// Paths are relative to the root. What is missing, may not be read, or is no file, is empty. Reads never wait.
class SystemTree
{
public:
    explicit SystemTree(std::filesystem::path folder);

    // The content, up to `limit` bytes of it.
    std::string text(const std::string &path, std::size_t limit) const;

    // A short text that a row can show: see cleanLine().
    std::string line(const std::string &path) const;

    // A decimal number, alone in its file.
    std::optional<unsigned long long> number(const std::string &path) const;

    // Names in a folder, sorted.
    std::vector<std::string> names(const std::string &folder) const;

    // The last part of what a link points to.
    std::string linkName(const std::string &path) const;

private:
    std::filesystem::path root;
};

} // namespace platform
