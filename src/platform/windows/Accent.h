// The undocumented records with which Windows is asked for an acrylic backdrop, and what the program puts into them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform::accent {

enum class AccentState : std::uint32_t { Disabled = 0, AcrylicBlurBehind = 4 };

struct AccentPolicy
{
    AccentState state = AccentState::Disabled;
    std::uint32_t flags = 0;
    std::uint32_t gradientColor = 0; // alpha, blue, green, red from the top byte down
    std::uint32_t animationId = 0;

    bool operator==(const AccentPolicy &) const = default;
};

struct CompositionData
{
    std::uint32_t attribute = 0;
    void *data = nullptr;
    std::size_t size = 0;
};

constexpr std::uint32_t kAccentPolicyAttribute = 19;

// A dark blue tint at alpha 0x18 over the blur, or all zero to switch it off.
constexpr AccentPolicy policyFor(bool enabled)
{
    constexpr std::uint32_t kDrawAllFlags = 2;
    constexpr std::uint32_t kTint = 0x1826160E;
    return enabled ? AccentPolicy{AccentState::AcrylicBlurBehind, kDrawAllFlags, kTint, 0}
                   : AccentPolicy{};
}

struct FrameMargins
{
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    bool operator==(const FrameMargins &) const = default;
};

// Only the left margin carries the -1 that extends the frame; the asymmetry is intended.
constexpr FrameMargins marginsFor(bool enabled)
{
    return enabled ? FrameMargins{-1, 0, 0, 0} : FrameMargins{};
}

} // namespace platform::accent
