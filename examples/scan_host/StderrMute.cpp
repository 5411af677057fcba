#include "StderrMute.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

StderrMute::StderrMute()
    : saved(dup(STDERR_FILENO))
{
    std::fflush(stderr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

StderrMute::~StderrMute()
{
    std::fflush(stderr);
    if (saved < 0)
        return;
    dup2(saved, STDERR_FILENO);
    close(saved);
}
