// What the C headers of Linux lack; included before every file. Manual pages: rename(2), sync(2), getsockopt(2),
// intro(2).
#pragma once

#include <sys/types.h>

extern "C" {
int renamex_np(const char* from, const char* to, unsigned int flags);
int sync_volume_np(const char* path, int flags);
}
#define RENAME_SWAP 0x00000002
#define SYNC_VOLUME_FULLSYNC 0x01
#define SYNC_VOLUME_WAIT 0x02
#define SO_NOSIGPIPE 0x1022
