/* Makes calls of the system fail, for tests of what a program does then: preloaded, with ZELCC_FAULT=KIND:N[+]. The N-th call of
 * that kind since main() fails, or with a + that one and all after it. KIND is memory, thread, read or write, which is anything
 * that may find a disk full. ZELCC_FAULT_COUNT names a file for the number of calls that there were. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <stdatomic.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static bool isRunning, isLasting;
static const char* kind = "";
static long first;
static atomic_long count;

static bool fails(const char* called, int error) {
    if (!isRunning || strcmp(kind, called) != 0) return false;
    const long number = ++count;
    if (number != first && !(isLasting && number > first)) return false;
    errno = error;
    return true;
}

#define NEXT(function) ((__typeof__(&function))dlsym(RTLD_NEXT, #function))

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void* __libc_memalign(size_t alignment, size_t size);

void* malloc(size_t size) { return fails("memory", ENOMEM) ? NULL : __libc_malloc(size); }
void* calloc(size_t number, size_t size) { return fails("memory", ENOMEM) ? NULL : __libc_calloc(number, size); }
void* realloc(void* memory, size_t size) { return fails("memory", ENOMEM) ? NULL : __libc_realloc(memory, size); }
int posix_memalign(void** memory, size_t alignment, size_t size) {
    if (fails("memory", ENOMEM)) return ENOMEM;
    *memory = __libc_memalign(alignment, size);
    return *memory ? 0 : ENOMEM;
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*), void* argument) {
    return fails("thread", 0) ? EAGAIN : NEXT(pthread_create)(thread, attributes, run, argument);
}

ssize_t read(int file, void* bytes, size_t size) { return fails("read", EIO) ? -1 : NEXT(read)(file, bytes, size); }
ssize_t write(int file, const void* bytes, size_t size) { return fails("write", ENOSPC) ? -1 : NEXT(write)(file, bytes, size); }
int ftruncate(int file, off_t size) { return fails("write", ENOSPC) ? -1 : NEXT(ftruncate)(file, size); }
int rename(const char* from, const char* to) { return fails("write", ENOSPC) ? -1 : NEXT(rename)(from, to); }
int close(int file) {  // which is closed in any case
    const int result = NEXT(close)(file);
    return fails("write", ENOSPC) ? -1 : result;
}

static int (*programMain)(int, char**, char**);

static int countedMain(int argumentCount, char** arguments, char** environment) {
    const char* fault = getenv("ZELCC_FAULT");
    const char* colon = fault ? strchr(fault, ':') : NULL;
    if (colon) {
        kind = strndup(fault, (size_t)(colon - fault));
        first = strtol(colon + 1, NULL, 10);
        isLasting = strchr(colon, '+') != NULL;
    }
    isRunning = true;
    const int code = programMain(argumentCount, arguments, environment);
    isRunning = false;
    const char* path = getenv("ZELCC_FAULT_COUNT");
    FILE* counts = path ? fopen(path, "w") : NULL;
    if (counts) {
        fprintf(counts, "%ld", (long)count);
        fclose(counts);
    }
    return code;
}

int __libc_start_main(int (*main)(int, char**, char**), int count, char** arguments, void (*begin)(void), void (*end)(void),
                      void (*unload)(void), void* stack);
int __libc_start_main(int (*main)(int, char**, char**), int argumentCount, char** arguments, void (*begin)(void),
                      void (*end)(void), void (*unload)(void), void* stack) {
    programMain = main;
    return NEXT(__libc_start_main)(countedMain, argumentCount, arguments, begin, end, unload, stack);
}
