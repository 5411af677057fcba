#pragma once

#include <QtGlobal>

class QString;

/// Keeps the other holders of locks on the same folder, in this process and in others, away as long
/// as it lives.
///
/// A request only: after a moment, and where a folder cannot be locked, it goes on without. The
/// kernel releases it when the process dies, and nothing is left in the folder.
class FolderLock
{
public:
    /// Blocks up to a second, which a crowd of programs that save without a pause may need.
    explicit FolderLock(const QString &folder);
    ~FolderLock();
    Q_DISABLE_COPY_MOVE(FolderLock)

private:
    int descriptor;
};
