// Sizes, places and values that the system's libraries were built with. Compiled on a Mac this
// checks the facts themselves; compiled with the check sysroot it checks the sysroot's declarations
// against the facts. Compiling is the test.
#include <pthread.h>
#include <sys/stat.h>
#include <xlocale.h>

#include <cctype>
#include <cerrno>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <cwchar>
#include <mutex>
#include <string>
#include <thread>
#include <type_traits>

static_assert(std::is_same_v<std::int64_t, long long>);
static_assert(std::is_same_v<std::uint64_t, unsigned long long>);
static_assert(std::is_same_v<std::size_t, unsigned long>);
static_assert(std::is_same_v<std::time_t, long> && std::is_same_v<std::clock_t, unsigned long>);
static_assert(sizeof(wchar_t) == 4 && std::is_signed_v<wchar_t>);
static_assert(sizeof(wint_t) == 4 && sizeof(mbstate_t) == 128 && alignof(mbstate_t) == 8);
static_assert(sizeof(off_t) == 8 && sizeof(mode_t) == 2 && sizeof(dev_t) == 4 &&
              sizeof(ino_t) == 8 && sizeof(std::fpos_t) == 8);
static_assert(WCHAR_MAX == 0x7fffffff && MB_LEN_MAX == 6);

static_assert(sizeof(std::tm) == 56 && offsetof(std::tm, tm_isdst) == 32);
static_assert(offsetof(std::tm, tm_gmtoff) == 40 && offsetof(std::tm, tm_zone) == 48);
static_assert(sizeof(timespec) == 16 && offsetof(timespec, tv_nsec) == 8);
static_assert(CLOCK_REALTIME == 0 && CLOCK_MONOTONIC == 6 && CLOCKS_PER_SEC == 1000000);

static_assert(sizeof(struct stat) == 144);
static_assert(offsetof(struct stat, st_mode) == 4 && offsetof(struct stat, st_nlink) == 6);
static_assert(offsetof(struct stat, st_ino) == 8 && offsetof(struct stat, st_rdev) == 24);
static_assert(offsetof(struct stat, st_mtimespec) == 48);
static_assert(offsetof(struct stat, st_size) == 96 && offsetof(struct stat, st_blocks) == 104);
static_assert(offsetof(struct stat, st_flags) == 116 && offsetof(struct stat, st_qspare) == 128);

static_assert(sizeof(std::lconv) == 96 && offsetof(std::lconv, negative_sign) == 72);
static_assert(offsetof(std::lconv, int_frac_digits) == 80);
static_assert(LC_ALL == 0 && LC_CTYPE == 2 && LC_NUMERIC == 4 && LC_MESSAGES == 6);
static_assert(LC_ALL_MASK == 63 && LC_CTYPE_MASK == 2 && LC_NUMERIC_MASK == 16);

static_assert(sizeof(pthread_t) == 8 && sizeof(pthread_key_t) == 8);
static_assert(sizeof(pthread_mutex_t) == 64 && sizeof(pthread_mutexattr_t) == 16);
static_assert(sizeof(pthread_cond_t) == 48 && sizeof(pthread_condattr_t) == 16);
static_assert(sizeof(pthread_once_t) == 16 && sizeof(pthread_attr_t) == 64);
static_assert(sizeof(pthread_rwlock_t) == 200 && sizeof(pthread_rwlockattr_t) == 24);
static_assert(PTHREAD_MUTEX_NORMAL == 0 && PTHREAD_MUTEX_RECURSIVE == 2);

static_assert(EOF == -1 && BUFSIZ == 1024 && SEEK_END == 2 && FILENAME_MAX == 1024);
static_assert(_IOFBF == 0 && _IOLBF == 1 && _IONBF == 2 && RAND_MAX == 0x7fffffff);
static_assert(ENOENT == 2 && EAGAIN == 35 && EEXIST == 17 && ENAMETOOLONG == 63 && ELOOP == 62);
static_assert(ENOTSUP == 45 && EOVERFLOW == 84 && EILSEQ == 92 && ETIMEDOUT == 60);
static_assert(EOWNERDEAD == 105 && ECANCELED == 89 && ENOTEMPTY == 66 && EOPNOTSUPP == 102);
static_assert(FP_NAN == 1 && FP_INFINITE == 2 && FP_ZERO == 3 && FP_NORMAL == 4);
static_assert(FP_SUBNORMAL == 5 && FP_ILOGB0 == INT_MIN && FP_ILOGBNAN == INT_MIN);
static_assert(_CTYPE_A == 0x100 && _CTYPE_D == 0x400 && _CTYPE_S == 0x4000 && _CTYPE_X == 0x10000);

static_assert(sizeof(std::string) == 24 && sizeof(std::wstring) == 24);
static_assert(sizeof(std::mutex) == 64 && sizeof(std::once_flag) == 8 && sizeof(std::thread) == 8);
