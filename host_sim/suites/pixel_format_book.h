// What "PF Pixel Format Suite" of the simulated Premiere Pro is asked and told.
#pragma once

#include <map>
#include <mutex>
#include <vector>

#include "host_api/pixel_format_suite.h"
#include "host_sim/values/books.h"
#include "host_sim/values/refusals.h"

namespace host_sim {

// Formats that the effect declared, and the formats of the worlds now in its hands.
//
// Threads: every function from any thread. Lock order: before that of the books.
class PixelFormatBook {
public:
    PixelFormatBook(Books& books, Refusals& refusals);

    PF_Err add(PrPixelFormat format);
    PF_Err clear();
    PF_Err formatOf(const PF_EffectWorld* world, PrPixelFormat* format);

    // In the order of adding.
    std::vector<PrPixelFormat> declared() const;
    int clearCalls() const;

    // Marks `world` (through its platform_ref, so that a copy is known too) as one of `format`
    // until it is withdrawn.
    void lend(PF_EffectWorld& world, PrPixelFormat format);
    void withdraw(const PF_EffectWorld& world);

private:
    bool inGlobalSetup(const char* what);

    Books& books_;
    Refusals& refusals_;
    mutable std::mutex mutex_;
    std::vector<PrPixelFormat> declared_;
    std::map<const void*, PrPixelFormat> lent_;
    std::size_t nextToken_ = 1;
    int clearCalls_ = 0;
};

}  // namespace host_sim
