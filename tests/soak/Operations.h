#pragma once

#include "Choice.h"

#include <QString>

class DialogOperator;
class Journal;
class ViewerSlot;

/// Something that a host or its operator does to a viewer that is alive.
struct Operation
{
    const char *name;
    int weight; ///< how often, relative to the others
    void (*run)(ViewerSlot &slot, Choice &choice, Journal &journal, const DialogOperator &files);
};

/// One of them, by weight.
const Operation &randomOperation(Choice &choice);

/// What a host may do at any moment, a dialog being open included: feed, show, hide, delete.
void hostActs(ViewerSlot &slot, Choice &choice, Journal &journal);
