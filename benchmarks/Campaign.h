#pragma once

#include "Results.h"

#include <optional>
#include <vector>

/// All measurements of a run, ours and plain in turn.
struct Campaign
{
    int mainSide = 0; ///< size of the table's figures unless they name another
    std::vector<Task> tasks;
};

Campaign fullCampaign();

/// Small sizes and few repeats: shows that everything works, not how fast.
Campaign shortCampaign();

/// Runs each task in a process of its own, so that peaks and faults stay apart.
/// \param program this program, which has to understand argumentsOf()
/// \return nothing when one of them fails
std::optional<Results> runCampaign(const Campaign &campaign, const QString &program);

/// A task on the command line, and back.
QStringList argumentsOf(const Task &task);
std::optional<Task> taskOf(const QStringList &arguments);
