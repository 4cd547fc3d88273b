#pragma once

// QRTCL_API marks what the library exports. Users of a static build get QRTCL_STATIC from the CMake target.
#if defined(_WIN32) && !defined(QRTCL_STATIC)
#if defined(QRTCL_BUILDING)
#define QRTCL_API __declspec(dllexport)
#else
#define QRTCL_API __declspec(dllimport)
#endif
#elif defined(_WIN32)
#define QRTCL_API
#else
#define QRTCL_API __attribute__((visibility("default")))
#endif
