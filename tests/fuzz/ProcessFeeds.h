// The parsers of what the kernel of Linux tells about processes and memory.
#pragma once

#include "fuzz/Feeds.h"
#include "platform/linux/MemInfo.h"
#include "platform/linux/ProcessStat.h"

#include <functional>

namespace fuzz {

inline bool liesIn(std::string_view part, std::string_view text)
{
    const std::less_equal<const char *> notAfter;
    return part.empty()
        || (notAfter(text.data(), part.data())
            && notAfter(part.data() + part.size(), text.data() + text.size()));
}

inline void feedProcessStat(std::string_view text)
{
    const auto stat = platform::procstat::parseProcess(text);
    require(!stat || liesIn(stat->command, text), "the command lies in the text");
    require(!platform::procstat::parseProcess(text.substr(0, text.find(')'))),
            "a text that is cut in the command says nothing");
}

inline void feedProcessTransfer(std::string_view text)
{
    const auto bytes = platform::procstat::parseTransfer(text);
    require(!bytes || text.find("write_bytes:") != std::string_view::npos, "nothing is made up");
    require(!platform::procstat::parseTransfer(text.substr(0, text.find('\n'))),
            "a line that is cut says nothing");
}

inline void feedSystemStat(std::string_view text)
{
    constexpr std::uint64_t kTicksPerSecond = 100;
    const auto times = platform::procstat::parseSystem(text, kTicksPerSecond);
    require(!times || text.starts_with("cpu") || text.starts_with(' '), "it is that line");
    require(!platform::procstat::parseSystem(text, 0), "no ticks, no times");
}

inline void feedMemInfo(std::string_view text)
{
    constexpr unsigned kAll = 100;
    const auto memory = platform::meminfo::parse(text);
    require(!memory || memory->totalBytes > 0, "there is memory");
    require(!memory || memory->availableBytes <= memory->totalBytes,
            "not more is free than is there");
    require(!memory || memory->loadPercent <= kAll, "not more is used than is there");
}

} // namespace fuzz
