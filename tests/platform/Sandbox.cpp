#include "platform/FolderCleaner.h"
#include "platform/SpecialFolders.h"
#include "platform/TestFiles.h"

namespace testfiles {

Sandbox::Sandbox()
    : root(platform::temporaryFolder() / ("files-" + std::to_string(freshNumber())))
{
    makeFolder(root);
    makeFolder(folder());
    makeFolder(outside());
}

Sandbox::~Sandbox()
{
    std::error_code ignored;
    platform::emptyFolder(root);
    std::filesystem::remove(root, ignored);
}

Path Sandbox::makeCanary() const
{
    Path canary = outside() / "canary";
    makeFolder(canary);
    makeFolder(canary / "inner");
    makeFile(canary / "song", "tweet");
    makeFile(canary / "inner" / "egg", std::string("\0yolk\n", 6));
    return canary;
}

bool Sandbox::isCanaryWell(const Path &canary)
{
    return contentOf(canary / "song") == "tweet"
        && contentOf(canary / "inner" / "egg") == std::string("\0yolk\n", 6);
}

} // namespace testfiles
