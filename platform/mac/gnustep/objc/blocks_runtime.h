// GNUstep's headers ask for this one where blocks are on; Debian's runtime lacks it.
#pragma once

#include <Block.h>
