// The main queue, and a synchronous hand-over to it.
#pragma once

typedef void (^dispatch_block_t)(void);
typedef struct tw_main_queue* dispatch_queue_t;

extern "C" {

dispatch_queue_t dispatch_get_main_queue(void);

// Runs the block on the main thread's run loop, in the modes in which macOS drains the main queue,
// and returns when it has run. Ends the process when called on the main thread, where it would wait
// for itself for ever.
void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block);
}
