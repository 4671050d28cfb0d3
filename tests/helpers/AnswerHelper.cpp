// A stand-in for the programs that ask the web. It is copied under their names, tells its two questions apart by
// "format=j1" (the weather's), and does what <question>.plan beside it says, a step a line:
//   print FILE     copies a file from beside it to the output
//   fill BYTES     prints that many letters
//   flood          prints letters without end
//   complain BYTES prints to the error output
//   input          reads the input to its end
//   await FILE     waits for a file beside it, for a minute at most
//   pulse          goes on for minutes, and writes into <question>.pulse all the time
//   mark FILE      writes a file beside it
//   exit CODE      ends with that code
// First of all it writes its arguments into <question>.arguments, a NUL after each, adds a byte to <question>.runs, and
// at the end it writes <question>.done.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

fs::path folder;
std::string question;

fs::path own(const char *extension)
{
    return folder / (question + extension);
}

void print(std::FILE *stream, long long bytes)
{
    const std::string block(65536, 'x');
    while (bytes > 0) {
        const auto size =
            static_cast<std::size_t>(std::min(bytes, static_cast<long long>(block.size())));
        if (std::fwrite(block.data(), 1, size, stream) != size) {
            return;
        }
        bytes -= static_cast<long long>(size);
    }
    std::fflush(stream);
}

void copy(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    const std::string bytes = text.str();
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

void await(const fs::path &file)
{
    for (int i = 0; i < 3000 && !fs::exists(file); ++i) {
        std::this_thread::sleep_for(20ms);
    }
}

void pulse()
{
    for (int i = 0; i < 6000; ++i) {
        std::ofstream(own(".pulse"), std::ios::app) << '.';
        std::this_thread::sleep_for(20ms);
    }
}

void takeStep(const std::string &verb, const std::string &operand)
{
    if (verb == "print") {
        copy(folder / operand);
    } else if (verb == "fill") {
        print(stdout, std::atoll(operand.c_str()));
    } else if (verb == "flood") {
        print(stdout, 1LL << 60);
    } else if (verb == "complain") {
        print(stderr, std::atoll(operand.c_str()));
    } else if (verb == "input") {
        std::cin.ignore(1 << 30);
    } else if (verb == "await") {
        await(folder / operand);
    } else if (verb == "pulse") {
        pulse();
    } else if (verb == "mark") {
        std::ofstream(folder / operand) << '.';
    } else if (verb == "exit") {
        std::exit(std::atoi(operand.c_str()));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv, argv + argc);
    folder = fs::path(words[0]).parent_path();
    question = "location";
    std::string arguments;
    for (std::size_t i = 1; i < words.size(); ++i) {
        arguments += words[i] + '\0';
        if (words[i].find("format=j1") != std::string::npos) {
            question = "weather";
        }
    }
    std::ofstream(own(".arguments"), std::ios::binary) << arguments;
    std::ofstream(own(".runs"), std::ios::app) << '.';

    std::vector<std::pair<std::string, std::string>> steps;
    std::ifstream plan(own(".plan"));
    for (std::string line; std::getline(plan, line);) {
        const auto blank = line.find(' ');
        steps.emplace_back(line.substr(0, blank),
                           blank == std::string::npos ? "" : line.substr(blank + 1));
    }
    for (const auto &[verb, operand] : steps) {
        takeStep(verb, operand);
    }
    std::ofstream(own(".done")) << '.';
    return 0;
}
