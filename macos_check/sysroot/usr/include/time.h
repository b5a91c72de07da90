#pragma once

#include <_declare.h>

struct tm {
    int tm_sec, tm_min, tm_hour, tm_mday, tm_mon, tm_year, tm_wday, tm_yday, tm_isdst;
    long tm_gmtoff;
    char* tm_zone;
};
#define CLOCKS_PER_SEC ((clock_t)1000000)
#define TIME_UTC 1
typedef enum {
    CLOCK_REALTIME = 0,
    CLOCK_MONOTONIC = 6,
    CLOCK_MONOTONIC_RAW = 4,
    CLOCK_PROCESS_CPUTIME_ID = 12,
    CLOCK_THREAD_CPUTIME_ID = 16
} clockid_t;

TW_C_BEGIN
clock_t clock(void);
double difftime(time_t, time_t);
time_t mktime(struct tm*);
time_t time(time_t*);
char* asctime(const struct tm*);
char* ctime(const time_t*);
struct tm* gmtime(const time_t*);
struct tm* gmtime_r(const time_t*, struct tm*);
struct tm* localtime(const time_t*);
struct tm* localtime_r(const time_t*, struct tm*);
size_t strftime(char*, size_t, const char*, const struct tm*)
    __attribute__((format(strftime, 3, 0)));
void tzset(void);
int nanosleep(const struct timespec*, struct timespec*);
int clock_gettime(clockid_t, struct timespec*);
int timespec_get(struct timespec*, int);
TW_C_END
