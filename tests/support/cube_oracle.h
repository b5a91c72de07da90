// A second reader of .cube texts, written line by line after the format's description. Numbers are
// read by the library's own atoi and strtof, so the process must be in the "C" locale.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/cube_messages.h"

namespace twtest {

struct ReadCube {
    bool ok = false;
    std::string error;
    tw::Lut3D lut;
};

class CubeOracle {
public:
    static ReadCube read(const std::string& text) {
        CubeOracle oracle(text);
        oracle.readLines();
        if (oracle.read_.error.empty()) oracle.checkWhole();
        oracle.read_.ok = oracle.read_.error.empty();
        if (oracle.read_.ok) oracle.read_.lut.data = oracle.values_;
        return oracle.read_;
    }

private:
    explicit CubeOracle(const std::string& text) : text_(text) {}

    void readLines() {
        std::size_t begin = 0;
        while (begin < text_.size() && read_.error.empty()) {
            std::size_t end = text_.find('\n', begin);
            if (end == std::string::npos) end = text_.size();
            readLine(begin, end);
            begin = end + 1;
        }
    }

    void readLine(std::size_t at, std::size_t end) {
        while (at < end && (text_[at] == ' ' || text_[at] == '\t' || text_[at] == '\r'))
            ++at;
        const std::string line = text_.substr(at, end - at);
        if (line.empty() || line[0] == '#') return;
        if (line.substr(0, 11) == "LUT_3D_SIZE") return readSize(at + 11);
        if (line.substr(0, 10) == "DOMAIN_MIN") return readDomain(at + 10, read_.lut.domainMin);
        if (line.substr(0, 10) == "DOMAIN_MAX") return readDomain(at + 10, read_.lut.domainMax);
        if (line.substr(0, 11) == "LUT_1D_SIZE") {
            read_.error = kOneD;
            return;
        }
        if (line[0] == '_' || (line[0] >= 'A' && line[0] <= 'Z')) return;
        readTriple(at);
    }

    void readSize(std::size_t at) {
        read_.lut.size = std::atoi(text_.c_str() + at);
        if (read_.lut.size < 2 || read_.lut.size > 256) read_.error = kRange;
    }

    void readDomain(std::size_t at, float* bound) {
        for (int channel = 0; channel < 3; ++channel)
            bound[channel] = readNumber(at);
    }

    void readTriple(std::size_t at) {
        for (int channel = 0; channel < 3; ++channel) {
            const std::size_t before = at;
            const float value = readNumber(at);
            if (at == before) {
                read_.error = kData;
                return;
            }
            values_.push_back(value);
        }
    }

    float readNumber(std::size_t& at) const {
        char* stop = nullptr;
        const float value = std::strtof(text_.c_str() + at, &stop);
        at = static_cast<std::size_t>(stop - text_.c_str());
        return value;
    }

    void checkWhole() {
        const tw::Lut3D& lut = read_.lut;
        const auto points = static_cast<std::size_t>(lut.size);
        if (lut.size == 0) {
            read_.error = kNoSize;
        } else if (values_.size() != points * points * points * 3) {
            read_.error = kCount;
        } else {
            for (int channel = 0; channel < 3; ++channel) {
                const bool rises = lut.domainMax[channel] > lut.domainMin[channel];
                if (!rises) read_.error = kDomain;
            }
        }
    }

    const std::string& text_;
    ReadCube read_;
    std::vector<float> values_;
};

}  // namespace twtest
