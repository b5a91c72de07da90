// No guard: what NDEBUG says when it is included last counts.
#include <_declare.h>

#undef assert
#ifdef NDEBUG
#define assert(condition) ((void)0)
#else
TW_C_BEGIN
void __assert_rtn(const char* function, const char* file, int line, const char* condition)
    __attribute__((noreturn));
TW_C_END
#define assert(condition) \
    ((condition) ? (void)0 : __assert_rtn(__func__, __FILE__, __LINE__, #condition))
#endif
