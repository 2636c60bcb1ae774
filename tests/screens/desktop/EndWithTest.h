#pragma once

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>

/// Before its start: the process is killed with the test program, whatever becomes of that.
inline void EndWithTest(QProcess& process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}
