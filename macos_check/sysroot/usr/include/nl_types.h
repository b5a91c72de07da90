#pragma once

#include <_declare.h>

#define NL_CAT_LOCALE 1

typedef void* nl_catd;

TW_C_BEGIN
nl_catd catopen(const char* name, int flags);
char* catgets(nl_catd catalogue, int set, int message, const char* otherwise);
int catclose(nl_catd catalogue);
TW_C_END
