// What Windows reads from the program's file before it runs: manifest, version, icon, and the hardening flags.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::filesystem::path executablePath()
{
    return std::filesystem::absolute(VELTRA_EXECUTABLE).make_preferred();
}

// The program's file, mapped for its resources only.
class ResourceFile
{
public:
    ResourceFile()
        : module(LoadLibraryExW(executablePath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE))
    { }
    ~ResourceFile()
    {
        if (module != nullptr) {
            FreeLibrary(module);
        }
    }

    ResourceFile(const ResourceFile &) = delete;
    ResourceFile &operator=(const ResourceFile &) = delete;
    ResourceFile(ResourceFile &&) = delete;
    ResourceFile &operator=(ResourceFile &&) = delete;

    // Empty when there is no such resource.
    std::span<const std::byte> find(const wchar_t *name, const wchar_t *type) const
    {
        HRSRC entry = module == nullptr ? nullptr : FindResourceW(module, name, type);
        HGLOBAL resource = entry == nullptr ? nullptr : LoadResource(module, entry);
        if (resource == nullptr) {
            return {};
        }
        return {static_cast<const std::byte *>(LockResource(resource)),
                SizeofResource(module, entry)};
    }

private:
    HMODULE module = nullptr;
};

template<typename Record>
Record recordAt(std::span<const std::byte> bytes, std::size_t offset)
{
    Record record{};
    if (offset + sizeof(record) <= bytes.size()) {
        const auto part = bytes.subspan(offset, sizeof(record));
        std::ranges::copy(part, std::as_writable_bytes(std::span(&record, 1)).begin());
    }
    return record;
}

std::string manifestText()
{
    const ResourceFile file;
    const auto manifest = file.find(MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    return {reinterpret_cast<const char *>(manifest.data()), manifest.size()};
}

std::vector<std::byte> versionRecord()
{
    const std::filesystem::path path = executablePath();
    std::vector<std::byte> record(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    const auto size = static_cast<DWORD>(record.size());
    if (size == 0 || GetFileVersionInfoW(path.c_str(), 0, size, record.data()) == 0) {
        return {};
    }
    return record;
}

std::wstring versionString(const std::wstring &name)
{
    const std::vector<std::byte> record = versionRecord();
    const std::wstring key = L"\\StringFileInfo\\040904B0\\" + name;
    void *text = nullptr;
    UINT length = 0;
    if (record.empty() || VerQueryValueW(record.data(), key.c_str(), &text, &length) == 0) {
        return L"(missing)";
    }
    return static_cast<const wchar_t *>(text);
}

// Four numbers, the last one for the build, which is not used.
std::array<unsigned, 4> fixedFileVersion()
{
    const std::vector<std::byte> record = versionRecord();
    void *value = nullptr;
    UINT length = 0;
    if (record.empty() || VerQueryValueW(record.data(), L"\\", &value, &length) == 0) {
        return {};
    }
    const auto *info = static_cast<const VS_FIXEDFILEINFO *>(value);
    return {HIWORD(info->dwFileVersionMS),
            LOWORD(info->dwFileVersionMS),
            HIWORD(info->dwFileVersionLS),
            LOWORD(info->dwFileVersionLS)};
}

std::wstring dottedVersion(const std::array<unsigned, 4> &numbers)
{
    return std::to_wstring(numbers[0]) + L"." + std::to_wstring(numbers[1]) + L"."
        + std::to_wstring(numbers[2]);
}

std::wstring projectVersion()
{
    constexpr std::string_view kVersion = VELTRA_VERSION;
    return {kVersion.begin(), kVersion.end()};
}

// The widths of the images in a group, in its own order; the record stores 256 as 0.
std::vector<int> imageWidths(std::span<const std::byte> group)
{
    constexpr std::size_t kHeaderSize = 6;
    constexpr std::size_t kEntrySize = 14;
    std::vector<int> widths;
    for (std::size_t at = kHeaderSize; at + kEntrySize <= group.size(); at += kEntrySize) {
        const int stored = std::to_integer<int>(group[at]);
        widths.push_back(stored == 0 ? 256 : stored);
    }
    return widths;
}

IMAGE_NT_HEADERS64 imageHeaders()
{
    std::ifstream file(executablePath(), std::ios::binary);
    std::array<std::byte, 4096> start{};
    file.read(reinterpret_cast<char *>(start.data()), start.size());
    const auto dosHeader = recordAt<IMAGE_DOS_HEADER>(start, 0);
    return recordAt<IMAGE_NT_HEADERS64>(start, static_cast<std::size_t>(dosHeader.e_lfanew));
}

TEST(ManifestTest, asksForNoMoreRightsThanTheCallerHas)
{
    EXPECT_THAT(manifestText(),
                HasSubstr(R"(<requestedExecutionLevel level="asInvoker" uiAccess="false"/>)"));
}

TEST(ManifestTest, acceptsLongPaths)
{
    EXPECT_THAT(manifestText(), HasSubstr("longPathAware"));
    EXPECT_THAT(manifestText(), HasSubstr(">true</longPathAware>"));
}

TEST(ManifestTest, leavesDpiAwarenessToQt)
{
    std::string text = manifestText();
    ASSERT_FALSE(text.empty());
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    EXPECT_THAT(text, Not(HasSubstr("dpiaware")));
}

TEST(ManifestTest, namesEveryWindowsFromSevenOn)
{
    const std::string text = manifestText();
    EXPECT_THAT(text, HasSubstr("{35138b9a-5d96-4fbd-8e2d-a2440225f93a}")); // 7
    EXPECT_THAT(text, HasSubstr("{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}")); // 8
    EXPECT_THAT(text, HasSubstr("{1f676c76-80e1-4239-95bb-83d0f6d0da78}")); // 8.1
    EXPECT_THAT(text, HasSubstr("{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}")); // 10 and 11
}

TEST(ManifestTest, usesTheThemedControls)
{
    EXPECT_THAT(manifestText(),
                HasSubstr(R"(name="Microsoft.Windows.Common-Controls" version="6.0.0.0")"));
}

TEST(ManifestTest, isTheOnlyOne)
{
    constexpr int kLastCandidate = 16;
    const ResourceFile file;
    for (int id = 2; id <= kLastCandidate; ++id) {
        EXPECT_TRUE(file.find(MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(24)).empty()) << id;
    }
}

TEST(VersionTest, namesProductAndMaker)
{
    EXPECT_EQ(versionString(L"ProductName"), L"Veltra Premium C++ PC Optimizer");
    EXPECT_EQ(versionString(L"FileDescription"), L"Veltra Premium C++ PC Optimizer");
    EXPECT_EQ(versionString(L"CompanyName"), L"Veltra");
    EXPECT_EQ(versionString(L"OriginalFilename"), L"VeltraOptimizer.exe");
    EXPECT_THAT(versionString(L"LegalCopyright"), HasSubstr(L"Veltra"));
}

TEST(VersionTest, isTheVersionOfTheProject)
{
    EXPECT_EQ(versionString(L"FileVersion"), projectVersion());
    EXPECT_EQ(versionString(L"ProductVersion"), projectVersion());
    EXPECT_EQ(dottedVersion(fixedFileVersion()), projectVersion());
}

TEST(IconTest, hasEverySizeUnderTheNameThatQtLooksFor)
{
    const ResourceFile file;
    // 14 is the type of a group of icons; the constant for it depends on the character set.
    const auto group = file.find(L"IDI_ICON1", MAKEINTRESOURCEW(14));
    EXPECT_THAT(imageWidths(group), ElementsAre(16, 24, 32, 48, 64, 128, 256));
}

TEST(HeaderTest, isAWindowedProgramFor64Bits)
{
    const IMAGE_NT_HEADERS64 headers = imageHeaders();
    EXPECT_EQ(headers.Signature, static_cast<DWORD>(IMAGE_NT_SIGNATURE));
    EXPECT_EQ(headers.FileHeader.Machine, IMAGE_FILE_MACHINE_AMD64);
    EXPECT_EQ(headers.OptionalHeader.Subsystem, IMAGE_SUBSYSTEM_WINDOWS_GUI);
}

TEST(HeaderTest, isLoadedAtRandomAddressesWithoutExecutableData)
{
    constexpr unsigned kHighEntropy = 0x20;
    const IMAGE_NT_HEADERS64 headers = imageHeaders();
    const unsigned flags = headers.OptionalHeader.DllCharacteristics;
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_TRUE(flags & kHighEntropy);
    // A random address is of no use to a program that cannot be moved.
    EXPECT_FALSE(headers.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
    const auto &relocations = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC];
    EXPECT_GT(relocations.Size, 0U);
}

} // namespace
