// The C++ client of the automation interface.
#include "plugins/KelpwickClient.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelpwick {
namespace {
constexpr const char* Path = "/org/kelpwick/Kelpwick";
constexpr const char* Interface = "org.kelpwick.Kelpwick._Kelpwick_Class";

// Kept beyond what a host hands out at once (seven picture planes and four
// brush planes), so that a mapping still in use is never mapped again.
constexpr size_t MappingsKept = 16;

QVariant PlaneArgument(int columns, int rows, const QVariant& payload) {
    QDBusArgument arg;
    arg.beginStructure();
    arg << columns << rows;
    if (payload.metaType().id() == QMetaType::QByteArray) arg << payload.toByteArray();
    else arg << payload.value<QDBusUnixFileDescriptor>();
    arg.endStructure();
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(arg)));
}
}  // namespace

Error::Error(const QString& n, const QString& message)
    : std::runtime_error((n + ": " + message).toStdString()), name(n) {}

Client::Client(QString busName) : bus_(QDBusConnection::sessionBus()), busName_(std::move(busName)) {}

Client::~Client() {
    if (outgoingMap_) munmap(outgoingMap_, outgoingBytes_);
    if (outgoing_ >= 0) close(outgoing_);
}

QString Client::DefaultBusName() {
    const QByteArray fromHost = qgetenv("KELPWICK_BUS_NAME");
    return fromHost.isEmpty() ? QString("org.kelpwick.Kelpwick") : QString::fromUtf8(fromHost);
}

bool Client::connected() const { return bus_.isConnected(); }

QList<QVariant> Client::call(const char* operation, const QList<QVariant>& args, int timeoutMs) {
    QDBusMessage m = QDBusMessage::createMethodCall(busName_, Path, Interface, operation);
    m.setArguments(args);
    const QDBusMessage reply = bus_.call(m, QDBus::Block, timeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) throw Error(reply.errorName(), reply.errorMessage());
    return reply.arguments();
}

int64_t Client::number(const char* operation, const QList<QVariant>& args) {
    const QList<QVariant> out = call(operation, args);
    if (out.isEmpty()) throw Error("org.kelpwick.Client.NoResult", QString(operation) + " gave no result");
    return out.front().toLongLong();
}

// The host's memfd mapped once: a later get of the same plane comes in the
// same memfd, already mapped here.
std::shared_ptr<const uint8_t> Client::mapped(int fd, size_t bytes) {
    struct stat st {};
    if (fstat(fd, &st) != 0 || static_cast<uint64_t>(st.st_size) < bytes)
        throw Error("org.kelpwick.Client.NoMap", "the plane's memfd is shorter than the plane");
    for (auto it = incoming_.begin(); it != incoming_.end(); ++it) {
        if (it->device == st.st_dev && it->inode == st.st_ino && it->bytes == bytes) {
            incoming_.splice(incoming_.begin(), incoming_, it);
            return it->data;
        }
    }
    void* p = mmap(nullptr, bytes, PROT_READ, MAP_SHARED | MAP_POPULATE, fd, 0);
    if (p == MAP_FAILED) throw Error("org.kelpwick.Client.NoMap", "the plane's memfd could not be mapped");
    std::shared_ptr<const uint8_t> data(static_cast<const uint8_t*>(p),
                                        [bytes](const uint8_t* m) { munmap(const_cast<uint8_t*>(m), bytes); });
    incoming_.push_front({static_cast<uint64_t>(st.st_dev), static_cast<uint64_t>(st.st_ino), bytes, data});
    if (incoming_.size() > MappingsKept) incoming_.pop_back();
    return data;
}

MappedPlane Client::getPlane(const char* operation) {
    const QVariant v = call(operation).front().value<QDBusVariant>().variant();
    if (!v.canConvert<QDBusArgument>()) return {};  // the integer -1
    const QDBusArgument arg = v.value<QDBusArgument>();
    int columns = 0, rows = 0;
    QDBusUnixFileDescriptor fd;
    arg.beginStructure();
    arg >> columns >> rows >> fd;
    arg.endStructure();
    const size_t bytes = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    if (bytes == 0) return {};
    return MappedPlane(columns, rows, mapped(fd.fileDescriptor(), bytes));
}

// The host has read the whole memfd by the time it replies, so one memfd serves
// every set. Sealed against shrinking, it may be kept mapped by the host too,
// and neither side maps it again.
void Client::setPlane(const char* operation, int columns, int rows, const uint8_t* data) {
    const size_t bytes = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    if (outgoing_ < 0 || outgoingBytes_ != bytes) {
        if (outgoingMap_) munmap(outgoingMap_, outgoingBytes_);
        if (outgoing_ >= 0) close(outgoing_);
        outgoingMap_ = nullptr, outgoingBytes_ = 0;
        outgoing_ = memfd_create("kelpwick-plane", MFD_CLOEXEC | MFD_ALLOW_SEALING);
        if (outgoing_ < 0) throw Error("org.kelpwick.Client.NoMemfd", "memfd_create failed");
        void* p = MAP_FAILED;
        if (bytes > 0 && ftruncate(outgoing_, static_cast<off_t>(bytes)) == 0)
            p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, outgoing_, 0);
        if (p == MAP_FAILED) throw Error("org.kelpwick.Client.NoMemfd", "the memfd could not be sized for the plane");
        fcntl(outgoing_, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW);
        outgoingMap_ = static_cast<uint8_t*>(p);
        outgoingBytes_ = bytes;
    }
    std::memcpy(outgoingMap_, data, bytes);
    call(operation, {PlaneArgument(columns, rows, QVariant::fromValue(QDBusUnixFileDescriptor(outgoing_)))});
}

void Client::setPlaneInline(const char* operation, int columns, int rows, const uint8_t* data) {
    const QByteArray bytes(reinterpret_cast<const char*>(data),
                           static_cast<qsizetype>(columns) * static_cast<qsizetype>(rows));
    call(operation, {PlaneArgument(columns, rows, bytes)});
}

int Client::property(const char* name) {
    QDBusMessage m = QDBusMessage::createMethodCall(busName_, Path, "org.freedesktop.DBus.Properties", "Get");
    m.setArguments({QString(Interface), QString(name)});
    const QDBusMessage reply = bus_.call(m);
    if (reply.type() == QDBusMessage::ErrorMessage) throw Error(reply.errorName(), reply.errorMessage());
    return reply.arguments().front().value<QDBusVariant>().variant().toInt();
}

int Client::bufferWidth() { return property("Kel_BufferWidth"); }
int Client::bufferHeight() { return property("Kel_BufferHeight"); }

}  // namespace kelpwick
