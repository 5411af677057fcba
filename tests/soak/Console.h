#pragma once

class Journal;

/// From here on each message of Qt or VTK that a host would see on its console is a failure, but
/// for the one that the soak provokes with null buffers and what a screen without a window manager
/// says. Debug output is passed over.
void failOnMessages(Journal &journal);
