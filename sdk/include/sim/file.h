/*
 * Files that are written whole or not at all. Not part of the SDK proper.
 */
#ifndef SIM_FILE_H
#define SIM_FILE_H

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * Puts a file with that text in place of a regular file or of none: BCM_E_NONE, or BCM_E_FAIL and everything
 * is as it was.
 */
int sim_file_replace(const char *file, const char *text);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
