/* Reads what is needed of each song of a folder: what a listing of them can't cost less than. */
#include "bench/readbytes.h"

#include <stdio.h>

int main(int argc, char **argv)
{
    const long long bytes = argc == 2 ? read_bytes(argv[1]) : -1;
    if (bytes < 0)
        return 1;
    printf("%lld\n", bytes);
    return 0;
}
