/*
 * faultplan.so: makes chosen calls on regular files fail, come short, or kill the program half-way.
 * Preloaded, with FAULT_PLAN  items "CALL:N:ACTION" or "CALL@PART:N:ACTION" with blanks between:
 * the N-th (N+: and each later) CALL on a file whose path holds PART. ACTION: e5 fails with that
 * error number; s100 writes at most 100 bytes; k100 writes at most 100 bytes and kills the program.
 *   FAULT_MET   a file that gets a byte for each fault that was met
 * CALL is write, pwrite, sync (fsync, fdatasync and syncfs), rename, unlink, ftruncate or
 * fallocate.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { itemsAtMost = 16 };

struct item
{
    char call[16];
    char part[128];
    long first;
    int isOnwards;
    char action;
    long value;
    long count;
};

static struct item items[itemsAtMost];
static int itemCount;

__attribute__((constructor)) static void readPlan(void)
{
    const char *plan = getenv("FAULT_PLAN");
    char text[1024];
    char *rest = NULL;
    if (!plan || strlen(plan) >= sizeof text)
        return;
    strcpy(text, plan);
    for (char *word = strtok_r(text, " ", &rest); word && itemCount < itemsAtMost;
         word = strtok_r(NULL, " ", &rest)) {
        struct item *item = &items[itemCount++];
        char *end;
        char *colon = strchr(word, ':');
        if (!colon)
            abort();
        *colon = '\0';
        sscanf(word, "%15[^@]@%127s", item->call, item->part);
        item->first = strtol(colon + 1, &end, 10);
        item->isOnwards = *end == '+';
        end += item->isOnwards;
        item->action = end[0] == ':' ? end[1] : '\0';
        item->value = item->action ? atol(end + 2) : 0;
        if (!strchr("esk", item->action) || !item->action)
            abort();
    }
}

static void markMet(void)
{
    const char *file = getenv("FAULT_MET");
    const int fd = file ? open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600) : -1;
    if (fd < 0)
        return;
    syscall(SYS_write, fd, "!", 1);
    close(fd);
}

/* The item whose turn it is; each one counts the calls that it looks at. */
static const struct item *itemFor(const char *call, const char *path)
{
    const struct item *chosen = NULL;
    for (int i = 0; i < itemCount; ++i) {
        struct item *item = &items[i];
        if (strcmp(item->call, call) != 0 || !strstr(path, item->part))
            continue;
        const long n = ++item->count;
        if (!chosen && (n == item->first || (item->isOnwards && n > item->first)))
            chosen = item;
    }
    return chosen;
}

/* The fault for this call: 'e' with errno set, 's' or 'k' with the size cut down; else '\0'. */
static char faultOf(const char *call, const char *path, size_t *size)
{
    const struct item *item = itemFor(call, path);
    if (!item)
        return '\0';
    markMet();
    if (item->action == 'e')
        errno = (int)item->value;
    else if (size && *size > (size_t)item->value)
        *size = (size_t)item->value;
    else if (!size && item->action == 'k')
        kill(getpid(), SIGKILL);
    return item->action;
}

static char faultOfFile(const char *call, int fd, size_t *size)
{
    char link[64];
    char path[PATH_MAX] = "";
    struct stat status;
    if (fstat(fd, &status) != 0 || !(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)))
        return '\0';
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    if (readlink(link, path, sizeof path - 1) < 0)
        return '\0';
    return faultOf(call, path, size);
}

static void dieIf(char fault)
{
    if (fault == 'k')
        kill(getpid(), SIGKILL);
}

ssize_t write(int fd, const void *bytes, size_t size)
{
    const char fault = faultOfFile("write", fd, &size);
    if (fault == 'e')
        return -1;
    const ssize_t written = syscall(SYS_write, fd, bytes, size);
    dieIf(fault);
    return written;
}

ssize_t pwrite64(int fd, const void *bytes, size_t size, off64_t offset)
{
    const char fault = faultOfFile("pwrite", fd, &size);
    if (fault == 'e')
        return -1;
    const ssize_t written = syscall(SYS_pwrite64, fd, bytes, size, offset);
    dieIf(fault);
    return written;
}

ssize_t pwrite(int fd, const void *bytes, size_t size, off_t offset)
{
    return pwrite64(fd, bytes, size, offset);
}

int fsync(int fd)
{
    return faultOfFile("sync", fd, NULL) == 'e' ? -1 : (int)syscall(SYS_fsync, fd);
}

int fdatasync(int fd)
{
    return faultOfFile("sync", fd, NULL) == 'e' ? -1 : (int)syscall(SYS_fdatasync, fd);
}

int syncfs(int fd)
{
    return faultOfFile("sync", fd, NULL) == 'e' ? -1 : (int)syscall(SYS_syncfs, fd);
}

int ftruncate64(int fd, off64_t size)
{
    return faultOfFile("ftruncate", fd, NULL) == 'e' ? -1 : (int)syscall(SYS_ftruncate, fd, size);
}

int ftruncate(int fd, off_t size)
{
    return ftruncate64(fd, size);
}

int fallocate64(int fd, int mode, off64_t offset, off64_t size)
{
    return faultOfFile("fallocate", fd, NULL) == 'e'
        ? -1
        : (int)syscall(SYS_fallocate, fd, mode, offset, size);
}

int fallocate(int fd, int mode, off_t offset, off_t size)
{
    return fallocate64(fd, mode, offset, size);
}

int rename(const char *from, const char *to)
{
    return faultOf("rename", from, NULL) == 'e'
        ? -1
        : (int)syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    return faultOf("rename", from, NULL) == 'e'
        ? -1
        : (int)syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags);
}

int unlink(const char *path)
{
    return faultOf("unlink", path, NULL) == 'e' ? -1
                                                : (int)syscall(SYS_unlinkat, AT_FDCWD, path, 0);
}
