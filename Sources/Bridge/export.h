// Marks the plain functions that the bundle exports to its host: C linkage, visible in the symbol
// table.
#pragma once

#ifdef __cplusplus
#define VIREONIX_EXPORT_BEGIN                                                                      \
  extern "C" {                                                                                     \
  _Pragma("GCC visibility push(default)")
#define VIREONIX_EXPORT_END                                                                        \
  _Pragma("GCC visibility pop")                                                                    \
  }
#else
#define VIREONIX_EXPORT_BEGIN _Pragma("GCC visibility push(default)")
#define VIREONIX_EXPORT_END _Pragma("GCC visibility pop")
#endif
