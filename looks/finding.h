// One thing that somebody ought to know about a look.
#pragma once

#include <string>

namespace looks {

enum class Weight {
    kFatal,  // the effect cannot use it
    kTrap,   // it works, and is probably not what was meant
    kNote,   // worth knowing
};

// "fatal", "trap", "note".
const char* wordOf(Weight weight);

struct Finding {
    Weight weight;
    std::string id;      // a word for tools, such as "clipped-highlights"; it does not change
    std::string words;   // one sentence
    std::string advice;  // what to do, one sentence; empty where there is nothing to do
};

}  // namespace looks
