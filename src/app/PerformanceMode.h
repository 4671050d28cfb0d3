// How often things move in each performance mode.
#pragma once

#include <chrono>

namespace performance {

// The value of the window's property "perfMode", and the order of the settings page.
enum Mode : int { LowMemory, Middle, High };

struct Pace
{
    std::chrono::milliseconds particles;
    std::chrono::milliseconds pulse;
};

constexpr Pace kMiddlePace{std::chrono::milliseconds(33), std::chrono::milliseconds(66)};
constexpr Pace kHighPace{std::chrono::milliseconds(16), std::chrono::milliseconds(33)};

// The particles' timer stands still in "Low Memory", with this interval.
constexpr std::chrono::milliseconds kRestingParticles(100);

constexpr std::chrono::minutes kLocationWeatherInterval(15); // none in "Low Memory"

} // namespace performance
