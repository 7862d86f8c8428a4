/* Turning a process into a daemon. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Other components find this by name. */
#pragma GCC visibility push(default)

/* Detaches the calling process: forks and ends the parent, starts a session of its own, moves to
 * "/" and clears the file mode mask. With allowCoreDump it lifts the limit of core files and moves
 * to "/tmp/fuse_b/", where they go; it says so on standard output.
 *
 * Returns 0 in the daemon, also when the parent of the process is process 1 already and nothing is
 * changed; -1 when the fork fails, or in the daemon when the directory cannot be entered. */
int daemon_init_ext(int allowCoreDump);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif
