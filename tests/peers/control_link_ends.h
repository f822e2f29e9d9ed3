// The two ends of the control link, for tests with the real streaming-server-sim.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

#include <csignal>

// Long enough for the slowest machine; nothing ever waits for it to pass.
inline constexpr int patience = 60000;

// The assistant's end of the control link.
class Assistant
{
public:
    Assistant()
    {
        listening_.listen(QHostAddress::LocalHost);
        port_ = listening_.serverPort();
    }

    quint16 port() const { return port_; }
    void close()
    {
        peer_.reset();
        listening_.close();
    }
    bool listenAgain() { return listening_.listen(QHostAddress::LocalHost, port_); }
    bool accept()
    {
        if (!listening_.hasPendingConnections() && !listening_.waitForNewConnection(patience))
            return false;
        peer_.reset(listening_.nextPendingConnection());
        return true;
    }
    void dropPeer() { peer_.reset(); }

    void send(const QByteArray &bytes)
    {
        peer_->write(bytes);
        peer_->flush();
    }
    // A command ends in a NUL.
    void say(const QByteArray &text) { send(text + '\0'); }
    // The next line without its end; "<closed>" when the peer went away.
    QByteArray line()
    {
        while (!peer_->canReadLine()) {
            if (!peer_->waitForReadyRead(patience))
                return "<closed>";
        }
        const QByteArray line = peer_->readLine();
        return line.left(line.size() - 1);
    }
    QByteArray ask(const QByteArray &text)
    {
        say(text);
        return line();
    }
    QByteArray chunk()
    {
        if (peer_->bytesAvailable() == 0 && !peer_->waitForReadyRead(patience))
            return "<closed>";
        return peer_->readAll();
    }

private:
    QTcpServer listening_;
    quint16 port_ = 0;
    std::unique_ptr<QTcpSocket> peer_;
};

// The program, its record on its standard output.
class Program
{
public:
    ~Program()
    {
        process_.kill();
        process_.waitForFinished();
    }

    bool start(quint16 port, const QStringList &arguments = {})
    {
        return startWith(QStringList{"--port", QString::number(port), "--log", "-"} + arguments);
    }
    bool startWith(const QStringList &arguments)
    {
        process_.start(STREAMING_SERVER_SIM, arguments);
        return process_.waitForStarted(patience);
    }
    // The next line of the record; empty when the program has ended.
    QString recorded()
    {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(patience))
                return {};
        }
        return QString::fromUtf8(process_.readLine()).chopped(1);
    }
    // Reads the record up to that line; false when it does not come.
    bool records(const QString &line)
    {
        for (;;) {
            const QString next = recorded();
            if (next.isEmpty())
                return false;
            if (next == line)
                return true;
        }
    }
    // -1 when it did not end by itself.
    int exitCode()
    {
        if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(patience))
            return -1;
        return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }
    void signal(int number) { ::kill(static_cast<pid_t>(process_.processId()), number); }
    QByteArray errors() { return process_.readAllStandardError(); }
    QByteArray output() { return process_.readAllStandardOutput(); }

private:
    QProcess process_;
};
