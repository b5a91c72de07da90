#include "host_sim/values/personality.h"

namespace host_sim {

Personality afterEffects() {
    return {"After Effects", "25.0", kAfterEffectsId, {PF_AE_PLUG_IN_VERSION, 29}};
}

Personality premierePro() {
    return {"Premiere Pro", "13.1", kPremiereProId, {PF_AE_PLUG_IN_VERSION, 4}};
}

}  // namespace host_sim
