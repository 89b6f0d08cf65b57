/*
 * The property store: settings by name, which the SDK looks at when it starts a unit, and the file that they
 * are kept in.
 *
 * A name is 1..127 characters without blanks, '=' and '#'; "name.N" is the setting of unit N alone, which
 * goes before "name" wherever the SDK itself looks. A value is up to 1023 characters without line ends, and
 * without blanks at its ends. A file has a line "name=value" for each, comments ("# ...") and empty lines. It
 * is read whole or not at all, and written whole or not at all: beside the old one under the second name,
 * then renamed.
 *
 * Functions that return a status give
 *   BCM_E_NONE
 *   BCM_E_PARAM      a name, value or file name cannot be one, or is a null pointer
 *   BCM_E_NOT_FOUND  no such property or file
 *   BCM_E_CONFIG     the file is damaged, which is told with the line on standard error; or none is set
 *   BCM_E_FAIL       the file cannot be read or written
 * and after an error everything is as it was.
 */
#ifndef SAL_CONFIG_H
#define SAL_CONFIG_H

#ifdef __cplusplus
extern "C" {
#endif

/* Fills the store, once: the defaults, then the file if one is set. */
int sal_config_init(void);

/* Sets those properties that the SDK has a default for and that are not set. */
void sal_config_init_defaults(void);

/* Reads the file again: properties are as it says, or as the defaults. Needs a file. */
int sal_config_refresh(void);

/* Writes the properties to the file, if any was changed since they were read or written. Needs a file. */
int sal_config_flush(void);

/* The value of exactly that property, null if it is not set. The text is good until it is changed. */
char *sal_config_get(const char *name);

/* A null pointer as value removes the property: BCM_E_NOT_FOUND if it is not set. */
int sal_config_set(char *name, char *value);

/*
 * Goes through the properties in the order of their names: *name is null for the first, then what the call
 * before put there, which stays good for ever. BCM_E_NOT_FOUND after the last, with *name and *value null.
 * Properties may be set and removed meanwhile.
 */
int sal_config_get_next(char **name, char **value);

/* Prints all properties. */
void sal_config_show(void);

/*
 * Writes the properties whose names the pattern fits ('*', '?', '[...]'; null or empty: all) to another file,
 * or behind what it holds if append is not 0. BCM_E_NOT_FOUND if it fits none.
 */
int sal_config_save(char *file, char *pattern, int append);

/*
 * The names of the file and of what it is written as at first, on the same file system. A null pointer or
 * empty text as fname: no file; as tname: a name beside it. Nothing is read or written. The names got are
 * good until the next are set; null where none is.
 */
int sal_config_file_set(const char *fname, const char *tname);
int sal_config_file_get(const char **fname, const char **tname);

#ifdef __cplusplus
}
#endif

#endif
