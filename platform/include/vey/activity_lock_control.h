/*
 * The activity lock from outside, for tests. Numbers are those of <errno.h>. Not part of the platform proper.
 */
#ifndef VEY_ACTIVITY_LOCK_CONTROL_H
#define VEY_ACTIVITY_LOCK_CONTROL_H

#ifdef __cplusplus
extern "C" {
#endif

/* Waits for the lock. 0: taken; EDEADLK: this thread holds it already. */
int vey_activity_lock(void);

/* 0: released; EPERM: this thread does not hold it. */
int vey_activity_unlock(void);

/*
 * Makes the next attempt to take the lock fail with lock_error, and the next one to release it answer
 * unlock_error although it releases it; 0 for an attempt that is to go as usual.
 */
void vey_activity_lock_fail_next(int lock_error, int unlock_error);

#ifdef __cplusplus
}
#endif

#endif
