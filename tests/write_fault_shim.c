// Loaded with LD_PRELOAD into dovrex-headless: fails one write, fsync or rename of the program's
// data files with EIO, as a full or failing disc would.
//
//   DOVREX_FAULT_AT=n       the n-th such call on a data file fails (0: none fails, only counted)
//   DOVREX_FAULT_COUNT=file at exit, the number of such calls made is written there
//
// The data files are the working copy and the pack with their staged names (dovrex.dat,
// dovrex.dat.new, dovrex.aux, dovrex.aux.new) wherever they live, and Bak/dovrex.dat. A COMMIT of
// the working copy reaches the file through pwrite, so a failed COMMIT is among the calls.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

static atomic_long calls;

static int isDataFile(const char* path) {
    if (!path) return 0;
    const char* slash = strrchr(path, '/');
    const char* name = slash ? slash + 1 : path;
    static const char* const names[] = {"dovrex.dat", "dovrex.dat.new", "dovrex.aux", "dovrex.aux.new"};
    for (size_t i = 0; i < sizeof names / sizeof *names; ++i)
        if (strcmp(name, names[i]) == 0) return 1;
    return 0;
}

static int fdIsDataFile(int fd) {
    char link[64], path[4096];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    const ssize_t n = readlink(link, path, sizeof path - 1);
    if (n <= 0) return 0;
    path[n] = '\0';
    return isDataFile(path);
}

// Counts a call on a data file; true when this one is to fail.
static int failsNow(void) {
    const long n = atomic_fetch_add(&calls, 1) + 1;
    const char* at = getenv("DOVREX_FAULT_AT");
    return at && atol(at) == n;
}

typedef ssize_t (*WriteFn)(int, const void*, size_t);
typedef ssize_t (*PwriteFn)(int, const void*, size_t, off_t);
typedef int (*SyncFn)(int);
typedef int (*RenameFn)(const char*, const char*);

// The C library's own function of that name, looked up once.
#define REAL(name, type)     \
    static type real_##name; \
    if (!real_##name) real_##name = (type)dlsym(RTLD_NEXT, #name)

ssize_t write(int fd, const void* buf, size_t count) {
    REAL(write, WriteFn);
    if (fd > 2 && fdIsDataFile(fd) && failsNow()) {
        errno = EIO;
        return -1;
    }
    return real_write(fd, buf, count);
}

ssize_t pwrite64(int fd, const void* buf, size_t count, off_t offset) {
    REAL(pwrite64, PwriteFn);
    if (fdIsDataFile(fd) && failsNow()) {
        errno = EIO;
        return -1;
    }
    return real_pwrite64(fd, buf, count, offset);
}

ssize_t pwrite(int fd, const void* buf, size_t count, off_t offset) {
    REAL(pwrite, PwriteFn);
    if (fdIsDataFile(fd) && failsNow()) {
        errno = EIO;
        return -1;
    }
    return real_pwrite(fd, buf, count, offset);
}

int fsync(int fd) {
    REAL(fsync, SyncFn);
    if (fdIsDataFile(fd) && failsNow()) {
        errno = EIO;
        return -1;
    }
    return real_fsync(fd);
}

int fdatasync(int fd) {
    REAL(fdatasync, SyncFn);
    if (fdIsDataFile(fd) && failsNow()) {
        errno = EIO;
        return -1;
    }
    return real_fdatasync(fd);
}

int rename(const char* from, const char* to) {
    REAL(rename, RenameFn);
    if ((isDataFile(from) || isDataFile(to)) && failsNow()) {
        errno = EIO;
        return -1;
    }
    return real_rename(from, to);
}

__attribute__((destructor)) static void reportCalls(void) {
    const char* file = getenv("DOVREX_FAULT_COUNT");
    if (!file) return;
    FILE* f = fopen(file, "w");
    if (!f) return;
    fprintf(f, "%ld\n", (long)atomic_load(&calls));
    fclose(f);
}
