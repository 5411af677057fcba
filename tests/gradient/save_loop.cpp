#include "SaveLoop.h"

#include <cstdio>

/// Saves collections to the file given until it is killed; a line tells when it has started.
int main(int argc, char *argv[])
{
    if (argc != 2)
        return 2;

    GradientCollection collection(QString::fromLocal8Bit(argv[1]));
    std::puts("saving");
    std::fflush(stdout);
    for (int round = 1;; ++round)
        SaveLoop::fill(collection, round);
}
