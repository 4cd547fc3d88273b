#pragma once

// QRTCL_DOCUMENTS_API marks what the library of the concrete tree exports.
#if defined(_WIN32) && !defined(QRTCL_STATIC)
#if defined(QRTCL_DOCUMENTS_BUILDING)
#define QRTCL_DOCUMENTS_API __declspec(dllexport)
#else
#define QRTCL_DOCUMENTS_API __declspec(dllimport)
#endif
#elif defined(_WIN32)
#define QRTCL_DOCUMENTS_API
#else
#define QRTCL_DOCUMENTS_API __attribute__((visibility("default")))
#endif
