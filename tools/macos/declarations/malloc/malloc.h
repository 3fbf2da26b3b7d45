// Declared in malloc/malloc.h; no page of the documentation is known.
#pragma once
#include <stddef.h>
struct mstats {
    size_t bytes_total, chunks_used, bytes_used, chunks_free, bytes_free;
};
typedef struct _malloc_zone_t malloc_zone_t;
extern "C" {
struct mstats mstats(void);
size_t malloc_zone_pressure_relief(malloc_zone_t* zone, size_t goal);
}
