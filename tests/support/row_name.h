// Names the tests of a table by its rows' own names.
#pragma once

#include <string>

namespace twtest {

struct RowName {
    template <class Info>
    std::string operator()(const Info& info) const {
        return info.param.name;
    }
};

}  // namespace twtest
