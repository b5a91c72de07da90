#pragma once

#include <objc/objc.h>

@protocol OS_dispatch_queue
@end
typedef id<OS_dispatch_queue> dispatch_queue_t;
typedef void (^dispatch_block_t)(void);
struct dispatch_queue_s;

TW_C_BEGIN
extern struct dispatch_queue_s _dispatch_main_q;
static inline dispatch_queue_t dispatch_get_main_queue(void) {
    return (dispatch_queue_t)(void*)&_dispatch_main_q;
}
void dispatch_sync(dispatch_queue_t, __attribute__((noescape)) dispatch_block_t);
TW_C_END
