#pragma once

/// Sends what the process writes to its standard error nowhere, for as long as this object lives.
///
/// The only way to silence libraries that write there themselves, as libpng does; nothing for a
/// process with several threads, where it would swallow what the others have to say.
class StderrMute
{
public:
    StderrMute();
    ~StderrMute();
    StderrMute(const StderrMute &) = delete;
    StderrMute &operator=(const StderrMute &) = delete;

private:
    int saved;
};
