// Turning a process into a daemon.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Other components find this by name.
#pragma GCC visibility push(default)

// Detaches the calling process: forks and ends the parent by exit(0), starts a session of its own,
// moves to "/" and clears the file mode mask. Of its threads only the caller's lives on. With
// allowCoreDump it lifts the limit of core files and moves to "/tmp/fuse_b/", where they go; it
// says on standard output that it does, and if the limit cannot be lifted, which fails nothing.
//
// Returns 0 in the daemon, also when the parent of the process is process 1 already and nothing is
// changed; -1 when the fork fails, or when the daemon, detached all the same, cannot enter the
// directory.
int daemon_init_ext(int allowCoreDump);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif
