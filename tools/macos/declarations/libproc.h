// Apple documents these in the header alone. Only the members that are used.
#pragma once

#include <stdint.h>
#include <sys/types.h>

struct proc_bsdinfo {
    uid_t pbi_uid;
    uint64_t pbi_start_tvsec;
};

#define PROC_PIDTBSDINFO 3
#define PROC_PIDPATHINFO_MAXSIZE 4096

extern "C" {
int proc_pidinfo(int process, int flavor, uint64_t argument, void* buffer, int size);
int proc_pidpath(int process, void* buffer, uint32_t size);
int proc_listallpids(void* buffer, int size);
}
