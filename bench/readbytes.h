#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Walks a folder and reads of each song the bytes that its record needs: a MIDI or MFx song whole,
 * of an MP3 its tag. Nothing is done with them. Returns the bytes read; -1 when anything fails.
 */
long long read_bytes(const char *folder);

#ifdef __cplusplus
}
#endif
