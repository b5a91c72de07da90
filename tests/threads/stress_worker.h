// One of the threads that use the effect all at once.
#pragma once

#include <cstdint>
#include <string>

#include "host_sim/gpu_instance.h"
#include "tests/support/random.h"
#include "tests/threads/shared_host.h"

namespace stress {

// Does what a host or its user would do, at random but the same for the same seed, and fails the
// test for every result that is not as the inputs say. Worker 0 is the host's main thread as
// well: the only one that applies, duplicates, saves and removes effects.
//
// Threads: made and asked for its tally by one thread, run by another.
class Worker {
public:
    Worker(SharedHost& shared, int number, std::uint64_t seed);

    void run(int rounds);
    const Tally& tally() const { return tally_; }

private:
    // Renders on the CPU.
    void render();     // an effect that others use at the same time
    void renderOwn();  // the worker's own, whose look changes
    void renderInPlace();
    // Data callbacks.
    void useOneValue();     // from NEW to DISPOSE
    void useSharedValue();  // the value of an effect that others use
    void refuseValues();
    // Labels, and changes of the own effect.
    void updateLabel();
    void pressLutButton();
    void pressEditButton();
    void setLook();
    void setNewLook();  // of a new name
    void setAmount();
    // A GPU filter instance, from its creation to its end.
    void useTheGpu();
    void fallBackToTheCpu();
    // The main thread's.
    void duplicate();
    void saveAndLoad();
    void readAbout();

    template <class Container>
    const auto& any(const Container& container) {
        return container[static_cast<std::size_t>(
            random_.below(static_cast<int>(container.size())))];
    }
    const Inputs& inputs() const { return shared_.inputs(); }
    std::size_t anyScene() { return static_cast<std::size_t>(random_.below(4)); }
    void renderOne(const Effect& effect, std::size_t scene);
    void mayLogRender(const Effect& effect, const host_sim::Frame& output);
    void updateLabelOf(const Effect& effect);
    void mayLogLabel(const Look& look, const std::string& reason);
    void mayLogFailure(const Look& look);
    void mayLogSetup(const Effect& effect, const host_sim::Frame& input, bool inPlace);
    void renderOnGpu(host_sim::GpuInstance& filter, const Effect& effect, unsigned device);
    void pickFile(const CubeFile& file);
    void readRequest(const Look& look);

    SharedHost& shared_;
    std::string name_;  // in all runs of the process
    int number_;
    int newLooks_ = 0;
    twtest::Random random_;
    Effect own_;
    std::string ownLabel_ = "Change LUT";  // what its button says
    Look newLook_;                         // the last one of its kind
    Tally tally_;
};

}  // namespace stress
