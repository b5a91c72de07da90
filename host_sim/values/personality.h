// What makes one host application differ from the other towards an effect.
#pragma once

#include <string>

#include "host_api/types.h"

namespace host_sim {

constexpr A_long kAfterEffectsId = 0x46585443;  // 'FXTC'
constexpr A_long kPremiereProId = 0x50724D72;   // 'PrMr'

// A plain value: take one of the two below and change what a test wants changed.
struct Personality {
    std::string name;     // as passed to the registration entry point
    std::string version;  // likewise
    A_long applId = kAfterEffectsId;
    PF_SpecVersion apiVersion = {PF_AE_PLUG_IN_VERSION, PF_AE_PLUG_IN_SUBVERS};

    bool isPremiere() const { return applId == kPremiereProId; }
};

// Worlds are 8-bit ARGB and there is no pixel format suite version 1.
Personality afterEffects();

// Pixel formats are negotiated through that suite. An older interface version than the effect's.
Personality premierePro();

}  // namespace host_sim
