// An open file of the kernel that is closed with its owner.
#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int owned)
        : descriptor(owned)
    { }
    FileDescriptor(FileDescriptor &&other) noexcept
        : descriptor(other.release())
    { }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        if (this != &other) {
            close();
            descriptor = other.release();
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { close(); }

    bool isOpen() const { return descriptor >= 0; }
    int get() const { return descriptor; } // below 0 when not open
    int release() { return std::exchange(descriptor, -1); }

private:
    void close() const
    {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }

    int descriptor = -1;
};

} // namespace platform
