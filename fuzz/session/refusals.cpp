#include "fuzz/session/commands.h"

namespace session_fuzz {
namespace {

void refuseSuite(Stage& stage, const char* name, bool asNull) {
    if (asNull) {
        stage.host.refusals().nullSuite(name);
    } else {
        stage.host.refusals().hideSuite(name);
    }
}

}  // namespace

void refuse(Stage& stage, Record& record) {
    host_sim::Refusals& host = stage.host.refusals();
    Reference& reference = stage.reference;
    const int what = record.below(8);
    const int nth = 1 + record.below(4);
    const bool asNull = record.flag();
    switch (what) {
        case 0:
            host.failAllocation(reference.allocation = nth);
            break;
        case 1:
            host.failLock(reference.lock = nth);
            break;
        case 2:
            host.failResize(reference.resize = nth);
            break;
        case 3:
            host.replaceHandleOnResize(true);
            break;
        case 4:
            refuseSuite(stage, kPFParamUtilsSuite, asNull);
            reference.noParamUtils = true;
            break;
        case 5:
            refuseSuite(stage, kPFPixelFormatSuite, asNull);
            reference.noPixelFormats = true;
            break;
        case 6:
            host.withoutBasicSuite(true);
            reference.noParamUtils = reference.noPixelFormats = reference.noBasicSuite = true;
            break;
        default:
            host.failParamUpdate(reference.paramUpdateError = nth);
            host.failPixelFormat(reference.pixelFormatError = nth);
    }
}

void endRefusals(Stage& stage) {
    stage.host.refusals().clear();
    stage.reference = {};
}

}  // namespace session_fuzz
