// An open process that is closed with its owner.
// Thread: one at a time.
#pragma once

#include <utility>
#include <windows.h>

namespace platform {

// Not open: a null handle, which is how the system says that a process cannot be opened.
class ProcessHandle
{
public:
    ProcessHandle() = default;
    explicit ProcessHandle(HANDLE owned)
        : handle(owned)
    { }
    ProcessHandle(ProcessHandle &&other) noexcept
        : handle(std::exchange(other.handle, nullptr))
    { }
    ProcessHandle &operator=(ProcessHandle &&other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    ProcessHandle(const ProcessHandle &) = delete;
    ProcessHandle &operator=(const ProcessHandle &) = delete;
    ~ProcessHandle()
    {
        if (isOpen()) {
            CloseHandle(handle);
        }
    }

    bool isOpen() const { return handle != nullptr; }
    HANDLE get() const { return handle; }

private:
    HANDLE handle = nullptr;
};

} // namespace platform
