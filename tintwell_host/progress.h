// How far a sequence has come, on a terminal; nothing where nobody watches.
#pragma once

#include <cstddef>

namespace program {

class Progress {
public:
    explicit Progress(std::size_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(std::size_t done) const;

private:
    std::size_t total_;
    bool visible_;
};

}  // namespace program
