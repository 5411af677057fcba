#pragma once

/// Another program on the gradients' file of a soak: adds, edits, renames and removes until it is
/// killed.
int changeGradientsForEver(int argc, char *argv[]);
