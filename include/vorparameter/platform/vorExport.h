//===- vorExport.h - Symbol visibility of the public API --------*- C++ -*-===//
//
// The library is built with hidden symbols by default; every class and free
// function a host may call is marked VOR_API so that it is exported from the
// shared object.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_VOREXPORT_H
#define VORPARAMETER_PLATFORM_VOREXPORT_H

#if defined(_WIN32)
#if defined(VORPARAMETER_BUILDING)
#define VOR_API __declspec(dllexport)
#else
#define VOR_API __declspec(dllimport)
#endif
#else
#define VOR_API __attribute__((visibility("default")))
#endif

#endif // VORPARAMETER_PLATFORM_VOREXPORT_H
