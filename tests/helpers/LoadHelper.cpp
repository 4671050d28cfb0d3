// A program that loads the machine in a way that a test can measure, until its standard input is closed.
//   LoadHelper idle                  does nothing
//   LoadHelper burn THREADS          keeps that many threads busy
//   LoadHelper hold MB               touches that much memory
//   LoadHelper write FILE MB         writes that many MB a second into a file, always new ones
// Prints "ready" when it has begun.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kMegabyte = 1'000'000;

void burn(int threads)
{
    for (int i = 0; i < threads; ++i) {
        std::thread([] {
            volatile unsigned long count = 0;
            while (true) {
                count = count + 1;
            }
        }).detach();
    }
}

void writeForever(const std::string &path, int megabytesPerSecond)
{
    using namespace std::chrono_literals;
    constexpr int kStepsPerSecond = 50;
    const std::vector<char> chunk(megabytesPerSecond * kMegabyte / kStepsPerSecond, 'x');
    std::FILE *file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        std::exit(1);
    }
    std::setvbuf(file, nullptr, _IONBF, 0);
    auto next = std::chrono::steady_clock::now();
    while (true) {
        std::fwrite(chunk.data(), 1, chunk.size(), file);
        next += 1000ms / kStepsPerSecond;
        std::this_thread::sleep_until(next);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv, argv + argc);
    const std::string verb = argc > 1 ? words[1] : std::string();
    std::vector<char> held;
    if (verb == "burn" && argc > 2) {
        burn(std::atoi(argv[2]));
    } else if (verb == "hold" && argc > 2) {
        held.assign(static_cast<std::size_t>(std::atoi(argv[2])) * kMegabyte, 'x');
    } else if (verb == "write" && argc > 3) {
        std::thread(writeForever, words[2], std::atoi(argv[3])).detach();
    }
    std::cout << "ready" << std::endl;
    while (std::cin.get() != std::char_traits<char>::eof()) { }
    std::_Exit(held.empty() ? 0 : held.back() == 'x' ? 0 : 1);
}
