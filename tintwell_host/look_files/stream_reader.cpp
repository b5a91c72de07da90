#include "tintwell_host/look_files/stream_reader.h"

#include <archive.h>
#include <archive_entry.h>

#include <array>
#include <cerrno>
#include <clocale>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string_view>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

constexpr std::size_t kPiece = 1 << 16;

// Bytes one after the other.
class Source {
public:
    virtual ~Source() = default;
    // Up to `count` bytes; 0 at the end. Throws Broken for a rest that is damaged, and Lost.
    virtual std::size_t read(char* bytes, std::size_t count) = 0;
};

// what() is the reason.
struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The system does not read the file further.
struct Lost {
    int error;
};

// More came out of a file than may.
struct TooMuch {};

class FileSource : public Source {
public:
    explicit FileSource(std::istream& in) : in_(in) {}
    std::size_t read(char* bytes, std::size_t count) override {
        in_.read(bytes, static_cast<std::streamsize>(count));
        if (in_.bad()) throw Lost{errno};
        const auto got = static_cast<std::size_t>(in_.gcount());
        total_ += got;
        return got;
    }
    std::uint64_t total() const { return total_; }

private:
    std::istream& in_;
    std::uint64_t total_ = 0;
};

// Another source, of which the first bytes can be looked at beforehand.
class PeekedSource : public Source {
public:
    explicit PeekedSource(Source& source) : source_(source) {
        while (held_ < start_.size()) {
            const std::size_t got = source.read(start_.data() + held_, start_.size() - held_);
            if (got == 0) break;
            held_ += got;
        }
    }
    std::string_view start() const { return {start_.data(), held_}; }
    std::size_t read(char* bytes, std::size_t count) override {
        if (given_ == held_) return source_.read(bytes, count);
        const std::size_t some = std::min(count, held_ - given_);
        std::memcpy(bytes, start_.data() + given_, some);
        given_ += some;
        return some;
    }

private:
    Source& source_;
    std::array<char, 4> start_{};
    std::size_t held_ = 0;
    std::size_t given_ = 0;
};

// While it lives, names of members may hold any letter: they come through the thread's locale.
class Utf8Names {
public:
    Utf8Names()
        : utf8_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)),
          before_(utf8_ ? uselocale(utf8_) : nullptr) {}
    ~Utf8Names() {
        if (!utf8_) return;
        uselocale(before_);
        freelocale(utf8_);
    }
    Utf8Names(const Utf8Names&) = delete;
    Utf8Names& operator=(const Utf8Names&) = delete;

private:
    locale_t utf8_;
    locale_t before_;
};

struct FreeArchive {
    void operator()(archive* reader) const { archive_read_free(reader); }
};

// What a source has packed, as members.
class Archive {
public:
    Archive(Source& source, bool zip) : source_(source), reader_(archive_read_new()) {
        if (!reader_) throw std::bad_alloc();
        if (zip) {
            archive_read_support_format_zip_streamable(reader_.get());
        } else {
            archive_read_support_filter_gzip(reader_.get());
            archive_read_support_format_raw(reader_.get());
        }
        if (archive_read_open(reader_.get(), this, nullptr, &Archive::give, nullptr) !=
            ARCHIVE_OK) {
            fail();
        }
    }

    // The name of the next member; null at the end.
    const char* next() {
        archive_entry* entry = nullptr;
        const int status = archive_read_next_header(reader_.get(), &entry);
        if (status == ARCHIVE_EOF) return nullptr;
        if (status < ARCHIVE_WARN) fail();
        const char* name = archive_entry_pathname(entry);
        return name ? name : "?";
    }

    // Whether there is anything to unpack, once a member is known. It need not be, for what begins
    // like a gzip file.
    bool isPacked() const {
        return archive_format(reader_.get()) != ARCHIVE_FORMAT_RAW ||
               archive_filter_code(reader_.get(), 0) != ARCHIVE_FILTER_NONE;
    }

    std::size_t read(char* bytes, std::size_t count) {
        const la_ssize_t got = archive_read_data(reader_.get(), bytes, count);
        if (got < 0) fail();
        return static_cast<std::size_t>(got);
    }

private:
    static la_ssize_t give(archive* reader, void* self, const void** bytes) {
        Archive& archive = *static_cast<Archive*>(self);
        try {
            *bytes = archive.buffer_.data();
            return static_cast<la_ssize_t>(
                archive.source_.read(archive.buffer_.data(), archive.buffer_.size()));
        } catch (const Broken& broken) {
            archive_set_error(reader, EIO, "%s", broken.what());
            return -1;
        } catch (...) {
            archive.thrown_ = std::current_exception();
            return -1;
        }
    }

    [[noreturn]] void fail() {
        if (thrown_) std::rethrow_exception(thrown_);
        const char* reason = archive_error_string(reader_.get());
        throw Broken(reason ? reason : "it is damaged");
    }

    Source& source_;
    std::exception_ptr thrown_;  // by the source, through the library
    std::array<char, kPiece> buffer_;
    std::unique_ptr<archive, FreeArchive> reader_;
};

// One pass through a file.
class Walk {
public:
    Walk(const FileSource& file, StreamVisitor& visitor, const StreamLimits& limits)
        : file_(file), visitor_(visitor), limits_(limits) {}

    void read(Source& bytes, const std::string& name, int depth) {
        PeekedSource source(bytes);
        const bool zip = source.start().starts_with("PK\x03\x04");
        if (!zip && !source.start().starts_with("\x1F\x8B")) {
            readPlain(source, name);
        } else if (depth == limits_.depth) {
            visitor_.warn("'" + name + "' lies too deep in packed files to be looked into");
        } else {
            readPacked(source, name, zip, depth);
        }
    }

private:
    class Member : public Source {
    public:
        Member(Walk& walk, Archive& archive) : walk_(walk), archive_(archive) {}
        std::size_t read(char* bytes, std::size_t count) override {
            const std::size_t got = archive_.read(bytes, count);
            walk_.count(got);
            return got;
        }

    private:
        Walk& walk_;
        Archive& archive_;
    };

    void count(std::size_t bytes) {
        unpacked_ += bytes;
        if (unpacked_ > limits_.bytes + limits_.ratio * file_.total()) throw TooMuch{};
    }

    void readPlain(Source& source, const std::string& name) {
        visitor_.begin(name);
        std::array<char, kPiece> piece;
        try {
            while (const std::size_t got = source.read(piece.data(), piece.size()))
                visitor_.bytes(piece.data(), got);
        } catch (...) {
            visitor_.end();
            throw;
        }
        visitor_.end();
    }

    void readPacked(Source& source, const std::string& name, bool zip, int depth) {
        try {
            const auto archive = std::make_unique<Archive>(source, zip);
            while (const char* member = archive->next()) {
                const std::string inner = zip ? name + "/" + member : name;
                Member bytes(*this, *archive);
                readMember(bytes, inner, archive->isPacked(), depth + 1);
            }
        } catch (const Broken& broken) {
            visitor_.warn("'" + name + "' cannot be read further: " + broken.what());
        }
    }

    // A damaged member leaves the others, if the file says how long it is.
    void readMember(Member& bytes, const std::string& name, bool packed, int depth) {
        try {
            packed ? read(bytes, name, depth) : readPlain(bytes, name);
        } catch (const Broken& broken) {
            visitor_.warn("'" + name + "' cannot be read further: " + broken.what());
        }
    }

    const FileSource& file_;
    StreamVisitor& visitor_;
    StreamLimits limits_;
    std::uint64_t unpacked_ = 0;
};

}  // namespace

void readStreams(const std::string& file, StreamVisitor& visitor, const StreamLimits& limits) {
    std::error_code unknown;
    if (std::filesystem::is_directory(file, unknown)) {
        throw Unreadable(file, "it is a folder");
    }
    std::ifstream opened;
    if (file != "-") opened.open(file, std::ios::binary);
    if (!opened) throw Unreadable(file, errno);
    FileSource source(file == "-" ? std::cin : opened);
    const Utf8Names names;
    try {
        Walk(source, visitor, limits).read(source, file, 0);
    } catch (const Lost& lost) {
        throw Unreadable(file, lost.error);
    } catch (const TooMuch&) {
        visitor.warn("'" + file +
                     "' unpacks to more than a project does; the rest is not looked "
                     "into");
    }
}

}  // namespace program
