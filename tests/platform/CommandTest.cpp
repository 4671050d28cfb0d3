// Finding and running programs, for real: the helper program in folders of the test's own.
#include "platform/Command.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace std::chrono_literals;
using platform::RunOutcome;
namespace fs = std::filesystem;

#ifdef VELTRA_ON_WINDOWS
constexpr const char *kSuffix = ".exe";
constexpr char kSeparator = ';';
void setVariable(const std::string &name, const std::string &value)
{
    _putenv_s(name.c_str(), value.c_str());
}
#else
constexpr const char *kSuffix = "";
constexpr char kSeparator = ':';
void setVariable(const std::string &name, const std::string &value)
{
    setenv(name.c_str(), value.c_str(), 1);
}
#endif

class CommandTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        root = fs::temp_directory_path() / (std::string("veltra-command-") + test->name());
        fs::remove_all(root);
        for (const char *name : {"one", "two with blanks", "here"}) {
            fs::create_directories(root / name);
        }
        oldFolder = fs::current_path();
        oldPath = std::getenv("PATH");
        fs::current_path(root / "here");
    }

    void TearDown() override
    {
        fs::current_path(oldFolder);
        setVariable("PATH", oldPath);
        std::error_code error;
        fs::remove_all(root, error);
    }

    fs::path plant(const fs::path &folder, const std::string &name)
    {
        fs::path file = root / folder / (name + kSuffix);
        fs::copy_file(VELTRA_COMMAND_HELPER, file, fs::copy_options::overwrite_existing);
        return file;
    }

    void setPath(const std::vector<fs::path> &folders)
    {
        std::string path;
        for (const fs::path &folder : folders) {
            path += (path.empty() ? "" : std::string(1, kSeparator)) + folder.string();
        }
        setVariable("PATH", path);
    }

    static bool appears(const fs::path &file)
    {
        for (int i = 0; i < 500 && !fs::exists(file); ++i) {
            std::this_thread::sleep_for(20ms);
        }
        return fs::exists(file);
    }

    fs::path root;
    fs::path oldFolder;
    std::string oldPath;
};

TEST_F(CommandTest, findsTheFirstOnPath)
{
    const fs::path second = plant("two with blanks", "tool");
    setPath({root / "missing", root / "one", root / "two with blanks"});
    EXPECT_EQ(platform::findOnPath("tool"), second);
    const fs::path first = plant("one", "tool");
    EXPECT_EQ(platform::findOnPath("tool"), first);
    EXPECT_FALSE(platform::findOnPath("nothing-of-that-name").has_value());
    EXPECT_FALSE(platform::findOnPath("").has_value());
}

TEST_F(CommandTest, endingMayBeGiven)
{
    const fs::path tool = plant("one", "tool");
    setPath({root / "one"});
    EXPECT_EQ(platform::findOnPath(tool.filename().string()), tool);
}

#ifndef VELTRA_ON_WINDOWS
TEST_F(CommandTest, passesOverWhatCannotBeRun)
{
    fs::create_directories(root / "three" / "tool");
    fs::permissions(plant("one", "tool"), fs::perms::owner_read);
    const fs::path runs = plant("two with blanks", "tool");
    setPath({root / "three", root / "one", root / "two with blanks"});
    EXPECT_EQ(platform::findOnPath("tool"), runs);
}
#endif

TEST_F(CommandTest, neverLooksInTheCurrentFolder)
{
    plant("here", "ipconfig");
    setPath({root / "one"});
    EXPECT_FALSE(platform::findOnPath("ipconfig").has_value());
    setVariable("PATH",
                std::string(1, kSeparator) + "." + kSeparator + (root / "one").string()
                    + kSeparator);
    EXPECT_FALSE(platform::findOnPath("ipconfig").has_value());
    EXPECT_FALSE(platform::findOnPath("./ipconfig").has_value());
    EXPECT_EQ(platform::runHidden({"ipconfig", {"/flushdns"}}, 5000ms), RunOutcome::NotStarted);
    EXPECT_FALSE(fs::exists(root / "here" / (std::string("ipconfig") + kSuffix + ".ran")));
}

TEST_F(CommandTest, neverLooksBesideTheProgram)
{
    const fs::path planted =
        fs::path(VELTRA_COMMAND_HELPER).parent_path() / (std::string("veltra-planted") + kSuffix);
    fs::copy_file(VELTRA_COMMAND_HELPER, planted, fs::copy_options::overwrite_existing);
    setPath({root / "one"});
    EXPECT_EQ(platform::runHidden({"veltra-planted", {}}, 5000ms), RunOutcome::NotStarted);
    fs::remove(planted);
}

TEST_F(CommandTest, exitCodeDecides)
{
    plant("one", "helper");
    setPath({root / "one"});
    EXPECT_EQ(platform::runHidden({"helper", {"exit", "0"}}, 20000ms), RunOutcome::Succeeded);
    EXPECT_EQ(platform::runHidden({"helper", {"exit", "3"}}, 20000ms), RunOutcome::Failed);
    EXPECT_EQ(platform::runHidden({"absent", {}}, 20000ms), RunOutcome::NotStarted);
}

TEST_F(CommandTest, argumentsArriveAsTheyAre)
{
    plant("two with blanks", "helper");
    setPath({root / "two with blanks"});
    const std::vector<std::string> words{
        "plain", "two words", "quo\"te", "back\\slash\\", "\\\"both", "", "a\tb", "'$x'"};
    std::vector<std::string> arguments{"write", (root / "out.txt").string()};
    arguments.insert(arguments.end(), words.begin(), words.end());
    EXPECT_EQ(platform::runHidden({"helper", arguments}, 20000ms), RunOutcome::Succeeded);
    std::ifstream file(root / "out.txt");
    for (const std::string &word : words) {
        std::string line;
        std::getline(file, line);
        EXPECT_EQ(line, word);
    }
}

TEST_F(CommandTest, slowCommandGoesOnByItself)
{
    plant("one", "helper");
    setPath({root / "one"});
    const fs::path mark = root / "mark";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(platform::runHidden({"helper", {"sleep", "1500", mark.string()}}, 200ms),
              RunOutcome::StillRunning);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1400ms);
    EXPECT_FALSE(fs::exists(mark));
    EXPECT_TRUE(appears(mark));
    EXPECT_EQ(platform::runHidden({"helper", {"exit", "0"}}, 20000ms), RunOutcome::Succeeded);
}

TEST_F(CommandTest, manyRuns)
{
    plant("one", "helper");
    setPath({root / "one"});
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(platform::runHidden({"helper", {"exit", std::to_string(i % 2)}}, 20000ms),
                  i % 2 == 0 ? RunOutcome::Succeeded : RunOutcome::Failed);
    }
}

} // namespace
