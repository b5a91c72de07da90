#include "bench/bench_host.h"

#include "effect/identity.h"
#include "effect/render.h"

namespace bench {
namespace {

Handle* of(PF_Handle handle) {
    return reinterpret_cast<Handle*>(handle);
}

void* lockHandle(PF_Handle handle) {
    return of(handle)->bytes_.data();
}

A_u_longlong handleSize(PF_Handle handle) {
    return of(handle)->bytes_.size();
}

void unlockHandle(PF_Handle) {}

// The only suite that a render asks for; After Effects has it in another version.
PF_Err floatFormat(PF_EffectWorld*, PrPixelFormat* format) {
    *format = PrPixelFormat_BGRA_4444_32f;
    return PF_Err_NONE;
}

SPErr acquireFormats(const char*, std::int32_t, const void** suite) {
    static const PF_PixelFormatSuite1 formats = [] {
        PF_PixelFormatSuite1 table = {};
        table.GetPixelFormat = floatFormat;
        return table;
    }();
    *suite = &formats;
    return 0;
}

SPErr releaseFormats(const char*, std::int32_t) {
    return 0;
}

template <typename Image>
PF_LayerDef worldOf(const Image& image) {
    PF_LayerDef world = {};
    world.data = reinterpret_cast<PF_PixelPtr>(image.pixels);
    world.rowbytes = static_cast<A_long>(image.rowBytes);
    world.width = image.width;
    world.height = image.height;
    return world;
}

}  // namespace

RenderCall::RenderCall() {
    basic_.AcquireSuite = acquireFormats;
    basic_.ReleaseSuite = releaseFormats;
    callbacks_.host_lock_handle = lockHandle;
    callbacks_.host_unlock_handle = unlockHandle;
    callbacks_.host_get_handle_size = handleSize;
    host_.utils = &callbacks_;
    host_.pica_basicP = &basic_;
    for (int i = 0; i < tw_effect::kParamCount; ++i)
        params_[i] = &defs_[i];
    defs_[tw_effect::kParamAmount].u.fs_d.value = 80;
}

RenderCall::RenderCall(const tw::Image8& input, const tw::Image8& output) : RenderCall() {
    host_.appl_id = 0x46585452;  // 'FXTR'
    defs_[tw_effect::kParamInput].u.ld = worldOf(input);
    output_ = worldOf(output);
}

RenderCall::RenderCall(const tw::ImageF& input, const tw::ImageF& output) : RenderCall() {
    host_.appl_id = tw_effect::kPremiere;
    defs_[tw_effect::kParamInput].u.ld = worldOf(input);
    output_ = worldOf(output);
}

bool RenderCall::render(Handle& lut) {
    defs_[tw_effect::kParamLut].u.arb_d.value = lut.handle();
    return tw_effect::Render(host_, params_, output_) == PF_Err_NONE;
}

}  // namespace bench
