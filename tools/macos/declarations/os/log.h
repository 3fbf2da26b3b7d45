// https://developer.apple.com/documentation/os/logging
#pragma once

#include <stdint.h>

typedef struct os_log_s* os_log_t;
typedef uint8_t os_log_type_t;
enum : os_log_type_t {
    OS_LOG_TYPE_DEFAULT = 0x00,
    OS_LOG_TYPE_INFO = 0x01,
    OS_LOG_TYPE_DEBUG = 0x02,
    OS_LOG_TYPE_ERROR = 0x10,
    OS_LOG_TYPE_FAULT = 0x11
};

extern "C" {
os_log_t _Nonnull os_log_create(const char* _Nonnull subsystem, const char* _Nonnull category);
// A macro in Apple's header.
void os_log_with_type(os_log_t _Nonnull log, os_log_type_t type, const char* _Nonnull format, ...)
    __attribute__((format(os_log, 3, 4)));
}
