#include <cstring>

#include "host_sim/callbacks.h"
#include "host_sim/session.h"

namespace host_sim {
namespace {

SPErr acquireSuite(const char* name, std::int32_t version, const void** suite) {
    return Session::called().suites.acquire(name, version, suite);
}

SPErr releaseSuite(const char* name, std::int32_t version) {
    return Session::called().suites.release(name, version);
}

SPBoolean isEqual(const char* a, const char* b) {
    return std::strcmp(a, b) == 0 ? 1 : 0;
}

SPErr allocateBlock(std::size_t, void**) {
    return kSPUnimplementedError;
}

SPErr freeBlock(void*) {
    return kSPUnimplementedError;
}

SPErr reallocateBlock(void*, std::size_t, void**) {
    return kSPUnimplementedError;
}

SPErr undefined() {
    return kSPUnimplementedError;
}

PF_Err addSupported(PF_ProgPtr effect, PrPixelFormat format) {
    Session& session = Session::called();
    if (!session.instanceOf(effect, "AddSupportedPixelFormat")) return PF_Err_BAD_CALLBACK_PARAM;
    return session.formats.add(format);
}

PF_Err clearSupported(PF_ProgPtr effect) {
    Session& session = Session::called();
    if (!session.instanceOf(effect, "ClearSupportedPixelFormats")) return PF_Err_BAD_CALLBACK_PARAM;
    return session.formats.clear();
}

PF_Err getPixelFormat(PF_EffectWorld* world, PrPixelFormat* format) {
    return Session::called().formats.formatOf(world, format);
}

PF_Err updateParamUi(PF_ProgPtr effect, PF_ParamIndex index, const PF_ParamDef* definition) {
    Session& session = Session::called();
    const std::optional<int> instance = session.instanceOf(effect, "PF_UpdateParamUI");
    if (!instance) return PF_Err_BAD_CALLBACK_PARAM;
    return session.paramUpdates.update(*instance, index, definition);
}

}  // namespace

SPBasicSuite basicSuite() {
    return {acquireSuite, releaseSuite,    isEqual,  allocateBlock,
            freeBlock,    reallocateBlock, undefined};
}

PF_PixelFormatSuite pixelFormatSuite() {
    PF_PixelFormatSuite table = {};
    table.AddSupportedPixelFormat = addSupported;
    table.ClearSupportedPixelFormats = clearSupported;
    table.GetPixelFormat = getPixelFormat;
    return table;
}

PF_ParamUtilsSuite3 paramUtilsSuite() {
    PF_ParamUtilsSuite3 table = {};
    table.PF_UpdateParamUI = updateParamUi;
    return table;
}

}  // namespace host_sim
