// Makes the system's calls for files and folders fail in this process. Functions of the test
// program stand in for the library's.
//
// Threads: one.
#pragma once

namespace program_test {

// The system's error of each; 0: it goes well again.

// A folder cannot be read any further once so many entries were given.
void failEntriesAfter(int count, int error);
// A file cannot be read any further once so many pieces were given.
void failReadsAfter(int count, int error);
// No folder can be made.
void failMaking(int error);

}  // namespace program_test
