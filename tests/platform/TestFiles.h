// Files for the tests of everything that deletes: made and examined by the system's own calls, so that paths of any
// length and names of any bytes will do.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace testfiles {

using Path = std::filesystem::path;

void makeFolder(
    const Path &path); // its parent exists; throws std::runtime_error, as do the next two
void makeFile(const Path &path, const std::string &content = "x");
void makeReadOnly(const Path &path);

bool isThere(const Path &path); // links are not followed
std::string contentOf(const Path &path); // empty when it cannot be read

// False where the system, or the user's rights, do not allow it.
bool makeFileLink(const Path &target, const Path &link);
bool makeFolderLink(const Path &target, const Path &link);
bool makeJunction(const Path &target, const Path &link);
bool makeHardLink(const Path &target, const Path &link);
bool removeLink(const Path &link);

// Wine 8 opens the target of a link whichever way it is asked, so links have to stay there, and so does what they point
// to. And for each new name it searches the whole folder, for each file that it opens the whole path.
bool isWine();

bool isEmptyFolder(const Path &path);
std::uint64_t residentBytes(); // the memory of this process right now

// The sanitizers keep freed memory for a while, up to hundreds of MB, so that late uses of it show.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kFreedMemoryGoes = false;
#else
inline constexpr bool kFreedMemoryGoes = true;
#endif

std::uint64_t freshNumber(); // another one in each process

// A folder of its own below the temporary folder, which goes with all its contents.
class Sandbox
{
public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox &) = delete;
    Sandbox &operator=(const Sandbox &) = delete;

    Path folder() const { return root / "target"; } // exists
    Path outside() const { return root / "outside"; } // exists, beside it

    // A tree beside the folder that nobody may touch, and whether it is still the same, byte by byte.
    Path makeCanary() const;
    static bool isCanaryWell(const Path &canary);

private:
    Path root;
};

} // namespace testfiles
