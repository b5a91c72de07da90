// A host suite held for a scope.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// Acquires a suite on construction and releases it on destruction. get() is null when the host has
// no basic suite, refuses, or answers with nothing; then there is nothing to release. The suite's
// record belongs to the host and is valid for this object's life. Threads: those of the command.
template <typename Suite>
class ScopedSuite {
public:
    ScopedSuite(SPBasicSuite* basic, const char* name, int version)
        : basic_(basic), name_(name), version_(version) {
        const void* suite = nullptr;
        if (basic_ && basic_->AcquireSuite(name_, version_, &suite) == 0) {
            suite_ = static_cast<const Suite*>(suite);
        }
    }
    ~ScopedSuite() {
        if (suite_) basic_->ReleaseSuite(name_, version_);
    }
    ScopedSuite(const ScopedSuite&) = delete;
    ScopedSuite& operator=(const ScopedSuite&) = delete;

    const Suite* get() const { return suite_; }
    explicit operator bool() const { return suite_ != nullptr; }
    const Suite* operator->() const { return suite_; }

private:
    SPBasicSuite* basic_;
    const char* name_;
    int version_;
    const Suite* suite_ = nullptr;
};

// Premiere Pro's pixel formats. After Effects has another suite by this name, of another version
// and shape.
class PixelFormats : public ScopedSuite<PF_PixelFormatSuite1> {
public:
    explicit PixelFormats(SPBasicSuite* basic)
        : ScopedSuite(basic, kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1) {}
};

// How parameters look in the host's panel.
class ParamUtils : public ScopedSuite<PF_ParamUtilsSuite3> {
public:
    explicit ParamUtils(SPBasicSuite* basic)
        : ScopedSuite(basic, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3) {}
};

}  // namespace tw_effect
