/* Reads every song of a folder and of those in it, and writes the bytes of those whose names begin
 * with a prefix into them again; flushes once: what an update of them can't cost less than. */
#define _GNU_SOURCE

#include <fcntl.h>
#include <ftw.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static const char *prefix;

static int rewrite(const char *path, const struct stat *status, int kind, struct FTW *place)
{
    static char *buffer;
    static size_t capacity;
    if (kind == FTW_D)
        return 0;
    const int is_known = !strncmp(path + place->base, prefix, strlen(prefix));
    const size_t size = (size_t)status->st_size;
    if (size > capacity) {
        capacity = size;
        buffer = realloc(buffer, capacity);
    }
    const int fd = open(path, is_known ? O_RDWR : O_RDONLY);
    if (kind != FTW_F || fd < 0 || pread(fd, buffer, size, 0) != (ssize_t)size)
        return -1;
    if (is_known && pwrite(fd, buffer, size, 0) != (ssize_t)size)
        return -1;
    return close(fd);
}

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    prefix = argv[2];
    const int folder = open(argv[1], O_RDONLY);
    return folder < 0 || nftw(argv[1], rewrite, 64, 0) != 0 || syncfs(folder) != 0;
}
