#include "platform/linux/ProcessStat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace platform::procstat {

namespace {

// Numbers of the fields behind the state, in the kernel's counting from 1.
constexpr int kState = 3;
constexpr int kFlags = 9;
constexpr int kUserTicks = 14;
constexpr int kSystemTicks = 15;
constexpr int kStartTicks = 22;
constexpr int kResidentPages = 24;

constexpr std::uint64_t kUnitsPerSecond = 10'000'000; // of 100 ns

// Takes the next word off the text; empty at the end of it or of its line.
std::string_view takeWord(std::string_view &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(" \n"));
    text.remove_prefix(word.size());
    return word;
}

// All of the word, or nothing. A negative number counts as 0.
std::optional<std::uint64_t> number(std::string_view word)
{
    const bool isNegative = word.starts_with('-');
    if (isNegative) {
        word.remove_prefix(1);
    }
    std::uint64_t value = 0;
    const auto *end = word.data() + word.size();
    const auto parsed = std::from_chars(word.data(), end, value);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        return std::nullopt;
    }
    return isNegative ? 0 : value;
}

std::uint64_t *fieldOf(ProcessStat &stat, int number)
{
    switch (number) {
    case kFlags:
        return &stat.flags;
    case kUserTicks:
        return &stat.userTicks;
    case kSystemTicks:
        return &stat.systemTicks;
    case kStartTicks:
        return &stat.startTicks;
    case kResidentPages:
        return &stat.residentPages;
    default:
        return nullptr;
    }
}

// The numbers behind the state. False when a wanted one is none, or may have been cut because the text ends in it.
bool takeNumbers(std::string_view text, ProcessStat &stat)
{
    for (int i = kState + 1; i <= kResidentPages; ++i) {
        const std::string_view word = takeWord(text);
        std::uint64_t *const wanted = fieldOf(stat, i);
        if (wanted == nullptr) {
            continue;
        }
        const auto value = number(word);
        if (!value) {
            return false;
        }
        *wanted = *value;
    }
    return !text.empty();
}

// The number behind "name: " at the start of a line that is whole.
std::optional<std::uint64_t> field(std::string_view text, std::string_view name)
{
    while (true) {
        const auto end = text.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (line.starts_with(name)) {
            line.remove_prefix(name.size());
            return number(takeWord(line));
        }
    }
}

} // namespace

bool ProcessStat::isKernelThread() const
{
    constexpr std::uint64_t kKernelThread = 0x00200000;
    return (flags & kKernelThread) != 0;
}

std::optional<ProcessStat> parseProcess(std::string_view text)
{
    const auto open = text.find('(');
    const auto close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    ProcessStat stat;
    stat.command = text.substr(open + 1, close - open - 1);
    text.remove_prefix(close + 1);

    const std::string_view state = takeWord(text);
    if (state.size() != 1 || !takeNumbers(text, stat)) {
        return std::nullopt;
    }
    stat.state = state.front();
    return stat;
}

std::optional<std::uint64_t> parseTransfer(std::string_view text)
{
    const auto read = field(text, "read_bytes:");
    const auto written = field(text, "write_bytes:");
    if (!read || !written) {
        return std::nullopt;
    }
    return *read + *written;
}

std::optional<SystemTimes> parseSystem(std::string_view text, std::uint64_t ticksPerSecond)
{
    enum { User, Nice, System, Idle, IoWait, Irq, SoftIrq, Steal, FieldCount };
    constexpr int kOldestKernelsHave = IoWait;

    const auto end = text.find('\n');
    if (end == std::string_view::npos || ticksPerSecond == 0 || takeWord(text) != "cpu") {
        return std::nullopt;
    }
    std::array<std::uint64_t, FieldCount> times{};
    for (std::size_t i = 0; i < times.size(); ++i) {
        const std::string_view word = takeWord(text);
        if (word.empty() && i >= kOldestKernelsHave) {
            break;
        }
        const auto ticks = number(word);
        if (!ticks) {
            return std::nullopt;
        }
        times.at(i) = ticksToFileTime(*ticks, ticksPerSecond);
    }
    SystemTimes result;
    result.idle = times[Idle] + times[IoWait];
    result.kernel = result.idle + times[System] + times[Irq] + times[SoftIrq] + times[Steal];
    result.user = times[User] + times[Nice];
    return result;
}

std::uint64_t ticksToFileTime(std::uint64_t ticks, std::uint64_t ticksPerSecond)
{
    if (ticksPerSecond == 0) {
        return 0;
    }
    return ticks / ticksPerSecond * kUnitsPerSecond
        + ticks % ticksPerSecond * kUnitsPerSecond / ticksPerSecond;
}

} // namespace platform::procstat
