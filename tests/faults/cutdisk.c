/*
 * cutdisk.so: tells power_cut of each write that a guest of user-mode-linux makes to its disk,
 * before it is made, and of each flush of another file. Preloaded into the guest, with CUT_FD the
 * socket to tell it through; the guest goes on when a byte comes back CUT_INODE  the inode of the
 * disk's image Without them nothing is told, and nothing waits for a flush. It also lets
 * user-mode-linux run on processors whose register set is larger than the one it knows.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <sched.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

enum { writeOfDisk = 1, flushOfFile = 2, extendedRegisters = 0x202 };

static int isDisk(int fd)
{
    const char *inode = getenv("CUT_INODE");
    struct stat status;
    return inode && fstat(fd, &status) == 0 && status.st_ino == strtoul(inode, NULL, 10);
}

/* The guest's own thread and the one that serves its disk have one socket. */
static void tell(long kind, const void *bytes, long size, long offset)
{
    static char isTelling;
    if (!getenv("CUT_FD"))
        return;
    const int fd = atoi(getenv("CUT_FD"));
    const long head[] = {kind, size, offset};
    char answer;
    while (__atomic_test_and_set(&isTelling, __ATOMIC_ACQUIRE))
        sched_yield();
    send(fd, head, sizeof head, MSG_NOSIGNAL);
    for (long sent = 0, now; sent < size; sent += now) {
        now = send(fd, (const char *)bytes + sent, size - sent, MSG_NOSIGNAL);
        if (now <= 0)
            break;
    }
    while (recv(fd, &answer, 1, 0) < 0 && errno == EINTR)
        ;
    __atomic_clear(&isTelling, __ATOMIC_RELEASE);
}

ssize_t pwrite64(int fd, const void *bytes, size_t size, off_t offset)
{
    if (isDisk(fd))
        tell(writeOfDisk, bytes, (long)size, offset);
    return syscall(SYS_pwrite64, fd, bytes, size, offset);
}

ssize_t pwrite(int fd, const void *bytes, size_t size, off_t offset)
{
    return pwrite64(fd, bytes, size, offset);
}

/* What power_cut has been told needs no real flush. */
int fsync(int fd)
{
    if (!isDisk(fd))
        tell(flushOfFile, NULL, 0, 0);
    return 0;
}

int fdatasync(int fd)
{
    return fsync(fd);
}

static long rawPtrace(long request, long pid, void *address, void *data)
{
    return syscall(SYS_ptrace, request, pid, address, data);
}

long ptrace(enum __ptrace_request request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    const long pid = va_arg(arguments, int);
    void *address = va_arg(arguments, void *);
    void *data = va_arg(arguments, void *);
    va_end(arguments);
    if (request == PTRACE_SETREGSET && (long)address == extendedRegisters) {
        static __thread char all[16384];
        struct iovec whole = {all, sizeof all};
        const struct iovec *known = data;
        if (rawPtrace(PTRACE_GETREGSET, pid, address, &whole) == 0
            && whole.iov_len > known->iov_len) {
            memcpy(all, known->iov_base, known->iov_len);
            return rawPtrace(request, pid, address, &whole);
        }
    }
    if (request >= PTRACE_PEEKTEXT && request <= PTRACE_PEEKUSER) {
        long word = 0;
        return rawPtrace(request, pid, address, &word) < 0 ? -1 : word;
    }
    return rawPtrace(request, pid, address, data);
}
