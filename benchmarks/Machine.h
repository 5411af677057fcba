#pragma once

#include <QString>

/// Processor, how busy the machine is with other things, system and date, in one line.
QString machineText();
