#include "fuzz/session/steps.h"

namespace session_fuzz {
namespace {

using host_sim::Refusal;
using host_sim::SuiteAnswer;

}  // namespace

void refuse(SessionState& session, Record& record) {
    host_sim::Refusals& host = session.host.refusals();
    Reference& reference = session.reference;
    const int what = record.below(8);
    const int nth = 1 + record.below(4);
    const auto suiteAnswer = record.flag() ? SuiteAnswer::kNullTable : SuiteAnswer::kNotFound;
    switch (what) {
        case 0:
            host.fail(Refusal::kAllocation, reference.allocation = nth);
            break;
        case 1:
            host.fail(Refusal::kLock, reference.lock = nth);
            break;
        case 2:
            host.fail(Refusal::kResize, reference.resize = nth);
            break;
        case 3:
            host.replaceHandleOnResize(true);
            break;
        case 4:
            host.answerSuite(kPFParamUtilsSuite, suiteAnswer);
            reference.noParamUtils = true;
            break;
        case 5:
            host.answerSuite(kPFPixelFormatSuite, suiteAnswer);
            reference.noPixelFormats = true;
            break;
        case 6:
            host.withoutBasicSuite(true);
            reference.noParamUtils = reference.noPixelFormats = reference.noBasicSuite = true;
            break;
        default:
            host.fail(Refusal::kParamUpdate, host_sim::kEveryCall,
                      reference.paramUpdateError = nth);
            host.fail(Refusal::kPixelFormat, host_sim::kEveryCall,
                      reference.pixelFormatError = nth);
    }
}

void endRefusals(SessionState& session) {
    session.host.refusals().clear();
    session.reference = {};
}

}  // namespace session_fuzz
