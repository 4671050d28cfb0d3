// From the start of the process to its first frame: the program's window against a bare one, 20 starts each in turn,
// after one of each to warm up. Needs a display.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int kStarts = 20;

double millisecondsToFirstFrame(const std::string &probe, const char *kind)
{
    const auto start = std::chrono::steady_clock::now().time_since_epoch();
    const std::string command = "exec '" + probe + "' " + kind;
    FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return -1;
    }
    std::array<char, 64> line{};
    const bool answered = std::fgets(line.data(), line.size(), pipe) != nullptr;
    pclose(pipe);
    const auto began = std::chrono::duration_cast<std::chrono::nanoseconds>(start).count();
    return answered ? static_cast<double>(std::atoll(line.data()) - began) / 1e6 : -1;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const auto half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

} // namespace

int main(int /*argc*/, char **argv)
{
    const std::string self = argv[0];
    const std::string probe = self.substr(0, self.rfind('/') + 1) + "StartProbe";
    std::vector<double> bare;
    std::vector<double> veltra;
    for (int i = 0; i <= kStarts; ++i) {
        const double one = millisecondsToFirstFrame(probe, "bare");
        const double other = millisecondsToFirstFrame(probe, "veltra");
        if (one < 0 || other < 0) {
            std::fprintf(stderr, "a start failed; is there a display?\n");
            return 1;
        }
        if (i > 0) {
            bare.push_back(one);
            veltra.push_back(other);
        }
    }
    std::printf(
        "first frame, median of %d starts: bare window %.1f ms, Veltra %.1f ms, ratio %.2f\n",
        kStarts,
        median(bare),
        median(veltra),
        median(veltra) / median(bare));
    return 0;
}
