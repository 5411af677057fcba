#pragma once

#include <QString>

/// What the process ends with.
enum ExitStatus { Success = 0, NothingShown = 1, WrongInput = 2 };

/// Writes one line for the user to the standard error.
void reportError(const QString &message);
