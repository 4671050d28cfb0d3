// The records that ask Windows for the acrylic backdrop, byte for byte, and the call that hands them over.
#include "platform/windows/Accent.h"

#include "platform/WindowBackdrop.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

using namespace platform::accent;

using PolicyWords = std::array<std::uint32_t, 4>;
using MarginWords = std::array<int, 4>;

// A window that is never shown.
class HiddenWindow
{
public:
    HiddenWindow()
        : window(CreateWindowExW(
            0, L"STATIC", L"", WS_POPUP, 0, 0, 64, 64, nullptr, nullptr, nullptr, nullptr))
    { }
    ~HiddenWindow() { DestroyWindow(window); }

    HiddenWindow(const HiddenWindow &) = delete;
    HiddenWindow &operator=(const HiddenWindow &) = delete;
    HiddenWindow(HiddenWindow &&) = delete;
    HiddenWindow &operator=(HiddenWindow &&) = delete;

    bool isAlive() const { return IsWindow(window) != 0; }
    platform::NativeWindow native() const
    {
        return reinterpret_cast<platform::NativeWindow>(window);
    }

private:
    HWND window = nullptr;
};

TEST(AccentTest, policyIsFourWordsInTheOrderThatWindowsReads)
{
    EXPECT_EQ(sizeof(AccentPolicy), 16U);
    EXPECT_EQ(std::bit_cast<PolicyWords>(policyFor(true)), (PolicyWords{4, 2, 0x1826160E, 0}));
    EXPECT_EQ(std::bit_cast<PolicyWords>(policyFor(false)), (PolicyWords{0, 0, 0, 0}));
}

TEST(AccentTest, compositionDataHasTheLayoutThatWindowsReads)
{
    EXPECT_EQ(kAccentPolicyAttribute, 19U);
    EXPECT_EQ(offsetof(CompositionData, attribute), 0U);
    EXPECT_EQ(offsetof(CompositionData, data), sizeof(void *));
    EXPECT_EQ(offsetof(CompositionData, size), 2 * sizeof(void *));
    EXPECT_EQ(sizeof(CompositionData), 3 * sizeof(void *));
}

TEST(AccentTest, onlyTheLeftMarginExtendsTheFrame)
{
    EXPECT_EQ(std::bit_cast<MarginWords>(marginsFor(true)), (MarginWords{-1, 0, 0, 0}));
    EXPECT_EQ(std::bit_cast<MarginWords>(marginsFor(false)), (MarginWords{0, 0, 0, 0}));
}

TEST(BackdropTest, noWindowIsLeftAlone)
{
    platform::setBackdropBlur(0, true);
    platform::setBackdropBlur(0, false);
}

TEST(BackdropTest, handleOfNoWindowIsLeftAlone)
{
    platform::NativeWindow stale = 0;
    {
        const HiddenWindow gone;
        stale = gone.native();
    }
    platform::setBackdropBlur(stale, true);
    platform::setBackdropBlur(stale, false);
}

TEST(BackdropTest, windowSurvivesSwitchingOnAndOff)
{
    const HiddenWindow window;
    ASSERT_TRUE(window.isAlive());
    for (const bool enabled : {true, false, false, true, true}) {
        platform::setBackdropBlur(window.native(), enabled);
        EXPECT_TRUE(window.isAlive());
    }
}

} // namespace
