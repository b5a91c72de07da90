#pragma once

#define PATH_MAX 1024
#define NAME_MAX 255
#undef MB_LEN_MAX
#define MB_LEN_MAX 6
