// Makes a read fail at a chosen place. The test program's fread is also the one that the module
// uses.
#pragma once

namespace twtest {

// The nth call of fread from now on, 1 being the next, reads nothing, as when a disk fails.
void failRead(int nth);

}  // namespace twtest
