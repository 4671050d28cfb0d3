// Stands in for PowerShell: tests copy it, as "powershell", into a folder of their own. What it does in its N-th run is
// told by files beside it, each of which may be missing:
//   answer-N   bytes for standard output         error-N   bytes for standard error
//   repeat-N   how often to print the answer     sleep-N   milliseconds to wait first
//   exit-N     exit code
// The file "calls" gets a line for each run: the number, "begins", and the arguments, each behind a tab; and one with the
// number and "ends".
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

namespace {

using Path = std::filesystem::path;

std::string contentOf(const Path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

int numberIn(const Path &file, int otherwise)
{
    const std::string text = contentOf(file);
    return text.empty() ? otherwise : std::atoi(text.c_str());
}

int countedRun(const Path &folder)
{
    const int run = numberIn(folder / "count", 0) + 1;
    std::ofstream(folder / "count", std::ios::binary) << run;
    return run;
}

} // namespace

int main(int argc, char **argv)
{
    const Path folder = Path(argv[0]).parent_path();
    const int run = countedRun(folder);
    const std::string number = std::to_string(run);
    std::ofstream calls(folder / "calls", std::ios::binary | std::ios::app);
    calls << number << " begins";
    for (int i = 1; i < argc; ++i) {
        calls << '\t' << argv[i];
    }
    calls << '\n' << std::flush;

    std::this_thread::sleep_for(
        std::chrono::milliseconds(numberIn(folder / ("sleep-" + number), 0)));
    const std::string answer = contentOf(folder / ("answer-" + number));
    for (int left = numberIn(folder / ("repeat-" + number), 1); left > 0; --left) {
        std::fwrite(answer.data(), 1, answer.size(), stdout);
    }
    const std::string error = contentOf(folder / ("error-" + number));
    std::fwrite(error.data(), 1, error.size(), stderr);
    calls << number << " ends\n";
    return numberIn(folder / ("exit-" + number), 0);
}
