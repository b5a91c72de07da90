#pragma once

#include <_declare.h>

struct stat {
    dev_t st_dev;
    mode_t st_mode;
    nlink_t st_nlink;
    ino_t st_ino;
    uid_t st_uid;
    gid_t st_gid;
    dev_t st_rdev;
    struct timespec st_atimespec, st_mtimespec, st_ctimespec, st_birthtimespec;
    off_t st_size;
    blkcnt_t st_blocks;
    blksize_t st_blksize;
    __uint32_t st_flags, st_gen;
    __int32_t st_lspare;
    __int64_t st_qspare[2];
};
#define S_IFMT 0170000
#define S_IFIFO 0010000
#define S_IFDIR 0040000
#define S_IFREG 0100000
#define S_ISFIFO(m) (((m)&S_IFMT) == S_IFIFO)
#define S_ISDIR(m) (((m)&S_IFMT) == S_IFDIR)
#define S_ISREG(m) (((m)&S_IFMT) == S_IFREG)
#define S_IRWXU 0000700
#define S_IRWXG 0000070
#define S_IRWXO 0000007

TW_C_BEGIN
int stat(const char*, struct stat*) TW_INODE64("stat");
int fstat(int, struct stat*) TW_INODE64("fstat");
int lstat(const char*, struct stat*) TW_INODE64("lstat");
int mkdir(const char*, mode_t);
int chmod(const char*, mode_t);
TW_C_END
