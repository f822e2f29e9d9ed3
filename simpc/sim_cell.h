// The simulated counterpart of a small named shared-memory cell with its named
// mutex: 4 bytes of value, 4 bytes of "holds a value".
#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>
#include <memory>

// Without a path the cell lives in this process. With one it is a file that
// several processes map, guarded by a lock that dies with its holder. Any
// thread, any process.
class SimCell
{
public:
    SimCell();
    explicit SimCell(const QString &path);
    ~SimCell();

    SimCell(const SimCell &) = delete;
    SimCell &operator=(const SimCell &) = delete;

    // False when the file could not be mapped; then read and write fail too.
    bool isValid() const;

    // Asked each quarter of a second while another process holds the lock: whether
    // to go on waiting for it. Empty: without a limit.
    using GoesOn = std::function<bool()>;

    // False while the cell holds no value, and when `goesOn` gave up.
    bool read(quint32 *value, const GoesOn &goesOn = {}) const;
    bool write(quint32 value, const GoesOn &goesOn = {});
    // Back to "holds no value".
    void clear();

private:
    struct Mapping;
    std::unique_ptr<Mapping> mapping_;
};
