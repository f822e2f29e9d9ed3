// A disk that can be full.
#pragma once

#include <QString>

// A disk of half a megabyte at `path`, while it lives. Where this user may not
// mount one it does not work.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &path);
    ~SmallDisk();
    Q_DISABLE_COPY(SmallDisk)

    bool works() const { return mounted_; }
    QString path() const { return path_; }

    // Leaves so many bytes free, rounded to the disk's blocks.
    bool fillUp(qint64 left) const;
    void makeRoom() const;

private:
    QString path_;
    bool mounted_ = false;
};
