// The client side of Kelpwick's automation interface, for plug-ins written in
// C++: calls by operation name on the session bus, and planes moved through
// sealed memfds. A plug-in started by Kelpwick finds the host's bus name in
// KELPWICK_BUS_NAME; otherwise the first running Kelpwick is reached.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelpwick {

// A call the host refused or could not receive: the D-Bus error name and the
// host's message.
struct Error : std::runtime_error {
    Error(const QString& name, const QString& message);
    QString name;
};

// A plane as the host gave it: columns by rows bytes, column fastest, read in
// place from the host's memfd, which this client keeps mapped (no copy is
// made). The host writes a caller's next get of the same plane into the same
// memfd, so what a MappedPlane shows changes then: copy what must outlast it.
class MappedPlane {
public:
    MappedPlane() = default;
    MappedPlane(int columns, int rows, std::shared_ptr<const uint8_t> data)
        : columns_(columns), rows_(rows), data_(std::move(data)) {}
    int columns() const { return columns_; }
    int rows() const { return rows_; }
    const uint8_t* data() const { return data_.get(); }
    size_t size() const { return static_cast<size_t>(columns_) * static_cast<size_t>(rows_); }
    uint8_t at(int x, int y) const { return data_.get()[static_cast<size_t>(y) * columns_ + x]; }

private:
    int columns_ = 0, rows_ = 0;
    std::shared_ptr<const uint8_t> data_;  // the mapping, let go with its last holder
};

class Client {
public:
    // Waits as long as the user takes: the boxes and file requests answer late.
    static constexpr int Forever = 0x7fffffff;
    explicit Client(QString busName = DefaultBusName());
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    static QString DefaultBusName();
    bool connected() const;
    const QString& busName() const { return busName_; }

    // One operation by name; the reply's arguments: the result first, then the
    // by-reference arguments as they came back. Throws Error.
    QList<QVariant> call(const char* operation, const QList<QVariant>& args = {}, int timeoutMs = -1);
    // The first reply argument as a number (16- and 32-bit results, bytes).
    int64_t number(const char* operation, const QList<QVariant>& args = {});

    // A plane from one of the get operations; an empty plane when the host
    // answered -1 (no custom brush tool).
    MappedPlane getPlane(const char* operation);
    // A plane to one of the set operations, through a memfd this client keeps
    // mapped and reuses for every plane of the same size.
    void setPlane(const char* operation, int columns, int rows, const uint8_t* data);
    // The same with the bytes inside the message (small planes only).
    void setPlaneInline(const char* operation, int columns, int rows, const uint8_t* data);
    // Width and height of the picture (the properties Kel_BufferWidth / Kel_BufferHeight).
    int bufferWidth();
    int bufferHeight();

private:
    int property(const char* name);
    struct Mapping {
        uint64_t device, inode;
        size_t bytes;
        std::shared_ptr<const uint8_t> data;
    };
    std::shared_ptr<const uint8_t> mapped(int fd, size_t bytes);
    QDBusConnection bus_;
    QString busName_;
    std::list<Mapping> incoming_;  // the host's memfds, most recent first
    int outgoing_ = -1;            // the memfd planes are sent in, sealed at its size
    uint8_t* outgoingMap_ = nullptr;
    size_t outgoingBytes_ = 0;
};

}  // namespace kelpwick
