#include "tintwell_host/look_files/each_file.h"

#include <algorithm>
#include <cstdio>

#include "tintwell_host/look_files/table.h"

namespace program {

std::optional<Failure> readEach(const std::vector<std::string>& files,
                                const std::function<void(const std::string&)>& read) {
    std::size_t unread = 0;
    Exit worst = Exit::kWrongInput;
    for (const std::string& file : files) {
        try {
            read(file);
        } catch (const Unreadable& failure) {
            if (files.size() == 1) throw;
            std::fflush(stdout);
            std::fprintf(stderr, "tintwell-host: %s\n", plain(failure.what()).c_str());
            worst = std::max(worst, failure.exit());
            ++unread;
        }
    }
    if (unread == 0) return std::nullopt;
    return Failure(
        std::to_string(unread) + " of " + std::to_string(files.size()) + " files could not be read",
        worst);
}

}  // namespace program
