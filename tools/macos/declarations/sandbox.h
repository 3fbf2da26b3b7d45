// Manual page: sandbox_init(3)
#pragma once

#include <stdint.h>

extern "C" {
int sandbox_init(const char* _Nonnull profile, uint64_t flags, char* _Nullable* _Nonnull error)
    __attribute__((deprecated));
void sandbox_free_error(char* _Nullable error) __attribute__((deprecated));
}
