// What the sanitizers are to pass over in test programs: libraries that are not built for them and
// would drown what ours do.

#define SANITIZER_HOOK extern "C" __attribute__((visibility("default")))

// Foundation and the Objective-C runtime keep what they made to the end of the process; the C
// library forgets the folders of LOCPATH when it makes a locale; what fonts were chosen from stays.
SANITIZER_HOOK const char* __lsan_default_suppressions() {
    return "leak:libobjc.so\n"
           "leak:libgnustep-base.so\n"
           "leak:argz_add_sep\n"
           "leak:libfontconfig.so\n";
}

// While a class is set up they take the runtime's lock under their own and the other way round. The
// picture library's own threads synchronise in code that is not instrumented.
SANITIZER_HOOK const char* __tsan_default_suppressions() {
    return "deadlock:libobjc.so\n"
           "deadlock:libgnustep-base.so\n"
           "race:libOpenImageIO\n";
}

// A count of what was passed over would stand among the output that tests compare.
SANITIZER_HOOK const char* __lsan_default_options() {
    return "print_suppressions=0";
}
// A program may have options of its own.
SANITIZER_HOOK __attribute__((weak)) const char* __tsan_default_options() {
    return "print_suppressions=0";
}
