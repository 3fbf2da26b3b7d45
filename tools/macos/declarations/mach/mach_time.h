// https://developer.apple.com/documentation/kernel/mach_continuous_time
#pragma once

#include <stdint.h>

struct mach_timebase_info {
    uint32_t numer;
    uint32_t denom;
};
typedef struct mach_timebase_info mach_timebase_info_data_t;

extern "C" {
int mach_timebase_info(mach_timebase_info_data_t* info);
uint64_t mach_continuous_time(void);
}
