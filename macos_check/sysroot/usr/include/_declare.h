// What the other headers of the check sysroot share: the basic types of the C library of macOS.
#pragma once

#ifdef __cplusplus
#define TW_C_BEGIN extern "C" {
#define TW_C_END }
#else
#define TW_C_BEGIN
#define TW_C_END
#endif
// On x86-64 the functions with 64-bit inodes have linker names of their own.
#if defined(__x86_64__)
#define TW_INODE64(name) __asm__("_" name "$INODE64")
#else
#define TW_INODE64(name)
#endif
#include <stddef.h>

typedef __INT8_TYPE__ __int8_t;
typedef __UINT8_TYPE__ __uint8_t;
typedef __INT16_TYPE__ __int16_t;
typedef __UINT16_TYPE__ __uint16_t;
typedef __INT32_TYPE__ __int32_t;
typedef __UINT32_TYPE__ __uint32_t;
typedef long long __int64_t;
typedef unsigned long long __uint64_t;
typedef int __darwin_wint_t;
typedef int __darwin_rune_t;
typedef long ssize_t;
typedef __int64_t off_t;
typedef long time_t;
typedef unsigned long clock_t;
typedef __uint16_t mode_t;
typedef __int32_t dev_t;
typedef __uint64_t ino_t;
typedef __uint16_t nlink_t;
typedef __uint32_t uid_t;
typedef __uint32_t gid_t;
typedef __int32_t pid_t;
typedef __int64_t blkcnt_t;
typedef __int32_t blksize_t;
typedef __int32_t suseconds_t;
typedef __uint32_t useconds_t;
typedef int wint_t;
// Mangled by the first name that the union without a tag gets.
typedef union {
    char __mbstate8[128];
    long long _mbstateL;
} __mbstate_t;
typedef __mbstate_t mbstate_t;
struct timespec {
    time_t tv_sec;
    long tv_nsec;
};
struct _xlocale;
typedef struct _xlocale* locale_t;
