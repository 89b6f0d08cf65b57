/*
 * What the SDK was built from. The strings are arrays from the C++ heap, so that whoever replaces one can
 * release it with delete[].
 */
#ifndef APPL_BUILD_H
#define APPL_BUILD_H

#ifdef __cplusplus
extern "C" {
#endif

extern char *_build_release;
extern char *_build_user;
extern char *_build_host;
extern char *_build_date;
extern char *_build_datestamp;
extern char *_build_tree;

#ifdef __cplusplus
}
#endif

#endif
