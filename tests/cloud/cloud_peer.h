// The stand-in cloud, as tests use it.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

#include <memory>

// What one request brought.
struct Received
{
    QByteArray method;
    QByteArray target; // without the tag
    QMap<QByteArray, QByteArray> headers;
    QByteArray body;
};

// A real process that is reached over real TLS. Every part of a test that wants
// answers and requests of its own begins with a tag.
class CloudPeer
{
public:
    // Starts the process, or joins the one that the environment names with
    // KOLM_CLOUD_SIM_PORT and KOLM_CLOUD_SIM_STORE.
    enum class Identities { None, Made };
    explicit CloudPeer(Identities identities = Identities::None);
    ~CloudPeer();

    bool isUp() const { return port_ != 0; }

    // From now on nobody has asked anything, and the answers are these: a name
    // that the program knows, or the content of a file as it reads them.
    void begin(const QString &answers = QStringLiteral("normal"));
    void begin(const QJsonObject &answers);

    QString host() const; // with the tag, as a part of addresses
    QString base() const; // the same as an address
    // As host(), where it says that it is somebody else: "good", "wrong-name",
    // "expired" or "self-signed". Needs Identities::Made.
    QString hostAs(const QString &identity) const;
    // Who vouches for the first three of these, a file.
    QString authority() const;
    quint16 port() const { return port_; }

    // The requests so far, in the order of their arrival.
    QList<Received> received() const;
    int receivedCount() const;

private:
    class Process;
    std::unique_ptr<Process> process_;
    QString store_;
    QString tag_;
    quint16 port_ = 0;
};
