#pragma once

namespace walk {

/// Whether this process is to walk itself: its starter watches over it, or a course is to be
/// repeated.
bool IsToWalk();

/// Runs this program once more to walk, in a process that may crash. Where the walk breaks a rule,
/// its course is made shorter by walks anew, as long as they break the same rule and there is time
/// for it, and the shortest course is told with how to repeat it. Returns the exit code.
int Supervise(int argc, char* argv[]);

} // namespace walk
