// Disks that are full or cannot be written.
#pragma once

#include <cstddef>
#include <string>

namespace twtest {

// A disk of sixteen blocks in the place of a folder, for this process alone; gone with the object.
// Needs root, or a system that lets users have mounts of their own.
class SmallDisk {
public:
    explicit SmallDisk(const std::string& folder);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool mounted() const { return mounted_; }
    // The size of a block.
    static std::size_t blockSize();

    // Leaves no room for another block of any file, until emptied. Throws std::runtime_error when
    // it cannot.
    void fill() const;
    void makeRoom() const;
    void makeReadOnly() const;

private:
    std::string folder_;
    bool mounted_ = false;
};

}  // namespace twtest
