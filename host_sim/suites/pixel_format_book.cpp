#include "host_sim/suites/pixel_format_book.h"

#include <string>

#include "host_api/errors.h"
#include "host_sim/values/call_scope.h"

namespace host_sim {

PixelFormatBook::PixelFormatBook(Books& books, Refusals& refusals)
    : books_(books), refusals_(refusals) {}

bool PixelFormatBook::inGlobalSetup(const char* what) {
    const CallScope* scope = CallScope::current();
    if (scope != nullptr && scope->command() == PF_Cmd_GLOBAL_SETUP) return true;
    books_.problem(std::string(what) + " was called outside PF_Cmd_GLOBAL_SETUP");
    return false;
}

PF_Err PixelFormatBook::add(PrPixelFormat format) {
    if (!inGlobalSetup("AddSupportedPixelFormat")) return PF_Err_INVALID_CALLBACK;
    const std::lock_guard lock(mutex_);
    declared_.push_back(format);
    return PF_Err_NONE;
}

PF_Err PixelFormatBook::clear() {
    if (!inGlobalSetup("ClearSupportedPixelFormats")) return PF_Err_INVALID_CALLBACK;
    const std::lock_guard lock(mutex_);
    declared_.clear();
    ++clearCalls_;
    return PF_Err_NONE;
}

PF_Err PixelFormatBook::formatOf(const PF_EffectWorld* world, PrPixelFormat* format) {
    if (world == nullptr || format == nullptr) {
        books_.problem("GetPixelFormat was given a null pointer");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (const PF_Err error = refusals_.answer(Refusal::kPixelFormat)) return error;
    const std::lock_guard lock(mutex_);
    const auto found = lent_.find(world->platform_ref);
    if (found == lent_.end()) {
        books_.problem("GetPixelFormat was given a world that is not of the current command");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *format = found->second;
    return PF_Err_NONE;
}

std::vector<PrPixelFormat> PixelFormatBook::declared() const {
    const std::lock_guard lock(mutex_);
    return declared_;
}

int PixelFormatBook::clearCalls() const {
    const std::lock_guard lock(mutex_);
    return clearCalls_;
}

void PixelFormatBook::lend(PF_EffectWorld& world, PrPixelFormat format) {
    const std::lock_guard lock(mutex_);
    // A number that is nobody's address: the effect must not look behind it.
    world.platform_ref = reinterpret_cast<void*>(nextToken_++);
    lent_[world.platform_ref] = format;
}

void PixelFormatBook::withdraw(const PF_EffectWorld& world) {
    const std::lock_guard lock(mutex_);
    lent_.erase(world.platform_ref);
}

}  // namespace host_sim
