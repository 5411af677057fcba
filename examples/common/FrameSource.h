#pragma once

#include "HeightMap.h"

#include <utility>

/// Where the host's buffers come from.
class FrameSource
{
public:
    virtual ~FrameSource() = default;

    /// \return the buffer that is due, borrowed until the next call
    virtual HeightMap &next() = 0;
};

/// Delivers one height map again and again.
class StillSource : public FrameSource
{
public:
    explicit StillSource(HeightMap still)
        : map(std::move(still))
    { }

    HeightMap &next() override { return map; }

private:
    HeightMap map;
};
