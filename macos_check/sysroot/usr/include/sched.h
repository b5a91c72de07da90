#pragma once

#include <_declare.h>

TW_C_BEGIN
int sched_yield(void);
TW_C_END
