// The messages between adb's server and a device.
#pragma once

#include <QByteArray>

#include <optional>

struct Message
{
    // Four letters each, as they stand on the wire.
    enum Command : quint32 {
        Connect = 0x4e584e43, // CNXN: version, longest payload, who I am
        Open = 0x4e45504f,    // OPEN: my stream, 0, what I want
        Okay = 0x59414b4f,    // OKAY: my stream, yours; ready for more
        Write = 0x45545257,   // WRTE: my stream, yours, bytes
        Close = 0x45534c43,   // CLSE: my stream, yours
    };

    quint32 command = 0;
    quint32 first = 0;
    quint32 second = 0;
    QByteArray payload;

    QByteArray bytes() const;
};

// Cuts what arrives into messages.
class MessageReader
{
public:
    void add(const QByteArray &bytes) { buffer_ += bytes; }
    // The next whole message; nothing when it is not there yet, or when what
    // arrived is none, see isBroken().
    std::optional<Message> next();
    bool isBroken() const { return broken_; }

private:
    QByteArray buffer_;
    bool broken_ = false;
};
