// Symbol export control for libquill23.
//
// The library is built with hidden visibility; every public class, routine and
// variable is marked QUILL_API so that it is exported from libquill23.so.
#pragma once

#if defined(QUILL_BUILDING)
#define QUILL_API __attribute__((visibility("default")))
#else
#define QUILL_API __attribute__((visibility("default")))
#endif

// For entry points that hosts look up by plain name with dlsym().
#define QUILL_C_API extern "C" __attribute__((visibility("default")))
