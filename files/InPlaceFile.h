#pragma once

#include <QIODevice>

/// What cannot be replaced by another file under its name: a device, a pipe, or a file whose folder
/// takes no other. Written from the start, never created.
///
/// Does not wait for somebody to open the other end of a pipe, and for one who opened it and then
/// takes nothing no longer than five seconds.
class InPlaceFile : public QIODevice
{
public:
    explicit InPlaceFile(const QString &filePath)
        : path(filePath)
    { }
    ~InPlaceFile() override { InPlaceFile::close(); }
    Q_DISABLE_COPY_MOVE(InPlaceFile)

    bool open(OpenMode mode) override;
    void close() override;
    /// \return whether it is no regular file
    bool isSequential() const override { return fileSize() < 0; }

    /// Makes sure that a regular file may grow to \a size bytes. What it holds stays as it is.
    bool reserve(qint64 size);

    /// Lets a regular file end behind what was written.
    /// \return false when not everything is known to be on the disk
    bool finish();

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override;

private:
    bool sync();
    /// \return -1 for what has none
    qint64 fileSize() const;

    const QString path;
    int descriptor = -1;
};
