// A program that does what its arguments say; tests copy it under other names into folders of their own.
//   CommandHelper exit CODE            ends with that code
//   CommandHelper sleep MS FILE        waits, then writes FILE
//   CommandHelper write FILE ARGS...   writes the arguments into FILE, a line each
// Named otherwise than CommandHelper, it ends with code 77 and writes a file beside itself: planted programs tell.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

int main(int argc, char **argv)
{
    const std::vector<std::string> words(argv, argv + argc);
    const std::string verb = argc > 1 ? words[1] : std::string();
    if (verb == "exit" && argc > 2) {
        return std::atoi(argv[2]);
    }
    if (verb == "sleep" && argc > 3) {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::atoi(argv[2])));
        std::ofstream(words[3]) << "done\n";
        return 0;
    }
    if (verb == "write" && argc > 2) {
        std::ofstream file(words[2]);
        for (int i = 3; i < argc; ++i) {
            file << words[static_cast<std::size_t>(i)] << '\n';
        }
        return 0;
    }
    std::ofstream(words[0] + ".ran") << "ran\n";
    return 77;
}
